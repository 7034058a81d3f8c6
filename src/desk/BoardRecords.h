#pragma once

#include <optional>
#include <string>

#include "desk/ModuleFields.h"

namespace torvex {

struct BoardCategoryKey {
    int id = 0;
    std::string path;
    std::string title;
};

/// In the design of the website; nothing when it isn't there.
std::optional<BoardCategoryKey> findBoardCategory(db::Connection& connection, int category,
                                                  const ModulePlace& place);

/// What the design says of a switch: what isn't on for visitors goes on with the next publishing.
int switchedOn(bool isOn, bool isLiveOn);

// Marks for deletion, or takes the mark back. The record as lines of the trail name it; nothing when it isn't
// there.
std::optional<std::string> markBoardCategory(db::Connection& own, int category, const ModulePlace& place,
                                             bool marked);
std::optional<std::string> markBoardItem(db::Connection& own, int itemId, const ModulePlace& place,
                                         bool marked);

}  // namespace torvex
