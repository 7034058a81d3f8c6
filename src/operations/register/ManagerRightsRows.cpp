#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"
#include "operations/register/RightsLabels.h"

namespace torvex::operations {

namespace {

std::vector<Row<cManager>> rightsOfLogins() {
    return {
        reads(
            "checkEditRights", &cManager::checkEditRights,
            {argument("action"), argument("site"), argument("lang"), argument("pageIdent", ""),
             argument("username", "")},
            "Whether a login may do \"onoff\", \"move\", \"publish\", \"approve\" or \"edit\" in a site and "
            "language, and to a page if one is given.",
            anyLogin()),
        reads("getLoginEditRights", &cManager::getLoginEditRights,
              {argument("site"), argument("lang"), argument("pageIdent", ""), argument("username", "")},
              "The edit rights of a login as five flags: onOff, move, publish, approve, edit.", anyLogin()),
        reads("getLoginScope", &cManager::getLoginScope,
              {argument("site"), argument("lang"), argument("task"), argument("username", "")},
              "The nodes under which a login may do a task, divided by commas; the root of the tree for "
              "all of it.",
              anyLogin()),
        reads("isMemberOfScope", &cManager::isMemberOfScope, {argument("nodeId"), argument("scope")},
              "Whether a node is one of the scope's nodes or lies under one.", anyLogin()),
        reads("checkAdvRights", &cManager::checkAdvRights,
              {argument("flag"), argument("advId"), argument("site", ""), argument("lang", ""),
               argument("username", "")},
              "Whether a login has the \"view\" or \"edit\" right of an entry of the administration menu, "
              "or with an empty flag either one.",
              anyLogin()),
    };
}

std::vector<Row<cManager>> administrationMenu() {
    return {
        enters("getAdvancedMap", &cManager::getAdvancedMap,
               {argument("site"), argument("lang"), argument("order", 0)},
               "The administration menu of the login as one text, and enters the site and language.",
               anyLogin())
            .codes({refusal(-1,
                            "Pages are being moved in this site and language, so that nobody can enter them.",
                            label::somebodyWorks)}),
        reads("getAdvList", &cManager::getAdvList, {}, "The entries of the administration menu.", anyLogin())
            .lists({{"advId", Number},
                    {"advLevel", Number},
                    {"advReference", Text},
                    {"title", Text},
                    {"advIcon", Text},
                    {"advProgram", Text},
                    {"advEdit", Number},
                    {"advView", Number},
                    {"advAudit", Number}}),
        reads("getAdvTitle", &cManager::getAdvTitle, {argument("advId")},
              "The title of an entry of the administration menu, in the interface language.", anyLogin()),
    };
}

std::vector<Row<cManager>> roles() {
    return {
        reads("getRoleAdvancedRights", &cManager::getRoleAdvancedRights,
              {argument("roleId"), argument("site"), argument("lang"), argument("order", 0)},
              "The entries of the administration menu with what a role may do with each: -1 there is no "
              "such right, 0 it hasn't got it, 1 it has.",
              viewAccess(adminEntry::roles))
            .lists({{"advId", Number},
                    {"advLevel", Number},
                    {"advReference", Text},
                    {"title", Text},
                    {"advIcon", Text},
                    {"advProgram", Text},
                    {"hasChildren", Number},
                    {"view", Number},
                    {"edit", Number}}),
        reads("getRoleEditRights", &cManager::getRoleEditRights,
              {argument("roleId"), argument("site"), argument("lang")},
              "The edit rights of a role as five flags: onOff, move, publish, approve, edit.",
              viewAccess(adminEntry::roles)),
        reads("getRoleScope", &cManager::getRoleScope,
              {argument("site"), argument("lang"), argument("roleId")},
              "The nodes to which the edit rights of a role are limited; empty text for none.",
              viewAccess(adminEntry::roles)),
        reads("getRoleId", &cManager::getRoleId, {argument("roleName")}, "The number of a role by its name.",
              viewAccess(adminEntry::roles))
            .codes({code(0, "There is no such role.")}),
        reads("getRoleName", &cManager::getRoleName, {argument("roleId")}, "The name of a role.",
              viewAccess(adminEntry::roles)),
        writes("deleteRole", &cManager::deleteRole, {argument("roleId"), argument("advId", 0)},
               "Removes a role with its rights and memberships.", editAccess(adminEntry::roles))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-3, "There is no such role, or another login has it open.", label::goneOrOpen),
                    refusal(-4, "Nobody but sa would be left to give rights.", label::lastAdministrator),
                    failed()}),
        reads("getRoleDescription", &cManager::getRoleDescription, {argument("roleId")},
              "The description of a role.", viewAccess(adminEntry::roles)),
    };
}

}  // namespace

std::vector<Row<cManager>> managerRightsRows() {
    return joined({rightsOfLogins(), administrationMenu(), roles()});
}

}  // namespace torvex::operations
