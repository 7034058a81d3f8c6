#include "authoring/SetupRow.h"

#include <cmath>
#include <string>
#include <vector>

#include "accounts/Actor.h"
#include "authoring/HeldNumber.h"
#include "authoring/PageBuffer.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/GroupNames.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

// Both have the columns of the setup first, in the order of `setupOf`.
constexpr std::string_view insertPage =
    "insert into TORVEX_PAGES_DESIGN (site, lang, nodeId, orderId, parent, type, title, navigation, "
    "previous, next, up, template, application, app_param_public, app_param_admin, app_system_folder, "
    "stylesheet, baseTemplate, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, "
    "editStatus, lockStatus, lockedBy, lockingDate, editor, editingDate, deleteStatus, deletedBy, "
    "deletingDate, approveStatus) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
    "?, 0, null, null, ?, ?, 0, null, null, 0)";
constexpr std::string_view updatePage =
    "update TORVEX_PAGES_DESIGN set site = ?, lang = ?, nodeId = ?, orderId = ?, parent = ?, type = ?, "
    "title = ?, navigation = ?, previous = ?, next = ?, up = ?, template = ?, application = ?, "
    "app_param_public = ?, app_param_admin = ?, app_system_folder = ?, stylesheet = ?, baseTemplate = ?, "
    "onlineFrom = ?, onlineTo = ?, breadcrumb = ?, dynMenu = ?, loginPage = ?, "
    "editStatus = 'M', editor = ?, editingDate = ?, deleteStatus = 0, deletedBy = null, "
    "deletingDate = null, approveStatus = 0 "
    "where pageId = ? and nodeId = ? and (coalesce(lockStatus, 0) <> 1 or lockedBy = ?)";

constexpr std::string_view deleteGroups = "delete from TORVEX_PAGES_GROUPS_DESIGN where pageId = ?";
constexpr std::string_view insertGroup =
    "insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) values (?, ?)";

std::string_view parentInTree(std::string_view nodeId) {
    return nodeId.size() > PageIdentity::rootLength ? parentOf(nodeId) : std::string_view();
}

/// The engines would disagree on what a fraction becomes.
PageId whole(std::string_view column, PageId number) {
    constexpr double exactDoubles = 9007199254740992.0;
    if (std::trunc(number) != number || std::abs(number) > exactDoubles) {
        throw Error(std::string(column) + " must be a whole number, not " + text::fromNumber(number));
    }
    return number;
}

struct Flags {
    std::string breadcrumb;
    std::string dynMenu;
};

/// The values look into the record and the flags.
std::vector<db::Parameter> setupOf(const PageBuffer& page, const Flags& flags) {
    return {siteOf(page.nodeId),
            langOf(page.nodeId),
            page.nodeId,
            page.orderId,
            parentInTree(page.nodeId),
            page.type,
            page.title,
            page.navigation,
            whole("previous", page.previous),
            whole("next", page.next),
            whole("up", page.up),
            page.templateId,
            page.appId,
            page.appParamPublic,
            page.appParamAdmin,
            whole("app_system_folder", page.appSystemFolder),
            page.stylesheetId,
            page.baseTemplateId,
            page.onlineFrom,
            page.onlineTo,
            flags.breadcrumb,
            flags.dynMenu,
            whole("loginPage", page.loginPage)};
}

Flags flagsOf(const PageBuffer& page) {
    return {std::to_string(page.breadcrumb), std::to_string(page.dynMenu)};
}

int groupIdOf(db::Connection& connection, std::string_view entry) {
    if (text::isNumeric(entry)) return heldNumber("groupId", text::toNumber(entry));
    return getGroupIdByName(connection, entry);
}

}  // namespace

void insertSetup(db::Connection& connection, const PageBuffer& page, const Actor& editor) {
    constexpr std::string_view fresh = "N";
    constexpr std::string_view modified = "M";
    const Flags flags = flagsOf(page);
    auto values = setupOf(page, flags);
    // What has no content is as good as changed: it can be published as it is.
    values.insert(values.end(),
                  {hasBodies(kindOf(page.type)) ? fresh : modified, editor.loginId, editor.now});
    connection.execute(insertPage, values);
}

bool updateSetup(db::Connection& connection, const PageBuffer& page, const Actor& editor) {
    const Flags flags = flagsOf(page);
    auto values = setupOf(page, flags);
    values.insert(values.end(), {editor.loginId, editor.now, page.pageId, page.nodeId, editor.loginId});
    return connection.execute(updatePage, values) > 0;
}

void replaceGroups(db::Connection& connection, PageId pageId, std::string_view groups) {
    connection.execute(deleteGroups, {pageId});
    if (groups.empty()) return;
    for (std::size_t from = 0; from <= groups.size();) {
        const std::size_t comma = std::min(groups.find(',', from), groups.size());
        const auto entry = text::trim(groups.substr(from, comma - from));
        connection.execute(insertGroup, {pageId, groupIdOf(connection, entry)});
        from = comma + 1;
    }
}

}  // namespace torvex
