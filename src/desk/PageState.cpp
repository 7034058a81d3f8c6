#include "desk/PageState.h"

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

std::string_view stateOf(const db::Rows& row) {
    if (row.number("deleteStatus") == 1) return "marked";
    if (row.number("approveStatus") == 1) return "approved";
    const std::string_view editStatus = text::trim(row.view("editStatus"));
    if (text::equals(editStatus, "N")) return "new";
    return text::equals(editStatus, "M") ? "changed" : "live";
}

}  // namespace torvex
