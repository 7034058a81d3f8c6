#include "modules/dynamicMenu/dynMenu.h"

#include "delivery/FolderTrail.h"
#include "delivery/OnlineState.h"
#include "modules/dynamicMenu/MenuPublishing.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectNode =
    "select nodeId, type, onlineFrom, onlineTo from TORVEX_PAGES_DESIGN where nodeId = ?";
constexpr std::string_view selectFirstChild =
    "select nodeId, type, onlineFrom, onlineTo from TORVEX_PAGES_DESIGN "
    "where parent = ? order by orderId, nodeId";

/// By its dates alone: the design doesn't say whether a page is switched on.
bool willNodeShow(db::Connection& connection, const std::string& nodeId, std::string_view today) {
    if (nodeId.size() < PageIdentity::rootLength) return false;
    FolderTrail trail;
    auto rows = connection.query(selectNode, {nodeId});
    while (rows.next()) {
        if (!isFolder(rows.view("type")))
            return isWithin(today, rows.view("onlineFrom"), rows.view("onlineTo"));
        const std::string folder = rows.text("nodeId");
        if (!trail.leadsOn(folder)) break;
        rows = connection.query(selectFirstChild, {folder});
    }
    return false;
}

}  // namespace

bool dynMenu::load(const std::string& pageIdent, const std::string& mode) try {
    menu_ = {};
    auto& connection = connection_.use(host_);
    auto loaded = loadMenu(host_, connection, identify(connection, pageIdent), MenuView::of(mode));
    if (!loaded) return false;
    menu_ = std::move(*loaded);
    return true;
} catch (...) {
    raiseFrom("load (dynMenu) !");
}

bool dynMenu::isPage(const std::string& pageIdent, const std::string& mode) try {
    auto& connection = connection_.use(host_);
    const std::string nodeId = nodeIdFrom(connection, pageIdent);
    const std::string today = host_.clock.today();
    return twinOf(mode) == Twin::Design ? willNodeShow(connection, nodeId, today)
                                        : isNodeOnline(connection, nodeId, today);
} catch (...) {
    raiseFrom("isPage !");
}

void dynMenu::publish(const std::string& site, const std::string& lang) try {
    publishMenus(host_, text::trim(site), text::trim(lang));
    CleanUpDB();
} catch (...) {
    raiseFrom("Publish (DynMenu module) !");
}

void dynMenu::CleanUpDB() try { removeOrphanMenus(host_); } catch (...) {
    raiseFrom("CleanUpDB (DynMenu module) !");
}

}  // namespace torvex
