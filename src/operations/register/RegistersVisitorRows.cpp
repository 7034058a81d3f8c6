#include "accounts/AdminEntries.h"
#include "operations/register/RegistersRows.h"
#include "operations/register/RunningLabels.h"
#include "operations/register/SecondFactorLabels.h"

namespace torvex::operations {

namespace {

StatusCode openElsewhere() {
    return refusal(-4, "Another login has it open.", label::openElsewhere);
}

std::vector<Column> userColumns() {
    return {{"userId", Number},  {"username", Text}, {"firstname", Text},   {"lastname", Text},
            {"validFrom", Text}, {"validTo", Text},  {"userGroups", Number}};
}

std::vector<Row<registers>> groups() {
    return {
        reads("getGroups", &registers::getGroups, {},
              "The groups of visitors, and how many users are in each and pages and folders it guards; by "
              "name.",
              viewAccess(adminEntry::groups))
            .lists({{"groupId", Number},
                    {"name", Text},
                    {"description", Text},
                    {"entryPage", Number},
                    {"entryTitle", Text},
                    {"exitPage", Number},
                    {"exitTitle", Text},
                    {"users", Number},
                    {"pages", Number},
                    {"folders", Number}}),
        writes("saveGroup", &registers::saveGroup,
               {argument("groupId"), argument("name"), argument("description"), argument("entryPage", ""),
                argument("exitPage", ""), argument("advId", 0)},
               "Changes a group of visitors, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::groups))
            .codes({refusal(-1, "The group is gone.", label::groupGone),
                    refusal(-2, "Another group has this name.", label::groupNameTaken),
                    refusal(-3, "A name is missing.", label::groupNameMissing), openElsewhere(),
                    refusal(-5, "There is no such page.", label::noSuchPage), notLoggedIn(), failed()}),
    };
}

std::vector<Row<registers>> users() {
    return {
        reads("getUsers", &registers::getUsers,
              {argument("words", ""), argument("groupId", 0), argument("from", 0.0)},
              "The accounts of visitors with words in their names, of a group or of any; by username, 500 at "
              "most.",
              viewAccess(adminEntry::users))
            .lists(userColumns()),
        reads("getUser", &registers::getUser, {argument("userId")}, "An account of a visitor.",
              viewAccess(adminEntry::users))
            .lists(userColumns()),
        writes(
            "saveUser", &registers::saveUser,
            {argument("userId"), argument("username"), argument("password"), argument("firstname"),
             argument("lastname"), argument("validFrom", ""), argument("validTo", ""), argument("advId", 0)},
            "Changes an account of a visitor, or adds one for 0, gives its number and lets it go. An empty "
            "password stays; days are yyyymmdd.",
            editAccess(adminEntry::users))
            .codes({refusal(-1, "The user is gone.", label::userGone),
                    refusal(-2, "Another user has the username.", label::usernameTaken),
                    refusal(-3, "A username is missing.", label::nameMissing), openElsewhere(),
                    refusal(-5, "A new user needs a password.", label::passwordMissing),
                    refusal(-6, "A day is none.", label::noSuchDate), notLoggedIn(), failed()}),
        writes("setUserGroup", &registers::setUserGroup,
               {argument("userId"), argument("groupId"), argument("has"), argument("advId", 0)},
               "Takes a visitor into a group, or out of it.", editAccess(adminEntry::users))
            .codes({code(0, "It is saved."),
                    refusal(-1, "The user or the group is gone.", label::userOrGroupGone), openElsewhere(),
                    notLoggedIn(), failed()}),
        reads("getUserFactor", &registers::getUserFactor, {argument("userId")},
              "Since when the account of a visitor has a second factor, and how many recovery codes are "
              "left; nothing "
              "when it has none.",
              viewAccess(adminEntry::users))
            .lists({{"since", Date}, {"codesLeft", Number}}),
        writes(
            "resetUserFactor", &registers::resetUserFactor, {argument("userId"), argument("advId", 0)},
            "Takes the second factor and its recovery codes from the account of a visitor who has lost them.",
            editAccess(adminEntry::users))
            .codes({code("", "It is gone."), notLoggedIn(), refusal(-1, "The user is gone.", label::userGone),
                    refusal(-3, "The account has no second factor.", label::hasNoFactor), failed()}),
        writes(
            "importUsers", &registers::importUsers,
            {argument("table"), argument("dryRun"), argument("advId", 0)},
            "Adds and changes accounts of visitors by a table as text, all of its lines or none: what each "
            "\"adds\", \"changes\", leaves the \"same\", or why it is \"bad\". A dry run only says so.",
            editAccess(adminEntry::users))
            .lists({{"line", Number}, {"username", Text}, {"outcome", Text}, {"detail", Text}}),
    };
}

}  // namespace

std::vector<Row<registers>> registersVisitorRows() {
    return joined({groups(), users()});
}

}  // namespace torvex::operations
