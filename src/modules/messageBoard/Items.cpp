// The items of a category of a message board.

#include <fmt/format.h>

#include "modules/messageBoard/Board.h"
#include "modules/shared/ItemLayouts.h"
#include "modules/shared/ItemOrder.h"
#include "modules/shared/ItemRows.h"
#include "modules/shared/ItemText.h"
#include "modules/shared/PageLinks.h"
#include "modules/shared/PieceList.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view selectAnyDesign =
    "select msgB_id from TORVEX_MSGB_ITEMS_DESIGN where msgB_id = ? limit 1";
constexpr std::string_view selectAnyLive =
    "select msgB_id from TORVEX_MSGB_ITEMS_LIVE where msgB_id = ? limit 1";

constexpr ItemNames itemNames{
    .fallback = "msgB_default",
    .noImage = "msgB_noImage",
    .imageLeft = "msgB_imageLeft",
    .imageRight = "msgB_imageRight",
    .imageTop = "msgB_imageTop",
    .imageBottom = "msgB_imageBottom",
    .spacer = "msgB_spacer",
    .image = "msgB_image",
    .imageColWidth = "msgB_imageColWidth",
    .imageWidth = "msgB_imageWidth",
    .imageHeight = "msgB_imageHeight",
    .text = "msgB_itemText",
    .day = "msgB_DD",
    .month = "msgB_MM",
    .shortYear = "msgB_YY",
    .year = "msgB_YYYY",
    .monthName = "msgB_MMM",
    .title = "msgB_itemTitle",
    .linkedTitle = "msgB_itemLink",
    .link = "msgB_itemLink",
    .more = "msgB_more",
};
constexpr PageLinkNames pageLinkNames{
    .spacer = "msgB_pSpacer",
    .previous = "msgB_pPrevious",
    .dots = "msgB_pDots",
    .active = "msgB_pActive",
    .link = "msgB_pLink",
    .next = "msgB_pNext",
    .number = "msgB_pageId",
};

constexpr std::string_view itemBlock = "msgB_item";
constexpr std::string_view emptyBlock = "msgB_empty";
constexpr std::string_view paging = "msgB_paging";
constexpr std::string_view totalItems = "msgB_totalItems";
constexpr std::string_view firstItem = "msgB_firstItem";
constexpr std::string_view lastItem = "msgB_lastItem";
constexpr std::string_view toArchive = "msgB_gotoArchive";
constexpr std::string_view toRecent = "msgB_gotoRecent";

/// Places for the category, and for today twice.
std::string fromWhere(const BoardView& view) {
    const bool isDesign = view.call.twin == Twin::Design;
    return fmt::format(
        " from TORVEX_MSGB_ITEMS_{} where msgB_id = ? and msgB_archiveDate {} ? and msgB_onlineDate <= ? and "
        "{}",
        isDesign ? "DESIGN" : "LIVE", view.showsArchive ? "<=" : ">",
        isDesign ? "msgB_deleted = 0 and msgB_itemOnline <> 0" : "msgB_itemOnline = 1");
}

/// One list of a category, archived or current.
class ItemList {
  public:
    ItemList(const BoardView& view, const BoardCategory& category)
        : view_(view),
          category_(category),
          today_(view.call.host.clock.today()),
          fromWhere_(fromWhere(view)) {}

    int count() const {
        auto rows = view_.call.connection.query("select count(*) as total" + fromWhere_,
                                                {category_.id, today_, today_});
        return rows.next() ? static_cast<int>(rows.number("total")) : 0;
    }

    /// The rows of a page are chosen by what the index holds, so that those before it needn't be read.
    std::vector<Item> read(const ListPage& page) const {
        const std::string order = itemOrder(category_.itemOrder, "");
        const std::string statement = fmt::format(
            "select * from TORVEX_MSGB_ITEMS_{0} where msgB_itemId in (select msgB_itemId{1} order by {2} "
            "limit ? offset ?) order by {2}",
            view_.call.twin == Twin::Design ? "DESIGN" : "LIVE", fromWhere_, order);
        return readItems(view_.call.host,
                         view_.call.connection.query(
                             statement, {category_.id, today_, today_, page.pageSize, page.offset()}));
    }

