#pragma once

#include <string>
#include <string_view>

#include "delivery/PageModules.h"
#include "modules/shared/ImageSizes.h"

namespace torvex {

/// What is shown of a message board, and for whom. Categories are named by their paths: two characters for
/// each level, divided by points ("01.02").
struct BoardView {
    ModuleCall call;
    std::string site;  ///< in small letters, as is `lang`
    std::string lang;
    std::string root;      ///< the category above which nothing is shown; "" for all of the board
    std::string category;  ///< the one that is shown; "" for the top of the board
    bool showsArchive = false;
    int page = 1;
};

/// What a category says about its items.
struct BoardCategory {
    int id = 0;
    int itemOrder = 0;
    int imageAlignment = 0;
    ImageSize imageLimit;
    bool isArchiveVisible = false;
    int pageSize = 0;
};

/// The path of the category above; "" above the first level.
std::string categoryAbove(std::string_view path);

/// The template with the parts of the board filled in; without them where the category can't be shown.
std::string drawBoard(const BoardView& view, const std::string& html);

// The parts of it. Each takes its block of the template and gives what stands in its place.

/// The trail from the root to the category, as HTML; "" where it would hold one step alone.
std::string categoryTrail(const BoardView& view);
std::string drawCategories(const BoardView& view, const std::string& html);
/// `besideCategories`: a category that shows others below it needs no word that it has no items.
std::string drawItems(const BoardView& view, const BoardCategory& category, bool besideCategories,
                      const std::string& html);

}  // namespace torvex
