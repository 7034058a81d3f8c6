// cManager: pages by their two names, and what they are.

#include "authoring/FreePlaces.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr double untitledLabel = 2597;

constexpr std::string_view selectPageLive = "select title, type from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectPageDesign = "select title, type from TORVEX_PAGES_DESIGN where pageId = ?";

constexpr std::string_view selectOthersTitledLive =
    "select pageId from TORVEX_PAGES_LIVE where parent = ? and title = ? and pageId <> ?";
constexpr std::string_view selectOthersTitledDesign =
    "select pageId from TORVEX_PAGES_DESIGN where parent = ? and title = ? and pageId <> ?";

constexpr std::string_view selectTitleLive = "select title from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectTitleDesign = "select title from TORVEX_PAGES_DESIGN where nodeId = ?";

std::string_view pageStatement(Twin twin) {
    return twin == Twin::Design ? selectPageDesign : selectPageLive;
}

}  // namespace

std::string cManager::getNodeId(PageId pageId) try {
    return pageId > 0 ? nodeIdOf(connection(), pageId) : std::string();
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId cManager::getPageId(const std::string& nodeId) try {
    const PageId found = pageIdOf(connection(), nodeId);
    return found > 0 ? found : 0;
} catch (...) {
    raiseFrom("getPageId !");
}

bool cManager::isPage(const std::string& pageIdent, const std::string& mode) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    return pageId > 0 && connection().query(pageStatement(twinOf(mode)), {pageId}).next();
} catch (...) {
    raiseFrom("isPage !");
}

bool cManager::isPageTitle(const std::string& parentIdent, const std::string& title, const std::string& mode,
                           const std::string& pageIdent) try {
    const Twin twin = twinOf(mode);
    const std::string parent = nodeIdFrom(connection(), parentIdent);
    if (text::trim(pageIdent).empty()) return isTitled(connection(), parent, title, twin);
    const auto statement = twin == Twin::Design ? selectOthersTitledDesign : selectOthersTitledLive;
    const PageId itself = pageIdFrom(connection(), pageIdent);
    return connection().query(statement, {parent, title, itself}).next();
} catch (...) {
    raiseFrom("isPageTitle !");
}

std::string cManager::getPageTitle(const std::string& pageIdent, const std::string& mode) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (pageId <= 0) return {};
    auto rows = connection().query(pageStatement(twinOf(text::first(mode, 1))), {pageId});
    if (!rows.next()) return {};
    std::string title = rows.text("title");
    return title.empty() ? bracketedWord(untitledLabel) : title;
} catch (...) {
    raiseFrom("getPageTitle !");
}

std::string cManager::getPageType(const std::string& pageIdent, const std::string& mode) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (pageId <= 0) return {};
    auto rows = connection().query(pageStatement(twinOf(mode)), {pageId});
    return rows.next() ? std::string(text::trim(rows.text("type"))) : std::string();
} catch (...) {
    raiseFrom("getPageType !");
}

std::string cManager::getBreadcrumb(const std::string& pageIdent, const std::string& mode) try {
    constexpr std::string_view divider = " > ";
    const std::string nodeId = nodeIdFrom(connection(), pageIdent);
    if (nodeId.size() < PageIdentity::rootLength) return {};
    const auto statement = twinOf(mode) == Twin::Design ? selectTitleDesign : selectTitleLive;
    std::string trail;
    for (std::size_t level = 0; level < levelsOf(nodeId); ++level) {
        const auto length = PageIdentity::rootLength + level * PageIdentity::levelLength;
        auto rows = connection().query(statement, {std::string_view(nodeId).substr(0, length)});
        if (rows.next()) trail.append(rows.view("title")).append(divider);
    }
    if (!trail.empty()) trail.resize(trail.size() - divider.size());
    return trail;
} catch (...) {
    raiseFrom("getBreadcrumb !");
}

}  // namespace torvex
