#pragma once

#include <string>
#include <string_view>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex::db {

/// A column's text without the blanks at both ends.
inline std::string trimmed(const Rows& rows, std::string_view column) {
    return std::string(text::trim(rows.text(column)));
}

}  // namespace torvex::db
