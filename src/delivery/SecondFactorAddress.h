#pragma once

#include <string>
#include <string_view>

namespace torvex {

struct PageIdentity;
namespace db {
class Connection;
}

/// Where visitors show their second factor, and keep it.
inline constexpr std::string_view secondFactorFolder = "/torvex_secondFactor/";

/// The address for who comes from a page: of the application page for it in the same site and language, or without one
/// of a page of the server's own.
std::string secondFactorAddress(db::Connection& connection, const PageIdentity& from);

}  // namespace torvex
