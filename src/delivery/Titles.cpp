// cServer: the names and titles of pages and sites.

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/Vocabulary.h"
#include "records/Websites.h"

namespace torvex {

namespace {

constexpr std::string_view selectTitle = "select title from TORVEX_PAGES_LIVE where pageId = ?";

}  // namespace

PageId cServer::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection(), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

std::string cServer::getNodeId(PageId pageId) try { return nodeIdOf(connection(), pageId); } catch (...) {
    raiseFrom("getNodeId !");
}

std::string cServer::getPageTitle(const std::string& pageIdent) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid()) return {};
    auto rows = connection().query(selectTitle, {page.pageId});
    if (!rows.next()) return {};
    const std::string title = rows.text("title");
    if (!title.empty()) return title;
    return "[" + vocabularyText(connection(), langOf(page.nodeId), label::untitled) + "]";
} catch (...) {
    raiseFrom("getPageTitle !");
}

std::string cServer::getWebsiteTitle(const std::string& site, const std::string& lang) try {
    return websiteTitle(connection(), site, lang);
} catch (...) {
    raiseFrom("getWebsiteTitle !");
}

std::string cServer::getVocab(const std::string& langId, double labelId) try {
    return vocabularyText(connection(), langId, labelId);
} catch (...) {
    raiseFrom("getVocab !");
}

}  // namespace torvex
