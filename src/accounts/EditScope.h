#pragma once

#include <string_view>

namespace torvex {

/// Whether a node is one of the scope's nodes or lies under one. A scope is a list of nodes divided by
/// commas; blanks in it count for nothing, nor does case. A text shorter than a root is never covered. Pure;
/// asks no database, so it may be run over many nodes.
bool scopeCovers(std::string_view scope, std::string_view nodeId);

}  // namespace torvex
