#include "search/SnapshotText.h"

#include "delivery/Feeds.h"
#include "delivery/PageBodies.h"
#include "delivery/PageMetaData.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/Vocabulary.h"
#include "templates/DesignPath.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// Parts of a template that are no content of the page.
constexpr std::string_view otherParts[] = {
    "torvex_admin",        "torvex_appFrame_i",     "torvex_navigation",
    "torvex_userLoggedIn", "torvex_noUserLoggedIn", "torvex_loginError",
};

std::string line(std::initializer_list<std::string_view> pieces) {
    std::string joined;
    for (const std::string_view piece : pieces) joined.append(piece);
    return joined.append(lineEnd);
}

/// What goes between the body tags of a page with this template.
std::string contentBlocks(const HTMLTemplate& layout) {
    const std::string content = "torvex_content";
    std::string blocks;
    if (layout.blockExists(content)) blocks = line({layout.extractBlock(content)});
    for (int n = 1;; ++n) {
        const std::string part = content + "_" + std::to_string(n);
        if (!layout.blockExists(part)) return blocks;
        blocks += line({layout.extractBlock(part)});
    }
}

}  // namespace

SnapshotText::SnapshotText(HostContext& host, const db::ConnectionSource& connection)
    : host_(host), connection_(connection) {}

std::string SnapshotText::of(const LivePage& page) {
    std::string html = line({"<HTML>"}) + line({"<HEAD>"});
    html += line({"<TITLE>", titleOf(page), "</TITLE>"});
    html += line({R"(<META NAME="MS.LOCALE" CONTENT=")", text::upper(langOf(page.nodeId)), "\">"});
    // Every tag of it ends its line.
    html += metaDataOf(page);
    html += line({"</HEAD>"}) + line({"<BODY>"});
    html += contentOf(page);
    return html + line({"</BODY>"}) + line({"</HTML>"});
}

std::string SnapshotText::titleOf(const LivePage& page) {
    if (!page.title.empty()) return page.title;
    const std::string language = host_.session.text(sessionKey::interfaceLanguage);
    const auto words = vocabularyTexts(connection_.use(host_), language, {label::untitled});
    return "[" + words.at(label::untitled) + "]";
}

std::string SnapshotText::metaDataOf(const LivePage& page) {
    db::Connection& connection = connection_.use(host_);
    return asLevel("getMetaDataHTML  !",
                   [&] { return metaDataHtml(connection, identify(connection, page.pageId)); });
}

std::string SnapshotText::contentOf(const LivePage& page) {
    if (!hasBodies(kindOf(page.type)) || page.templateId <= 0 || page.templateFile.empty()) {
        return {};
    }
    HTMLTemplate layout(host_);
    const std::string path = designPath(host_.application, applicationKey::contentTemplatesPath,
                                        siteOf(page.nodeId), langOf(page.nodeId), page.templateFile);
    if (!layout.load(path)) return {};
    for (const std::string_view part : otherParts) layout.replaceAllBlocks(part, "");
    PageBodies bodies(host_, connection_.use(host_), Twin::Live, xmlFeed);
    layout.setStrVal(
        asLevel("fillBodies !", [&] { return bodies.fill(page.pageId, contentBlocks(layout)); }));
    layout.removeTags();
    return layout.takeStrVal();
}

}  // namespace torvex
