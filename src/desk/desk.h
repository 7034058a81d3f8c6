#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"

namespace torvex {
class Presence;
struct HostContext;

/// What an author's day needs beside the pages themselves: what waits for whom, what differs, where something
/// is used. It changes no content. An object is made for one request, in the name of the login that the
/// visitor's session holds, and is used by one thread.
///
/// Lists are grids, or an empty value when there is nothing in them; each says in which order it is. A
/// `pageIdent` is a page's number or its node, always of the design; where there is no such page, nothing is
/// listed.
class desk {
  public:
    /// One that knows nobody else's presence.
    explicit desk(HostContext& host);
    /// `presence` is what all authors of the server share.
    desk(HostContext& host, std::shared_ptr<Presence> presence)
        : host_(host), presence_(std::move(presence)) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // ---- What waits (desk/Work.cpp, Branch.cpp) ----

    // Only pages where the caller may do what the list is for; `site` and `lang` "" mean all of them. The
    // columns are those of the page, with empty texts where there is nothing: who changed it last and when,
    // who holds it since when, and the days of the live page.

    /// "mine": those that the caller has changed or holds, the latest change first. By node: "approve" what can
    /// be approved now, "publish" what can be published, "marked" what is marked for deletion, "dates" what
    /// comes on line or goes off line within 14 days. At most 500 lines, from the line `from` (0) on.
    Value getWork(const std::string& site, const std::string& lang, const std::string& kind, double from = 0);
    /// The pages changed last, the latest first and of the same second the one made later; at most 200.
    Value getRecent(const std::string& site, const std::string& lang, int number = 20);
    /// The page and all below it, by node: whether each would go live (or be removed) by
    /// `publishPageCascading`, and if not, why: "held", "notApproved", "parentNotLive", "unchanged" or
    /// "noRight".
    Value getBranch(const std::string& pageIdent);

    // ---- What there is (desk/Find.cpp) ----

    /// Pages, images and documents with these words, at most 30 of each kind from the line `from` (0) on; `kinds`
    /// "" means all of them, else it is a list divided by commas. Pages in trees where the caller has an edit
    /// right: the one that the words name by its number or node, then those with words in the title that begin
    /// with all of them, then those with such words in title and bodies; each by title, then node (see
    /// FoundPages.h, also for `filters`). Then files of the sites where she has one, or may look at the files:
    /// those with all words anywhere in title, file name or alternative text, by title, site and file.
    Value find(const std::string& words, const std::string& kinds = "", const std::string& site = "",
               const std::string& lang = "", const std::string& filters = "", double from = 0);

    // ---- Where texts lead (desk/DeadLinks.cpp, Uses.cpp, Impact.cpp) ----

    /// Links and files in the designs of a tree that lead nowhere for visitors: "gone", "notLive" and "offline"
    /// pages, "noFile", and links that are still "unchosen". By node, body (0 for meta data), target, reason; at
    /// most 500, from the line `from` (0) on. A target that is a page has its title, of one that is gone the
    /// last that the audit trail knows.
    Value getDeadLinks(const std::string& site, const std::string& lang, double from = 0);
    /// The pages that use something, in trees whose designs the caller may read: a "page" by its number or node;
    /// an "image" or "document" by "SITE/PATH", where a path that ends in "/" is a folder with all in it; a
    /// "template", "baseTemplate", "stylesheet", "application", "htmlFeed", "xmlFeed" or "group" by its number. By
    /// node, twin ("D" before "L") and body, 0 for the setup and meta data; at most 500, from the line `from` on.
    Value getUses(const std::string& kind, const std::string& id, double from = 0);
    /// What would go with the page and all below it, and what would lose something: each "page" of the branch,
    /// those that are "held" (by whom) and "notApproved"; outside of it each "link" to it (body 0: of the setup)
    /// and each page whose "login" page is in it; pages in it that are a group's "entry" or "exit" page or have a
    /// "menu". In this order of kinds, each by node, then body. Of pages that the caller may not read only that
    /// they are.
    Value getImpact(const std::string& pageIdent);

    // ---- A page (desk/Bodies.cpp, Compare.cpp, History.cpp, Hits.cpp) ----

