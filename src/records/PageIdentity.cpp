#include "records/PageIdentity.h"

#include <algorithm>
#include <cmath>

#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/db/ScopeMemory.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectNodeId = "select nodeId from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view selectPageId = "select pageId from TORVEX_PAGES_DESIGN where nodeId = ?";

/// What was asked for in comparable form; "" when it is too long for any page.
std::string plainIdent(std::string_view pageIdent) {
    const std::string_view ident = text::trim(pageIdent);
    return ident.size() > PageIdentity::longestNode ? std::string() : text::lower(ident);
}

std::string lookUpNode(db::Connection& connection, PageId pageId) try {
    return nodeIdOf(connection, pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId lookUpNumber(db::Connection& connection, std::string_view nodeId) try {
    return pageIdOf(connection, nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

}  // namespace

std::string nodeIdOf(db::Connection& connection, PageId pageId) {
    return db::remembered(connection, selectNodeId, text::fromNumber(pageId), [&] {
        auto rows = connection.query(selectNodeId, {pageId});
        return rows.next() ? rows.text("nodeId") : std::string();
    });
}

PageId pageIdOf(db::Connection& connection, std::string_view nodeId) {
    const std::string_view node = text::trim(nodeId);
    if (node.empty()) return -1;
    auto rows = connection.query(selectPageId, {node});
    return rows.next() ? rows.number("pageId", -1) : -1;
}

PageIdentity identify(db::Connection& connection, std::string_view pageIdent) {
    const std::string ident = plainIdent(pageIdent);
    if (text::isNumeric(ident)) return identify(connection, text::toNumber(ident));
    return {lookUpNumber(connection, ident), ident};
}

std::string nodeIdFrom(db::Connection& connection, std::string_view pageIdent) {
    const std::string ident = plainIdent(pageIdent);
    return text::isNumeric(ident) ? lookUpNode(connection, text::toNumber(ident)) : ident;
}

PageId pageIdFrom(db::Connection& connection, std::string_view pageIdent) {
    const std::string ident = plainIdent(pageIdent);
    return text::isNumeric(ident) ? text::toNumber(ident) : lookUpNumber(connection, ident);
}

PageIdentity identify(db::Connection& connection, PageId pageId) {
    return {pageId, lookUpNode(connection, pageId)};
}

std::string nodeIdFrom(db::Connection& connection, PageId pageId) {
    return lookUpNode(connection, pageId);
}

std::string_view siteOf(std::string_view nodeId) {
    return nodeId.substr(0, 2);
}

std::string_view langOf(std::string_view nodeId) {
    return nodeId.size() < 4 ? std::string_view() : nodeId.substr(3, 2);
}

std::string_view parentOf(std::string_view nodeId) {
    return nodeId.substr(
        0, nodeId.size() < PageIdentity::levelLength ? 0 : nodeId.size() - PageIdentity::levelLength);
}

bool inSameTree(std::string_view oneNode, std::string_view otherNode) {
    return text::equals(text::first(oneNode, PageIdentity::rootLength),
                        text::first(otherNode, PageIdentity::rootLength));
}

std::size_t levelsOf(std::string_view nodeId) {
    const double levels = (static_cast<double>(nodeId.size()) + 1) / PageIdentity::levelLength - 1;
    return static_cast<std::size_t>(std::max(0L, std::lround(levels)));
}

std::string endOfPrefix(std::string_view prefix) {
    // In lower case, as texts are compared: the character after "Z" sorts before all small letters.
    std::string end = text::lower(prefix);
    ++end.back();
    return end;
}

Twin twinOf(std::string_view mode) {
    return text::equals(text::trim(mode), "D") ? Twin::Design : Twin::Live;
}

Twin twinOfBody(std::string_view mode) {
    return text::equals(text::trim(mode), "L") ? Twin::Live : Twin::Design;
}

}  // namespace torvex
