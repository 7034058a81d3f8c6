#include "modules/newsflash/NewsflashItems.h"

#include <algorithm>
#include <fmt/format.h>

#include "modules/shared/ItemLayouts.h"
#include "modules/shared/ItemOrder.h"
#include "modules/shared/ItemRows.h"
#include "modules/shared/ItemText.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr ItemNames itemNames{
    .fallback = "nfDefault",
    .noImage = "nfNoImage",
    .imageLeft = "nfImageLeft",
    .imageRight = "nfImageRight",
    .imageTop = "nfImageTop",
    .imageBottom = "nfImageBottom",
    .spacer = "nfSpacer",
    .image = "nfImage",
    .imageColWidth = "nfImageColWidth",
    .imageWidth = "nfImageWidth",
    .imageHeight = "nfImageHeight",
    .text = "nfText",
    .day = "nfDD",
    .month = "nfMM",
    .shortYear = "nfYY",
    .year = "nfYYYY",
    .monthName = "nfMMM",
    .title = "nfTitle",
    .linkedTitle = "nfTitleLink",
    .link = "nfLink",
    .more = "nfMore",
};

constexpr std::string_view itemBlock = "nfItem";
constexpr std::string_view emptyBlock = "nfEmpty";

// Both for the website, today twice and the newsflash. An item that is marked for newsflashes shows by its
// mark alone, online or not.
constexpr std::string_view selectDesign =
    "select a.msgB_itemImage, a.msgB_itemTitle, a.msgB_itemDesc, a.msgB_itemDate, a.msgB_itemLink, "
    "a.msgB_itemLinkText, b.msgB_linkText from TORVEX_MSGB_ITEMS_DESIGN a inner join "
    "TORVEX_MSGB_CATEGORIES_DESIGN b on a.msgB_id = b.msgB_id where a.msgB_site = ? and a.msgB_lang = ? and "
    "a.{} <> 0 and a.msgB_archiveDate > ? and a.msgB_onlineDate <= ? and a.msgB_deleted = 0 and a.msgB_Id in "
    "(select msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id = ?) and b.msgB_deleted = 0 "
    "order by {} limit ?";
constexpr std::string_view selectLive =
    "select a.msgB_itemImage, a.msgB_itemTitle, a.msgB_itemDesc, a.msgB_itemDate, a.msgB_itemLink, "
    "a.msgB_itemLinkText, b.msgB_linkText from TORVEX_MSGB_ITEMS_LIVE a inner join "
    "TORVEX_MSGB_CATEGORIES_LIVE b on a.msgB_id = b.msgB_id where a.msgB_site = ? and a.msgB_lang = ? and "
    "a.{} = 1 and a.msgB_archiveDate > ? and a.msgB_onlineDate <= ? and a.msgB_Id in "
    "(select msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_LIVE where nf_Id = ?) order by {} limit ?";

/// The column by which items are chosen; "" when none are.
std::string_view columnOf(std::string_view selection) {
    if (text::equals(selection, "M")) return "msgB_itemNewsflash";
    return text::equals(selection, "A") ? "msgB_itemOnline" : "";
}

/// One at least, so that it shows whether there is any.
std::vector<Item> readNewsflashItems(const ModuleCall& call, const NewsflashItems& wanted) {
    const std::string_view column = columnOf(wanted.selection);
    if (column.empty()) return {};
    if (!isItemOrder(wanted.order))
        throw Error(fmt::format("a newsflash has no order of items {}", wanted.order));
    const std::string today = call.host.clock.today();
    const std::string statement =
        fmt::format(fmt::runtime(call.twin == Twin::Design ? selectDesign : selectLive), column,
                    itemOrder(wanted.order, "a."));
    return readItems(call.host,
                     call.connection.query(statement, {wanted.site, wanted.lang, today, today,
                                                       wanted.newsflashId, std::max(wanted.most, 1)}));
}

/// Its texts become HTML.
void transform(Item& item, int textLength, bool isHtmlAllowed) {
    item.text = asLevel("transformDesc (newsflash) !",
                        [&] { return itemText(cutText(item.text, textLength), isHtmlAllowed); });
    item.linkText =
        asLevel("transformLinkText (newsflash) !", [&] { return linkWords(item.linkText, isHtmlAllowed); });
}

std::string drawAll(const ModuleCall& call, const NewsflashItems& wanted, std::vector<Item> items,
                    ItemLayouts& layouts) {
    const bool isHtmlAllowed = call.host.application.isTrue(applicationKey::msgBoardHtmlAllowed);
    const ImageSizes sizes = asLevel("getImageDim (newsflash) !", [&] {
        return ImageSizes(call.connection, wanted.site, imagesOf(items, layouts));
    });
    MonthNames months(call.connection, wanted.lang);
    std::string drawn;
    for (Item& item : items) {
        transform(item, wanted.textLength, isHtmlAllowed);
        if (&item != &items.front()) drawn.append("\r").append(layouts.spacer());
        const std::string piece = layouts.draw(item, sizes, months);
        markers::checkSize(drawn.size(), piece.size());
        drawn += piece;
    }
    return drawn;
}

}  // namespace

std::string drawNewsflashItems(const ModuleCall& call, const NewsflashItems& wanted,
                               const std::string& html) try {
    HTMLTemplate content(call.host);
    content.setStrVal(html);
    ItemLayouts layouts(call.host, content, itemNames,
                        {wanted.site, wanted.imageAlignment, wanted.imageLimit});
    if (content.blockExists(itemBlock)) {
        std::vector<Item> items = readNewsflashItems(call, wanted);
        if (!items.empty()) content.replaceAllBlocks(emptyBlock, "");
        items.resize(std::min(items.size(), static_cast<std::size_t>(std::max(wanted.most, 0))));
        content.replaceBlock(itemBlock, drawAll(call, wanted, std::move(items), layouts));
    }
    content.emailToLinks();
    return content.takeStrVal();
} catch (...) {
    raiseFrom("fillItems (newsflash) !");
}

}  // namespace torvex
