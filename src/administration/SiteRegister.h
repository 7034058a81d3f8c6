#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}

/// One column of the first row that `statement` finds for a text; "" when there is none.
std::string firstText(db::Connection& connection, std::string_view statement, std::string_view key);

/// The codes in the first column of a statement's rows, as they name folders. One that doesn't is left out.
std::vector<std::string> safeCodes(db::Connection& connection, std::string_view statement);

}  // namespace torvex
