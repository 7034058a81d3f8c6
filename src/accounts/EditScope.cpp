#include "accounts/EditScope.h"

#include <algorithm>
#include <string>

#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// A scope that is written out as this word is none.
constexpr std::string_view everywhere = "ALL";

/// The scope with a comma before and behind each node.
std::string listOf(std::string_view scope) {
    std::string list = ",";
    for (const char c : scope) {
        if (c != ' ') list += c;
    }
    return list += ',';
}

}  // namespace

bool scopeCovers(std::string_view scope, std::string_view nodeId) {
    std::string_view node = text::trim(nodeId);
    if (node.size() > PageIdentity::longestNode) return false;
    const std::string list = listOf(scope);
    std::string wanted;
    for (auto length = text::length(node); length >= PageIdentity::rootLength;
         length -= PageIdentity::levelLength) {
        node = text::first(node, length);
        wanted.assign(",").append(node).append(",");
        if (text::contains(list, wanted)) return true;
    }
    return false;
}

bool isWholeTree(std::string_view scope) {
    const std::string_view given = text::trim(scope);
    return given.empty() || text::equals(given, everywhere);
}

bool scopeReaches(std::string_view scope, std::string_view nodeId) {
    return isWholeTree(scope) || scopeCovers(scope, nodeId);
}

std::vector<std::string> nodesInScope(std::string_view scope) {
    std::vector<std::string> nodes(1);
    for (const char c : text::lower(scope)) {
        if (c == ',') {
            nodes.emplace_back();
        } else if (c != ' ') {
            nodes.back() += c;
        }
    }
    return nodes;
}

std::vector<std::string> outermost(std::vector<std::string> nodes) {
    std::ranges::sort(nodes);
    std::vector<std::string> kept;
    for (std::string& node : nodes) {
        const bool isBelow = !kept.empty() && (node == kept.back() || node.starts_with(kept.back() + "."));
        if (!isBelow) kept.push_back(std::move(node));
    }
    return kept;
}

std::vector<std::string> reachInTree(const std::string& root, std::string_view scope) {
    if (isWholeTree(scope)) return {root};
    std::vector<std::string> nodes = nodesInScope(scope);
    std::erase_if(nodes, [below = root + ".", &root](const std::string& node) {
        return node != root && !node.starts_with(below);
    });
    return nodes;
}

}  // namespace torvex