    /// The bodies that have a row in the design or the live data, by their number: kind and feed of the
    /// design's, its length in characters, and whether visitors see another one.
    Value getBodies(const std::string& pageIdent);
    /// Where the design differs from what visitors see, to the letter: `part` says what of the page ("title",
    /// "template", ..., "groups", "metaData" with the tag's name, "bodyKind", "body"), in the order of the
    /// setup, then meta data by name, then bodies by number. Design assets stand by their names, "" inherits;
    /// pages as "Visit (aa.en.01)". A page that isn't live differs in all it has.
    Value compare(const std::string& pageIdent);
    /// The lines of the audit trail for the page, the latest first; at most 500, from the line `from` (0) on.
    Value getHistory(const std::string& pageIdent, double from = 0);
    /// Views and visitors of a page, given by its number, or of a page and all below it, given by its node:
    /// those of each day, "month" or "year" from one day ("yyyymmdd", "" for no limit) to another that had any,
    /// the earliest first.
    Value getHits(const std::string& scope, const std::string& from, const std::string& to,
                  const std::string& by);

    // ---- Running it (desk/Trail.cpp, PageHits.cpp, SearchedWords.cpp, Catalogue.cpp, Settings.cpp,
    // OwnPassword.cpp, Servers.cpp) ----

    /// The lines of the whole audit trail that the filters hold for (see TrailSearch.h), the latest first; at most
    /// 200, from the line `from` (0) on. An unknown filter finds nothing.
    Value getTrail(const std::string& filters, double from = 0);
    /// What the trail can be narrowed to: each "login" with the last name that it has there, by name, each "action",
    /// each "entry" of the administration menu with its title in the caller's language.
    Value getTrailChoices();
    /// Pages of a website by what visitors looked at between two days: "best" by views, "rising" by how many more
    /// they are than in as many days before, "unread" those that can be seen and weren't, by node; at most 100 from
    /// the line `start` on, with views, visitors, and views in the days before.
    Value getPageHits(const std::string& site, const std::string& lang, const std::string& from,
                      const std::string& to, const std::string& kind, double start = 0);
    /// The words that visitors of a website searched for between two days, with how often, and how often nothing was
    /// found: "all" by how often, "empty" those that at least once nothing was found for, by that; at most 100 from
    /// the line `start` on.
    Value getSearchedWords(const std::string& site, const std::string& lang, const std::string& from,
                           const std::string& to, const std::string& kind, double start = 0);
    /// On which days how many pages were published: of the scope that `getHits` takes.
    Value getPublishings(const std::string& scope, const std::string& from, const std::string& to);
    /// The settings of a login, for 0 those of the installation: name, what it means, group, type, value, what is
    /// usual, 1 where it is that, and when a change counts: "now", with the next "session", or never, as the "file"
    /// decides it or it is "unused". Known ones first, in the order of their groups; then "other" ones, by name.
    Value getSettings(int loginId);
    /// Whether authors from an address would be let in by a filter of addresses, compared exactly or as a text.
    bool tryAccessFilter(const std::string& filter, bool exact, const std::string& address);
    /// What other servers have missed of the installation's files, by server, the latest first; at most 500.
    Value getReplication();
    /// The search catalogue of this server: its entries, its size in bytes, the changed files that wait, 1 where a
    /// running server keeps it, what it is asked for ("compare", "anew", "stop") and what is at work, the files of that
    /// and how many are done, when all files were compared last, and what is in the way.
    Value getCatalogue();
    /// A new password for the caller's own login, whose name and password are to be proved: 0, 1 when they are
    /// wrong, 2 without a new one, 3 when it is one of the commonest (see accounts/CommonPasswords.h), -10.
    int changePassword(const std::string& username, const std::string& password,
                       const std::string& newPassword);
    /// What a password is that somebody is to be given: 0 fine, 1 one of the commonest.
    int judgePassword(const std::string& password);

    // ---- The second factor (desk/SecondFactor.cpp) ----
    // Of the caller's own login: a telephone that shows codes, and ten codes on paper. Texts: what was asked for, or
    // "-10", "-99" and what stands here. Names and passwords are to be proved as with `changePassword`.

