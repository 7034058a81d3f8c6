#include "modules/shared/ItemOrder.h"

#include <fmt/format.h>

namespace torvex {

bool isItemOrder(int order) {
    return order >= 1 && order <= 6;
}

std::string itemOrder(int order, std::string_view table) {
    const auto by = [&](const char* columns) {
        return fmt::format(fmt::runtime(columns), fmt::arg("t", table));
    };
    switch (order) {
        case 1:
            return by("{t}msgB_itemDate desc, {t}msgB_itemId desc");
        case 2:
            return by("{t}msgB_itemDate asc, {t}msgB_itemId asc");
        case 3:
            return by("{t}msgB_itemTitle asc, {t}msgB_itemId asc");
        case 4:
            return by("{t}msgB_itemTitle desc, {t}msgB_itemId desc");
        case 5:
            return by("{t}msgB_itemId desc");
        default:
            return by("{t}msgB_itemId asc");
    }
}

}  // namespace torvex
