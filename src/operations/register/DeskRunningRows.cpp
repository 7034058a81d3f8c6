#include "accounts/AdminEntries.h"
#include "operations/register/DeskRows.h"
#include "operations/register/RunningLabels.h"

namespace torvex::operations {

namespace {

std::vector<Row<desk>> trail() {
    return {
        reads("getTrail", &desk::getTrail, {argument("filters"), argument("from", 0.0)},
              "What was done, the latest first; 200 lines at most. Filters, divided by commas: \"login:7\", "
              "\"page:12\", \"branch:aa.en.01\", \"action:check in\", \"entry:61\", \"from:20261101\", "
              "\"to:20261130\".",
              viewAccess(adminEntry::auditTrail))
            .lists({{"line", Number},
                    {"moment", Date},
                    {"loginId", Number},
                    {"name", Text},
                    {"pageId", Number},
                    {"title", Text},
                    {"nodeId", Text},
                    {"entry", Number},
                    {"action", Text},
                    {"detail", Text}}),
        reads("getTrailChoices", &desk::getTrailChoices, {},
              "What the audit trail can be narrowed to: each \"login\", \"action\" and \"entry\" in it.",
              viewAccess(adminEntry::auditTrail))
            .lists({{"kind", Text}, {"id", Number}, {"name", Text}}),
    };
}

std::vector<Row<desk>> statistics() {
    return {
        reads("getPageHits", &desk::getPageHits,
              {argument("site"), argument("lang"), argument("from"), argument("to"), argument("kind"),
               argument("start", 0.0)},
              "Pages by what visitors looked at between two days: \"best\", \"rising\" or \"unread\"; 100 at "
              "most. Days are yyyymmdd.",
              viewAccess(adminEntry::statistics, "site", "lang"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"views", Number},
                    {"visitors", Number},
                    {"earlier", Number}}),
        reads(
            "getSearchedWords", &desk::getSearchedWords,
            {argument("site"), argument("lang"), argument("from"), argument("to"), argument("kind"),
             argument("start", 0.0)},
            "What visitors searched for between two days, and how often nothing was found: \"all\" words or "
            "those of \"empty\" results; 100 at most. Days are yyyymmdd.",
            viewAccess(adminEntry::statistics, "site", "lang"))
            .lists({{"word", Text}, {"searches", Number}, {"withoutResult", Number}}),
        reads("getPublishings", &desk::getPublishings, {argument("scope"), argument("from"), argument("to")},
              "On which days how many pages were published: a page, given by its number, or a branch, given "
              "by its node.",
              viewAccessAt(adminEntry::statistics, "scope"))
            .lists({{"day", Text}, {"pages", Number}}),
    };
}

std::vector<Row<desk>> catalogue() {
    return {
        reads("getCatalogue", &desk::getCatalogue, {},
              "The search catalogue of this server: what it holds, what waits, and how far its renewal has "
              "come.",
              viewAccess(adminEntry::catalogue))
            .lists({{"entries", Number},
                    {"bytes", Number},
                    {"queued", Number},
                    {"isKept", Number},
                    {"asked", Text},
                    {"task", Text},
                    {"total", Number},
                    {"done", Number},
                    {"compared", Date},
                    {"failure", Text}}),
    };
}

std::vector<Row<desk>> settings() {
    return {
        reads(
            "getSettings", &desk::getSettings, {argument("loginId")},
            "The settings of a login, for 0 of the installation: what each means and is, what is usual, and "
            "when a change counts.",
            oneselfOrEditAccess("loginId", adminEntry::settings))
            .lists({{"parameter", Text},
                    {"meaning", Text},
                    {"section", Text},
                    {"dataType", Text},
                    {"content", Text},
                    {"usual", Text},
                    {"isUsual", Number},
                    {"takes", Text}}),
        reads("tryAccessFilter", &desk::tryAccessFilter,
              {argument("filter"), argument("exact"), argument("address")},
              "Whether authors from an address would be let in by a filter of addresses.",
              editAccess(adminEntry::settings)),
        reads("getReplication", &desk::getReplication, {},
              "What other servers have missed of the installation's files: \"write\" or \"remove\" a path; "
              "500 at "
              "most.",
              viewAccess(adminEntry::servers))
            .lists({{"server", Text}, {"path", Text}, {"task", Text}, {"reason", Text}, {"moment", Date}}),
        writes("changePassword", &desk::changePassword,
               {argument("username"), argument("password"), argument("newPassword")},
               "Gives the caller's own login another password.", anyLogin())
            .codes({code(0, "It is changed."),
                    refusal(1, "The name or the password isn't the caller's.", label::wrongOldPassword),
                    refusal(2, "A new password is missing.", label::newPasswordMissing),
                    refusal(3, "The new password is one of the 100,000 commonest.", label::newPasswordCommon),
                    notLoggedIn()})
            .testsPassword({"username", 0, 1}),
        // Nothing is noted, but what only reads may be asked for in an address, and addresses stand in logs.
        enters("judgePassword", &desk::judgePassword, {argument("password")},
               "Whether a password could be given to somebody, before it is. It is kept nowhere.", anyLogin())
            .codes({code(0, "It is fine."), code(1, "It is one of the 100,000 commonest.")}),
    };
}

}  // namespace

std::vector<Row<desk>> deskRunningRows() {
    return joined({trail(), statistics(), catalogue(), settings()});
}

}  // namespace torvex::operations
