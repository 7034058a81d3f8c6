// cManager: pages by their two names, and what they are.

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/Text.h"
#include "records/PageIdentity.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr double untitledLabel = 2597;

constexpr std::string_view selectPageLive = "select title, type from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectPageDesign = "select title, type from TORVEX_PAGES_DESIGN where pageId = ?";

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

}  // namespace torvex
