#include "modules/shared/ItemRows.h"

#include "platform/HostContext.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

Item itemOf(const db::Rows& rows) {
    return {rows.text("msgB_itemTitle"),
            rows.text("msgB_itemDesc"),
            trimmed(rows, "msgB_itemImage"),
            rows.text("msgB_itemDate"),
            text::lowerTrim(rows.text("msgB_itemLink")),
            trimmed(rows, "msgB_itemLinkText")};
}

}  // namespace

std::vector<Item> readItems(const HostContext& host, db::Rows rows) {
    std::vector<Item> items;
    std::size_t size = 0;
    while (rows.next()) {
        host.deadline().check();
        items.push_back(itemOf(rows));
        markers::checkSize(size, items.back().text.size());
        size += items.back().text.size();
    }
    return items;
}

std::vector<std::string> imagesOf(const std::vector<Item>& items, const ItemLayouts& layouts) {
    std::vector<std::string> images;
    for (const Item& item : items) {
        if (layouts.showsImage(item)) images.push_back(item.image);
    }
    return images;
}

}  // namespace torvex
