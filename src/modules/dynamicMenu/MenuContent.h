#pragma once

#include <string>
#include <string_view>

#include "modules/dynamicMenu/MenuDefinition.h"

namespace torvex {
struct HostContext;

/// The content of a menu's template, `content`, with its items for a visitor who is at `currentNode`.
std::string filledMenu(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                       std::string_view currentNode, const MenuView& view, std::string content);

}  // namespace torvex
