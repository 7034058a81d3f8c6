#include "accounts/AdminEntries.h"
#include "operations/register/DeskRows.h"
#include "operations/register/SecondFactorLabels.h"

namespace torvex::operations {

namespace {

std::vector<Row<desk>> drafts() {
    return {
        writes("saveDraft", &desk::saveDraft,
               {argument("pageIdent"), argument("bodyId"), argument("html"), argument("base")},
               "Keeps what the caller has typed into a body, apart from the page; `base` is the SHA-256 of "
               "the text that it began with.",
               designOf("pageIdent"))
            .codes({code(0, "It is kept."), notLoggedIn(),
                    refusal(-1, "There is no such page.", label::pageGone),
                    refusal(-2, "It is longer than 1,000,000 bytes.", label::draftTooLong),
                    refusal(-3, "There are 100 drafts of this login, or 20,000,000 bytes of them.",
                            label::draftsFull),
                    failed()}),
        reads("getDrafts", &desk::getDrafts, {argument("pageIdent", "")},
              "The caller's own drafts, the latest first; of one page if it is named.", anyLogin())
            .lists({{"pageId", Number},
                    {"siteId", Text},
                    {"lang", Text},
                    {"nodeId", Text},
                    {"title", Text},
                    {"bodyId", Number},
                    {"html", Text},
                    {"base", Text},
                    {"moment", Date}}),
        writes("dropDraft", &desk::dropDraft, {argument("pageIdent"), argument("bodyId")},
               "Drops the caller's own draft of a body.", anyLogin())
            .codes({code(0, "There is none any more."), notLoggedIn()}),
    };
}

std::vector<Row<desk>> presence() {
    return {
        enters("pulse", &desk::pulse,
               {argument("site"), argument("lang"), argument("pageId"), argument("doing")},
               "Tells every half minute where the caller is, \"looking\", \"typing\" or \"away\", and "
               "brings who else is \"here\", who \"asked\" for a page of hers, how many pages wait for her "
               "(\"count\"), and whether her page was \"takenOver\".",
               anyLogin())
            .lists({{"kind", Text},
                    {"loginId", Number},
                    {"name", Text},
                    {"pageId", Number},
                    {"doing", Text},
                    {"since", Date},
                    {"text", Text},
                    {"number", Number}}),
        writes("ask", &desk::ask, {argument("pageIdent")},
               "Asks who has a page checked out for it; her next pulse brings it.", designOf("pageIdent"))
            .codes({code(0, "She is asked."), notLoggedIn(),
                    refusal(-1, "Nobody else has the page.", label::nobodyHasIt),
                    refusal(-2, "Who has it isn't here.", label::holderAway),
                    refusal(-3, "There is no such page.", label::pageGone)}),
        enters("leave", &desk::leave, {}, "Has the caller leave the site and language that she works in.",
               anyLogin()),
        reads("getOnline", &desk::getOnline, {argument("site"), argument("lang")},
              "Who is logged in, where, and how long idle; an empty site and language mean all.",
              orViewAccess(editRightIn("move", "site", "lang"), adminEntry::loginsOnline))
            .lists({{"loginId", Number},
                    {"name", Text},
                    {"siteId", Text},
                    {"lang", Text},
                    {"pageId", Number},
                    {"since", Date},
                    {"idleSeconds", Number}}),
        writes("freeIdle", &desk::freeIdle, {argument("site"), argument("lang")},
               "Has those leave a site and language who have done nothing for ten minutes: how many.",
               orViewAccess(editRightIn("move", "site", "lang"), adminEntry::loginsOnline)),
    };
}

std::vector<Row<desk>> door() {
    return {
        writes("takeOver", &desk::takeOver, {argument("username"), argument("password")},
               "Logs an author in as `cManager.login` does, and ends the session at another address that has "
               "the login.",
               visitor())
            .codes(
                {code(0, "The session has the login."),
                 refusal(1, "The name or the password is wrong, or the login isn't valid today.",
                         label::wrongPassword),
                 refusal(2, "Logging in isn't allowed from this address.", label::otherAddress),
                 refusal(4, "The login has a second factor: `desk.proveSecond` goes on.", label::codeNeeded)})
            .testsPassword({"username", 0, 1}),
    };
}

}  // namespace

std::vector<Row<desk>> deskLiveRows() {
    return joined({drafts(), presence(), door()});
}

}  // namespace torvex::operations
