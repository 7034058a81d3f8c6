#include "delivery/Breadcrumb.h"

#include <utility>

#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectCrumbLive =
    "select pageId, nodeId, title, type, online, breadcrumb from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectCrumbDesign =
    "select pageId, nodeId, title, type, 1 as online, breadcrumb from TORVEX_PAGES_DESIGN where nodeId = ?";

constexpr std::string_view divider = "&nbsp;&gt; </span>";
constexpr std::string_view folderDivider = "&nbsp;-&nbsp;";

struct Crumb {
    std::string pageId;
    std::string nodeId;
    std::string title;  ///< encoded, with the titles of the folders above it
};

std::string link(const Crumb& crumb, bool frames) {
    const std::string address = frames ? "javascript:top.page('" + crumb.pageId + "','" + crumb.nodeId + "')"
                                       : "/tvx.asp?pageId=" + crumb.pageId;
    return R"(<a class="breadcrumb" href=")" + address + "\">" + crumb.title +
           R"(</a><span class="breadcrumb">)" + std::string(divider);
}

std::string plain(const Crumb& crumb) {
    return R"(<span class="breadcrumb">)" + crumb.title + std::string(divider);
}

std::string active(const Crumb& crumb) {
    return R"(<span class="breadcrumbActive">)" + crumb.title + R"(</span><span class="breadcrumb">)" +
           std::string(divider);
}

/// Without the last divider. This leaves the last span open, as delivered pages expect.
std::string withoutLastDivider(std::string trail) {
    if (trail.empty()) return trail;
    trail.resize(trail.size() - divider.size());
    return std::string(text::trim(trail));
}

}  // namespace

std::string breadcrumbTrail(HostContext& host, db::Connection& connection, std::string_view nodeId,
                            Twin twin) {
    if (nodeId.size() < PageIdentity::rootLength) return {};
    const bool frames = host.application.isTrue(applicationKey::usesFrames);
    std::string trail;
    std::string folders;
    for (std::size_t level = 0; level < levelsOf(nodeId); ++level) {
        const auto length = PageIdentity::rootLength + level * PageIdentity::levelLength;
        auto rows = connection.query(twin == Twin::Design ? selectCrumbDesign : selectCrumbLive,
                                     {nodeId.substr(0, length)});
        if (!rows.next()) continue;
        const std::string title = text::htmlEncode(rows.text("title"));
        if (isFolder(rows.view("type"))) {
            // The column holds a text, which need not be a number.
            if (text::toNumber(rows.text("breadcrumb")) == 1) folders.append(title).append(folderDivider);
            continue;
        }
        const Crumb crumb{rows.text("pageId"), rows.text("nodeId"), std::exchange(folders, {}) + title};
        if (text::equals(crumb.nodeId, nodeId)) {
            trail += active(crumb);
        } else {
            trail += rows.number("online") == 1 ? link(crumb, frames) : plain(crumb);
        }
    }
    return withoutLastDivider(std::move(trail));
}

std::string cServer::getBreadcrumb(const std::string& pageIdent) try {
    return breadcrumbTrail(host_, connection(), identify(connection(), pageIdent).nodeId, Twin::Live);
} catch (...) {
    raiseFrom("getBreadcrumb !");
}

}  // namespace torvex
