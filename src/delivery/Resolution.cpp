// cServer: from what was asked for to the page record.

#include "delivery/Access.h"
#include "delivery/ApplicationAddress.h"
#include "delivery/FolderTrail.h"
#include "delivery/Neighbours.h"
#include "delivery/OnlineState.h"
#include "delivery/Users.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectPage =
    "select a.pageId, a.nodeId, a.type, a.online, a.onlineFrom, a.onlineTo, a.orderId, a.title, "
    "b.tpl_filename, c.ss_filename, e.btpl_filename, a.breadcrumb, a.dynMenu, a.application, "
    "a.app_param_public, d.app_href_public, a.navigation, a.previous, a.next, a.up "
    "from TORVEX_PAGES_LIVE a "
    "left outer join TORVEX_TEMPLATES b on a.template = b.tpl_id "
    "left outer join TORVEX_STYLESHEETS c on a.stylesheet = c.ss_id "
    "left outer join TORVEX_APPLICATIONS d on a.application = d.app_id "
    "left outer join TORVEX_BASETEMPLATES e on a.baseTemplate = e.btpl_id "
    "where a.pageId = ?";

constexpr std::string_view selectFirstChild =
    "select a.pageId, a.nodeId, a.type, a.online, a.onlineFrom, a.onlineTo, a.orderId, a.title, "
    "b.tpl_filename, c.ss_filename, e.btpl_filename, a.breadcrumb, a.dynMenu, a.application, "
    "a.app_param_public, d.app_href_public, a.navigation, a.previous, a.next, a.up "
    "from TORVEX_PAGES_LIVE a "
    "left outer join TORVEX_TEMPLATES b on a.template = b.tpl_id "
    "left outer join TORVEX_STYLESHEETS c on a.stylesheet = c.ss_id "
    "left outer join TORVEX_APPLICATIONS d on a.application = d.app_id "
    "left outer join TORVEX_BASETEMPLATES e on a.baseTemplate = e.btpl_id "
    "where a.parent = ? order by a.orderId, a.nodeId";

bool isOnline(const db::Rows& rows, std::string_view today) {
    return isOnlineOn(today, rows.number("online"), rows.text("onlineFrom"), rows.text("onlineTo"));
}

void fillPage(PageRecord& record, const db::Rows& rows) {
    record.orderId = rows.number("orderId", -1);
    record.type = text::upper(trimmed(rows, "type"));
    record.title = trimmed(rows, "title");
    record.navigation = trimmed(rows, "navigation");
    record.online = static_cast<int>(rows.number("online"));
    record.onlineFrom = rows.text("onlineFrom");
    record.onlineTo = rows.text("onlineTo");
    record.templateFile = trimmed(rows, "tpl_filename");
    record.stylesheetFile = trimmed(rows, "ss_filename");
    record.baseTemplateFile = trimmed(rows, "btpl_filename");
    record.breadcrumb = rows.text("breadcrumb");
    record.dynMenu = rows.text("dynMenu");
}

/// False when the page's application is missing or has no address.
bool fillApplication(PageRecord& record, const db::Rows& rows, const Request& request) {
    record.appParamPublic = trimmed(rows, "app_param_public");
    record.appUrl = trimmed(rows, "app_href_public");
    if (rows.number("application", -1) == -1 || record.appUrl.empty()) return false;
    const std::string& query = request.queryString();
    record.appUrlPublic =
        applicationAddress({record.appUrl, record.pageId, query, record.appParamPublic}, query);
    return true;
}

void computeNavigation(db::Connection& connection, PageRecord& record) {
    record.up = pageAbove(connection, record.nodeId, Twin::Live).pageId;
    if (record.nodeId.size() < PageIdentity::rootLength + PageIdentity::levelLength) return;
    const std::string_view parent = parentOf(record.nodeId);
    record.previous = pageBefore(connection, parent, record.orderId, Twin::Live);
    record.next = pageBehind(connection, parent, record.orderId, Twin::Live);
    if (record.previous == record.pageId || record.next == record.pageId) {
        throw Error("Type mismatch: page " + text::fromNumber(record.pageId) + " is its own neighbour");
    }
}

/// Resolves one request's page; the record is filled as far as the way leads.
class Resolver {
  public:
    Resolver(HostContext& host, db::Connection& connection, PageRecord& record, const Visitor& visitor)
        : host_(host),
          connection_(connection),
          record_(record),
          visitor_(visitor),
          today_(host.clock.today()) {}

    void resolve(const std::string& pageIdent) {
        const PageIdentity asked = identify(connection_, pageIdent);
        if (!asked.isValid()) return;
        record_.pageId = asked.pageId;
        record_.nodeId = asked.nodeId;
        FolderTrail trail;
        auto rows = connection_.query(selectPage, {asked.pageId});
        while (takeRow(rows)) {
            if (!isFolder(rows.view("type"))) return settle(rows);
            if (!trail.leadsOn(record_.nodeId)) break;
            rows = connection_.query(selectFirstChild, {record_.nodeId});
        }
        if (!denied_) record_.access = pageAccess::notFound;
    }

  private:
    /// False when there is no row, or the groups of its page end the way.
    bool takeRow(db::Rows& rows) {
        if (!rows.next()) return false;
        record_.pageId = rows.number("pageId", -1);
        record_.nodeId = rows.text("nodeId");
        record_.access = pageAccess::open;
        if (hasExtranet(host_)) {
            record_.access = groupVerdict(connection_, record_.pageId, record_.nodeId, visitor_, today_);
        }
        denied_ = record_.access < 0;
        return !denied_;
    }

    void settle(const db::Rows& rows) {
        if (!isOnline(rows, today_)) {
            record_.access = pageAccess::offline;
            const std::string from = rows.text("onlineFrom");
            if (!from.empty() && text::compare(today_, from) < 0) record_.onlineFrom = from;
            return;
        }
        fillPage(record_, rows);
        if (hasApplication(kindOf(record_.type)) && !fillApplication(record_, rows, host_.request)) {
            record_.access = pageAccess::noApplication;
        } else if (text::equals(record_.navigation, "M")) {
            record_.previous = rows.number("previous", -1);
            record_.next = rows.number("next", -1);
            record_.up = rows.number("up", -1);
        } else {
            computeNavigation(connection_, record_);
        }
    }

    HostContext& host_;
    db::Connection& connection_;
    PageRecord& record_;
    const Visitor& visitor_;
    const std::string today_;
    bool denied_ = false;
};

}  // namespace

void cServer::getPage(const std::string& pageIdent, const std::string& username,
                      const std::string& password) try {
    record_ = {};
    const Visitor visitor = asStored(host_, connection(), {username, password});
    Resolver(host_, connection(), record_, visitor).resolve(pageIdent);
} catch (...) {
    raiseFrom("getPage!");
}

bool cServer::isPage(const std::string& pageIdent) try {
    return isNodeOnline(connection(), nodeIdFrom(connection(), pageIdent), host_.clock.today());
} catch (...) {
    raiseFrom("isPage !");
}

std::string cServer::urlencode(const std::string& queryString) {
    return encodedQuery(queryString);
}

}  // namespace torvex
