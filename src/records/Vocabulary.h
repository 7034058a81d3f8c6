#pragma once

#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The text of a label in an interface language, trimmed; "" where there is none. `language` is the
/// language's code, or the number of its column, which is used unchecked: a number without a column is a
/// `DatabaseError`.
std::string vocabularyText(db::Connection& connection, std::string_view language, double label);

}  // namespace torvex
