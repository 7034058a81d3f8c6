// cManager: a page's record, from either of the twin tables.

#include "authoring/HeldNumber.h"
#include "authoring/PageLookups.h"
#include "authoring/cManager.h"
#include "delivery/ApplicationAddress.h"
#include "delivery/Neighbours.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageGroups.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view selectLive =
    "select a.pageId, a.nodeId, a.orderId, a.type, a.title, a.navigation, a.previous, a.next, a.up, "
    "a.onlineFrom, a.onlineTo, a.template, a.stylesheet, a.baseTemplate, a.application, "
    "a.app_param_public, a.app_param_admin, a.app_system_folder, a.breadcrumb, a.dynMenu, a.loginPage, "
    "a.online, a.author, a.authoringDate, a.publisher, a.publishingDate, b.deleteStatus, b.approveStatus, "
    "c.tpl_filename, c.tpl_name, d.ss_filename, d.ss_name, e.app_name, e.app_description, "
    "e.app_href_public, e.app_href_admin, f.btpl_filename, f.btpl_name "
    "from TORVEX_PAGES_LIVE a "
    "inner join TORVEX_PAGES_DESIGN b on a.pageId = b.pageId "
    "left outer join TORVEX_TEMPLATES c on a.template = c.tpl_id "
    "left outer join TORVEX_STYLESHEETS d on a.stylesheet = d.ss_id "
    "left outer join TORVEX_APPLICATIONS e on a.application = e.app_id "
    "left outer join TORVEX_BASETEMPLATES f on a.baseTemplate = f.btpl_id "
    "where a.pageId = ?";

constexpr std::string_view selectDesign =
    "select a.pageId, a.nodeId, a.orderId, a.type, a.title, a.navigation, a.previous, a.next, a.up, "
    "a.onlineFrom, a.onlineTo, a.template, a.stylesheet, a.baseTemplate, a.application, "
    "a.app_param_public, a.app_param_admin, a.app_system_folder, a.breadcrumb, a.dynMenu, a.loginPage, "
    "a.editStatus, a.editor, a.editingDate, a.lockStatus, a.lockedBy, a.lockingDate, "
    "a.deleteStatus, a.deletedBy, a.deletingDate, a.approveStatus, a.approvedBy, a.approvingDate, "
    "c.tpl_filename, c.tpl_name, d.ss_filename, d.ss_name, e.app_name, e.app_description, "
    "e.app_href_public, e.app_href_admin, f.btpl_filename, f.btpl_name "
    "from TORVEX_PAGES_DESIGN a "
    "left outer join TORVEX_TEMPLATES c on a.template = c.tpl_id "
    "left outer join TORVEX_STYLESHEETS d on a.stylesheet = d.ss_id "
    "left outer join TORVEX_APPLICATIONS e on a.application = e.app_id "
    "left outer join TORVEX_BASETEMPLATES f on a.baseTemplate = f.btpl_id "
    "where a.pageId = ?";

/// In place of an empty title.
constexpr std::string_view untitled = "[no title]";

std::string trimmed(const db::Rows& rows, std::string_view column) {
    return std::string(text::trim(rows.view(column)));
}

int shortOf(const db::Rows& rows, std::string_view column, int ifNull = 0) {
    return heldNumber(column, rows.number(column, ifNull));
}

/// A flag that is stored as a text; one that was never set is left as it is.
int storedFlag(const db::Rows& rows, std::string_view column, int ifUnset) {
    const std::string stored = rows.text(column);
    return text::isNumeric(stored) ? heldNumber(column, text::toNumber(stored)) : ifUnset;
}

DateTime momentOf(const db::Rows& rows, std::string_view column) {
    const Value value = rows.value(column);
    return value.isDate() ? value.date() : noDate;
}

/// Turns the row of a page into its record, and asks for what the row doesn't tell.
class PageReader {
  public:
    PageReader(cManager& manager, HostContext& host, db::Connection& connection, Twin twin)
        : manager_(manager), host_(host), connection_(connection), twin_(twin) {}

    PageBuffer read(const db::Rows& rows) {
        takePlace(rows);
        takeGroups(rows);
        if (twin_ == Twin::Live) {
            takePublication(rows);
        } else {
            takeWorkflow(rows);
        }
        takeDesign(rows);
        if (shortOf(rows, "application", -1) > 0) takeApplication(rows);
        if (text::equals(page_.navigation, "A")) computeNavigation();
        return std::move(page_);
    }

  private:
    void takePlace(const db::Rows& rows) {
        page_.exists = true;
        page_.pageId = rows.number("pageId");
        page_.nodeId = text::lowerTrim(rows.view("nodeId"));
        page_.orderId = shortOf(rows, "orderId", page_.orderId);
        page_.type = text::upper(trimmed(rows, "type"));
        page_.title = trimmed(rows, "title");
        if (page_.title.empty()) page_.title = untitled;
        page_.navigation = trimmed(rows, "navigation");
        if (text::equals(page_.navigation, "M")) {
            page_.previous = rows.number("previous", -1);
            page_.next = rows.number("next", -1);
            page_.up = rows.number("up", -1);
        }
        page_.onlineFrom = rows.text("onlineFrom");
        page_.onlineTo = rows.text("onlineTo");
        page_.deleteStatus = shortOf(rows, "deleteStatus");
        page_.approveStatus = shortOf(rows, "approveStatus");
        page_.appSystemFolder = rows.number("app_system_folder");
        page_.breadcrumb = storedFlag(rows, "breadcrumb", page_.breadcrumb);
        page_.dynMenu = storedFlag(rows, "dynMenu", page_.dynMenu);
    }

