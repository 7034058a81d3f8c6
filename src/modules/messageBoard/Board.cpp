#include "modules/messageBoard/Board.h"

#include <optional>

#include "modules/shared/ModuleMode.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

constexpr std::string_view selectDesign =
    "select * from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_site = ? and msgB_lang = ? and msgB_catId = ? "
    "and msgB_deleted = 0 and msgB_online <> 0";
constexpr std::string_view selectLive =
    "select * from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ? and msgB_lang = ? and msgB_catId = ? "
    "and msgB_online = 1";

// The blocks of the template that the board fills.
constexpr std::string_view allBlocks = "torvex_application_i";
constexpr std::string_view trailBlock = "torvex_application_1";
constexpr std::string_view categoriesBlock = "torvex_application_2";
constexpr std::string_view itemsBlock = "torvex_application_3";
constexpr std::string_view trailTag = "msgB_breadcrumb";

int wholeOf(const db::Rows& rows, std::string_view column) {
    return static_cast<int>(rows.number(column));
}

/// Nothing when the category can't be shown.
std::optional<BoardCategory> readCategory(const BoardView& view) {
    auto rows = view.call.connection.query(view.call.twin == Twin::Design ? selectDesign : selectLive,
                                           {view.site, view.lang, view.category});
    if (!rows.next()) return std::nullopt;
    return BoardCategory{
        .id = wholeOf(rows, "msgB_id"),
        .itemOrder = wholeOf(rows, "msgB_itemOrder"),
        .imageAlignment = wholeOf(rows, "msgB_imageAlignment"),
        .imageLimit = {wholeOf(rows, "msgB_imageWidth"), wholeOf(rows, "msgB_imageHeight")},
        .isArchiveVisible = rows.number("msgB_archiveVisible") != 0,
        .pageSize = wholeOf(rows, "msgB_pageSize"),
    };
}

std::string withLinks(const BoardView& view, std::string_view html) {
    const std::string_view trimmed = text::trim(html);
    if (trimmed.empty()) return {};
    return asLevel("buildLinks (Message Board) !",
                   [&] { return withModuleLinks(view.call, std::string(trimmed), view.site, view.lang); });
}

/// A board's template while it is being filled.
class BoardPage {
  public:
    BoardPage(const BoardView& view, const std::string& html) : view_(view), page_(view.call.host) {
        page_.setStrVal(html);
    }

    std::string draw() {
        const std::string trail = optionalBlock(page_, trailBlock);
        const std::string categories = optionalBlock(page_, categoriesBlock);
        const std::string items = optionalBlock(page_, itemsBlock);
        const auto category = shownCategory();
        if (!category) return withoutBoard();
        if (!trail.empty()) page_.replaceBlock(trailBlock, drawTrail(trail));
        std::string drawn;
        if (!categories.empty()) {
            drawn = asLevel("fillCategories (Message Board) !",
                            [&] { return drawCategories(view_, categories); });
            page_.replaceBlock(categoriesBlock, withLinks(view_, drawn));
        }
        if (!items.empty()) page_.replaceBlock(itemsBlock, drawItemsOf(*category, !drawn.empty(), items));
        return page_.takeStrVal();
    }

  private:
    /// The top of the board is none, and is there for everybody.
    std::optional<BoardCategory> shownCategory() const {
        if (view_.category.empty()) return BoardCategory();
        return asLevel("getCatData (Message Board) !", [&] { return readCategory(view_); });
    }

    std::string withoutBoard() {
        page_.replaceAllBlocks(allBlocks, "");
        return page_.takeStrVal();
    }

    std::string drawTrail(const std::string& html) const {
        if (view_.category.empty()) return {};
        const std::string trail =
            asLevel("getBreadcrumb (Message Board) !", [&] { return categoryTrail(view_); });
        if (trail.empty()) return {};
        HTMLTemplate block(view_.call.host);
        block.setStrVal(html);
        block.replaceTag(trailTag, trail);
        return withLinks(view_, block.strVal());
    }

    std::string drawItemsOf(const BoardCategory& category, bool besideCategories,
                            const std::string& html) const {
        if (view_.category.empty()) return {};
        return withLinks(view_, asLevel("fillItems (Message Board) !",
                                        [&] { return drawItems(view_, category, besideCategories, html); }));
    }

    const BoardView& view_;
    HTMLTemplate page_;
};

}  // namespace

std::string drawBoard(const BoardView& view, const std::string& html) {
    return BoardPage(view, html).draw();
}

}  // namespace torvex
