// cManager: pages by their two names, and what they are.

#include "authoring/FreePlaces.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/PageRows.h"

namespace torvex {

namespace {

constexpr std::string_view selectTitleLive = "select title from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectTitleDesign = "select title from TORVEX_PAGES_DESIGN where nodeId = ?";

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
    return torvex::isPage(connection(), pageIdFrom(connection(), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("isPage !");
}

bool cManager::isPageTitle(const std::string& parentIdent, const std::string& title, const std::string& mode,
                           const std::string& pageIdent) try {
    const std::string parent = nodeIdFrom(connection(), parentIdent);
    std::optional<PageId> itself;
    if (!text::trim(pageIdent).empty()) itself = pageIdFrom(connection(), pageIdent);
    return isTitled(connection(), parent, title, twinOf(mode), itself);
} catch (...) {
    raiseFrom("isPageTitle !");
}

std::string cManager::getPageTitle(const std::string& pageIdent, const std::string& mode) try {
    return titleOrWord(pageIdFrom(connection(), pageIdent), twinOf(text::first(mode, 1)));
} catch (...) {
    raiseFrom("getPageTitle !");
}

std::string cManager::titleOrWord(PageId pageId, Twin twin) {
    auto title = titleOfPage(connection(), pageId, twin);
    if (!title) return {};
    return title->empty() ? bracketedWord(label::untitled) : std::move(*title);
}

std::string cManager::pageTitle(PageId pageId, Twin twin) {
    return asLevel("getPageTitle !", [&] { return titleOrWord(pageId, twin); });
}

std::string cManager::getPageType(const std::string& pageIdent, const std::string& mode) try {
    return typeOfPage(connection(), pageIdFrom(connection(), pageIdent), twinOf(mode));
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