    void takeGroups(const db::Rows& rows) {
        page_.groups = pageGroupNames(connection_, page_.pageId, twin_);
        // The groups are names here, so these two are never numbers of system groups, only groups so named.
        // Callers rely on it.
        if (page_.groups.empty() || page_.groups == "1") {
            page_.loginPage = -1;
        } else if (page_.groups == "0") {
            page_.loginPage = loginPageInDesign();
        } else {
            page_.loginPage = rows.number("loginPage", -1);
        }
    }

    PageId loginPageInDesign() const {
        return asLevel("getLoginPage !", [&] {
            return guardingPage(connection_, identify(connection_, page_.pageId), Twin::Design);
        });
    }

    double totalHits() const {
        return asLevel("getNumberOfViews !",
                       [&] { return viewsOf(connection_, nodeIdFrom(connection_, page_.pageId)); });
    }

    void takePublication(const db::Rows& rows) {
        const bool inTime = isWithin(host_.clock.today(), page_.onlineFrom, page_.onlineTo);
        page_.online = inTime ? shortOf(rows, "online") : 0;
        page_.totalHits = totalHits();
        page_.author = nameOf(rows, "author");
        page_.authoringDate = momentOf(rows, "authoringDate");
        page_.publisher = nameOf(rows, "publisher");
        page_.publishingDate = momentOf(rows, "publishingDate");
    }

    void takeWorkflow(const db::Rows& rows) {
        page_.editStatus = rows.text("editStatus");
        page_.lockStatus = shortOf(rows, "lockStatus");
        page_.editor = nameOf(rows, "editor");
        page_.editingDate = momentOf(rows, "editingDate");
        page_.lockedBy = nameOf(rows, "lockedBy");
        page_.lockingDate = momentOf(rows, "lockingDate");
        page_.deletedBy = nameOf(rows, "deletedBy");
        page_.deletingDate = momentOf(rows, "deletingDate");
        page_.approvedBy = nameOf(rows, "approvedBy");
        page_.approvingDate = momentOf(rows, "approvingDate");
    }

    void takeDesign(const db::Rows& rows) {
        page_.templateId = shortOf(rows, "template", page_.templateId);
        page_.templateFile = rows.text("tpl_filename");
        page_.templateName = rows.text("tpl_name");
        page_.stylesheetId = shortOf(rows, "stylesheet", page_.stylesheetId);
        page_.stylesheetFile = rows.text("ss_filename");
        page_.stylesheetName = rows.text("ss_name");
        page_.baseTemplateId = shortOf(rows, "baseTemplate", page_.baseTemplateId);
        page_.baseTemplateFile = rows.text("btpl_filename");
        page_.baseTemplateName = rows.text("btpl_name");
    }

    void takeApplication(const db::Rows& rows) {
        page_.appId = shortOf(rows, "application");
        page_.appName = rows.text("app_name");
        page_.appDesc = rows.text("app_description");
        page_.appParamPublic = rows.text("app_param_public");
        page_.appParamAdmin = rows.text("app_param_admin");
        page_.appUrlPublic = address(trimmed(rows, "app_href_public"), page_.appParamPublic);
        page_.appUrlAdmin = address(trimmed(rows, "app_href_admin"), page_.appParamAdmin);
    }

    std::string address(const std::string& registered, const std::string& parameters) const {
        if (registered.empty()) return {};
        return applicationAddress({registered, page_.pageId, host_.request.queryString(), parameters},
                                  registered);
    }

    void computeNavigation() {
        if (systemBranch::hasNumber(page_.nodeId)) return;
        const PageIdentity above = pageAbove(connection_, page_.nodeId, twin_);
        if (!above.nodeId.empty()) page_.up = above.pageId > 0 ? above.pageId : 0;
        if (page_.nodeId.size() < PageIdentity::rootLength + PageIdentity::levelLength) return;
        const std::string_view parent = parentOf(page_.nodeId);
        page_.previous = pageBefore(connection_, parent, page_.orderId, twin_);
        page_.next = pageBehind(connection_, parent, page_.orderId, twin_);
    }

    /// Of a login; "" for none.
    std::string nameOf(const db::Rows& rows, std::string_view column) {
        return rows.isNull(column) ? std::string() : manager_.getLoginName(shortOf(rows, column));
    }

    cManager& manager_;
    HostContext& host_;
    db::Connection& connection_;
    const Twin twin_;
    PageBuffer page_;
};

}  // namespace

void cManager::getPage(const std::string& pageIdent, const std::string& mode) try {
    page_ = {};
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (pageId <= 0) return;
    const Twin twin = twinOf(mode);
    auto rows = connection().query(twin == Twin::Design ? selectDesign : selectLive, {pageId});
    if (rows.next()) page_ = PageReader(*this, host_, connection(), twin).read(rows);
} catch (...) {
    raiseFrom("getPage!");
}

}  // namespace torvex
