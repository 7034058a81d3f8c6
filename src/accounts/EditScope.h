#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// Whether a node is one of the scope's nodes or lies under one. A scope is a list of nodes divided by
/// commas; blanks in it count for nothing, nor does case. A text shorter than a root is never covered. Pure;
/// asks no database, so it may be run over many nodes.
bool scopeCovers(std::string_view scope, std::string_view nodeId);

/// The same for the scope of a role's rights, which is the whole tree where no node is named.
bool scopeReaches(std::string_view scope, std::string_view nodeId);
/// Whether it is the whole tree.
bool isWholeTree(std::string_view scope);

/// The nodes of a scope in small letters; one "" for an empty scope.
std::vector<std::string> nodesInScope(std::string_view scope);
/// Those that lie below no other one of them, each once and sorted.
std::vector<std::string> outermost(std::vector<std::string> nodes);
/// Where it reaches in a tree: the root for the whole of it. Nodes of another tree give nothing there.
std::vector<std::string> reachInTree(const std::string& root, std::string_view scope);

}  // namespace torvex