  private:
    const BoardView& view_;
    const BoardCategory& category_;
    const std::string today_;
    const std::string fromWhere_;
};

/// The block of the template with the items while it is being filled.
class ItemsBlock {
  public:
    ItemsBlock(const BoardView& view, const BoardCategory& category, const std::string& html)
        : view_(view), category_(category), block_(view.call.host) {
        block_.setStrVal(html);
    }

    std::string draw() {
        ItemLayouts layouts(view_.call.host, block_, itemNames,
                            {view_.site, category_.imageAlignment, category_.imageLimit});
        if (!block_.blockExists(itemBlock)) return {};
        const ItemList list(view_, category_);
        const ListPage page = listPage(list.count(), category_.pageSize, view_.page);
        if (page.total == 0) {
            for (const auto name : {itemBlock, paging, totalItems}) block_.replaceAllBlocks(name, "");
        } else {
            fillItems(list.read(page), layouts);
            fillPaging(page);
        }
        dropArchiveLinks();
        block_.emailToLinks();
        return block_.takeStrVal();
    }

  private:
    void fillItems(std::vector<Item> items, ItemLayouts& layouts) {
        block_.replaceAllBlocks(emptyBlock, "");
        const bool isHtmlAllowed = view_.call.host.application.isTrue(applicationKey::msgBoardHtmlAllowed);
        const ImageSizes sizes = asLevel("getImageDim (Message Board) !", [&] {
            return ImageSizes(view_.call.connection, view_.site, imagesOf(items, layouts));
        });
        MonthNames months(view_.call.connection, view_.lang);
        PieceList pieces(layouts.spacer());
        for (Item& item : items) {
            view_.call.host.deadline().check();
            item.text = asLevel("transformDesc (Message Board) !",
                                [&] { return itemText(item.text, isHtmlAllowed); });
            item.linkText = asLevel("transformLinkText (Message Board) !",
                                    [&] { return linkWords(item.linkText, isHtmlAllowed); });
            pieces.add(layouts.draw(item, sizes, months));
        }
        block_.replaceBlock(itemBlock, pieces.text());
    }

    void fillPaging(const ListPage& page) {
        std::string links;
        if (page.pageCount > 1 && block_.blockExists(paging)) {
            links = asLevel("pageNavigation (Message Board) !", [&] {
                return pageLinks(view_.call.host, pageLinkNames, page.page, page.pageCount,
                                 block_.extractBlock(paging));
            });
        }
        block_.replaceAllBlocks(paging, links);
        block_.replaceTag(paging, links);
        block_.replaceTag(firstItem, std::to_string(page.first()));
        block_.replaceTag(lastItem, std::to_string(page.last()));
        block_.replaceTag(totalItems, std::to_string(page.total));
    }

    /// Of the links between archive and current items the one to where the visitor is, or both.
    void dropArchiveLinks() {
        if (!category_.isArchiveVisible || view_.showsArchive) block_.replaceAllBlocks(toArchive, "");
        if (!category_.isArchiveVisible || !view_.showsArchive) block_.replaceAllBlocks(toRecent, "");
    }

    const BoardView& view_;
    const BoardCategory& category_;
    HTMLTemplate block_;
};

bool hasItems(const BoardView& view, int categoryId) {
    return view.call.connection
        .query(view.call.twin == Twin::Design ? selectAnyDesign : selectAnyLive, {categoryId})
        .next();
}

}  // namespace

std::string drawItems(const BoardView& view, const BoardCategory& category, bool besideCategories,
                      const std::string& html) {
    if (besideCategories && !hasItems(view, category.id)) return {};
    return ItemsBlock(view, category, html).draw();
}

}  // namespace torvex