    /// 1 where she has one, since when, how many codes on paper are left, 1 where a role of hers demands one.
    Value getSecondFactor();
    /// A new secret, as the address that an application reads; it counts when a code of it is confirmed in this
    /// session, within ten minutes. "-3" she has one.
    std::string beginSecondFactor();
    /// The codes on paper, divided by blanks, told this once. "-1" the code is wrong, "-2" nothing was begun, or too
    /// long ago, "-3" she has one.
    std::string confirmSecondFactor(const std::string& code);
    /// "" when it is gone: by the password, a code of the telephone or one on paper. "-1" it is wrong, "-2" a role
    /// demands one, "-3" there is none.
    std::string dropSecondFactor(const std::string& username, const std::string& proof);
    /// New codes on paper in place of the others, by a code of the telephone. "-1" it is wrong, "-3" there is none.
    std::string renewRecoveryCodes(const std::string& username, const std::string& code);
    /// The second step of a login, after `cManager.login` or `takeOver` asked for a code: 0 when she has it, 1 when
    /// name and password are to be given anew, 2, 3, and 5 when the code is wrong. After a 3 `takeOver` ends the
    /// other session, and the code needn't be given again.
    int proveSecond(const std::string& username, const std::string& code, bool takeOver = false);

    // ---- Programs (desk/Tokens.cpp) ----

    /// Makes a login a program's, or with false a person's again: whoever holds it is out. "" when it is done,
    /// "-10", "-1" for no such login, "-2" for the administrator's, "-99".
    std::string setProgram(int loginId, bool isProgram, int advId = 0);
    /// A token for a program's login: the token, which nobody is told again; "-10", "-1" for no such login, "-2"
    /// for a person's, "-3" for wishes that can't be used, "-99". See accounts/ProgramTokens.h.
    std::string makeToken(int loginId, const std::string& name, const std::string& operations,
                          const std::string& addresses, const std::string& lastDay, int advId = 0);
    /// Of a login, by name; without their texts.
    Value getTokens(int loginId);
    /// "" when it is gone, "-10", "-1" for no such token, "-99".
    std::string revokeToken(int tokenId, int advId = 0);

    // ---- Rights (desk/Why.cpp) ----
    // The first line says "yes" or "no" as the gate would, and to what. Then what decides it: "administrator",
    // "noLogin", "noPage", "noTask", "notOffered", or role by role whether it "gives" the right, gives it
    // "outside" of the page or "elsewhere", gives "otherRights" here, or has "nothing" to do with it, each with
    // its places. Last, after a "no" that a role could change, what she "needs".

    /// Why a login may take an action ("onoff", "move", "publish", "approve", "edit") on a page, or may not.
    Value why(int loginId, const std::string& action, const std::string& pageIdent);
    /// Why a login has "view" or "edit" access to an entry of the administration menu, "" either.
    Value whyEntry(int loginId, const std::string& flag, int advId, const std::string& site = "",
                   const std::string& lang = "");

    // ---- Drafts (desk/Drafts.cpp) ----

    // What the caller has typed into a body and not saved: hers alone, no version, nothing that others see. It
    // goes with the page and with the login. "0", or a code.

    /// In place of an earlier one; `base` tells which text of the body it began with.
    std::string saveDraft(const std::string& pageIdent, int bodyId, const std::string& html,
                          const std::string& base);
    /// The latest first; of one page if it is named. What is in a tree where the caller works no more has no
    /// title.
    Value getDrafts(const std::string& pageIdent = "");
    std::string dropDraft(const std::string& pageIdent, int bodyId);

    // ---- Who is where (desk/Pulse.cpp, Online.cpp) ----

    /// Tells where the caller is ("looking", "typing" or "away"), and brings who else is in that site and
    /// language ("here"), who would like a page that she holds ("asked"), whether another one holds the page
    /// that she had ("takenOver"), and how many pages wait for her to "approve" or "publish" there ("count").
    /// A page counts where it is; a place in which the caller doesn't work is none. Who had left the site and
    /// language is in it again, unless she is away.
    Value pulse(const std::string& site, const std::string& lang, PageId pageId, const std::string& doing);
    /// Asks who holds a page for it: "0", or a code.
    std::string ask(const std::string& pageIdent);
    /// The caller is nowhere any more, so that nobody waits for her.
    void leave();
    /// Who is logged in, by name: in a site and language, or with both empty everywhere.
    Value getOnline(const std::string& site, const std::string& lang);
    /// Has those leave the site and language who have done nothing for ten minutes: how many.
    int freeIdle(const std::string& site, const std::string& lang);

    // ---- The login (desk/TakeOver.cpp) ----

    /// Logs in as `cManager.login` does, also when a session at another address has the login: that one finds
    /// itself logged out.
    int takeOver(const std::string& username, const std::string& password);

  private:
    void recordLeaving(const std::string& name, const std::string& website);
    db::Connection& connection() { return connection_.use(host_); }

    HostContext& host_;
    db::ConnectionSource connection_;
    std::shared_ptr<Presence> presence_;
};

}  // namespace torvex
