#pragma once

#include <optional>
#include <string>

#include "modules/dynamicMenu/MenuView.h"
#include "records/PageIdentity.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// A menu that was drawn.
struct LoadedMenu {
    std::string source;  ///< its template, for those who look at it
    std::string header;  ///< for the head of the page
    std::string content;
};

/// The menu that is in force for a page, drawn for who is there. Nothing when there is none, or its template
/// is none of the system or has no file.
std::optional<LoadedMenu> loadMenu(HostContext& host, db::Connection& connection, const PageIdentity& page,
                                   const MenuView& view);

}  // namespace torvex
