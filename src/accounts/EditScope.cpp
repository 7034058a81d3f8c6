#include "accounts/EditScope.h"

#include <string>

#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

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

}  // namespace torvex
