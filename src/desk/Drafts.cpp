// desk: what an author has typed and not saved.

#include <map>

#include "accounts/Actor.h"
#include "accounts/DesignRights.h"
#include "authoring/StatusCodes.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view noPage = "-1";
constexpr std::string_view tooLong = "-2";
constexpr std::string_view tooMany = "-3";

// A body of 200 KB is long. One login can't fill the disk.
constexpr std::size_t longestDraft = 1'000'000;
constexpr double mostDrafts = 100;
constexpr double mostBytes = 20'000'000;
constexpr std::size_t longestBase = 64;

constexpr std::string_view selectOthers =
    "select count(*) as number, sum(bytes) as total from TORVEX_DRAFTS "
    "where loginId = ? and not (pageId = ? and bodyId = ?)";
constexpr std::string_view store =
    "insert into TORVEX_DRAFTS (loginId, pageId, bodyId, html, bytes, base, moment) "
    "values (?, ?, ?, ?, ?, ?, ?) on conflict (loginId, pageId, bodyId) do update "
    "set html = excluded.html, bytes = excluded.bytes, base = excluded.base, moment = excluded.moment";
constexpr std::string_view drop = "delete from TORVEX_DRAFTS where loginId = ? and pageId = ? and bodyId = ?";

constexpr std::string_view selectAll =
    "select a.pageId, b.nodeId, b.title, a.bodyId, a.html, a.base, a.moment from TORVEX_DRAFTS a "
    "inner join TORVEX_PAGES_DESIGN b on b.pageId = a.pageId where a.loginId = ? "
    "order by a.moment desc, a.pageId, a.bodyId";
constexpr std::string_view selectOfPage =
    "select a.pageId, b.nodeId, b.title, a.bodyId, a.html, a.base, a.moment from TORVEX_DRAFTS a "
    "inner join TORVEX_PAGES_DESIGN b on b.pageId = a.pageId where a.loginId = ? and a.pageId = ? "
    "order by a.moment desc, a.pageId, a.bodyId";

constexpr std::size_t draftColumns = 9;

/// Whether the login has room for a draft of a body beside all its others.
bool hasRoom(db::Connection& connection, int loginId, PageId pageId, int bodyId, std::size_t bytes) {
    auto rows = connection.query(selectOthers, {loginId, pageId, bodyId});
    if (!rows.next()) return true;
    return rows.number("number") < mostDrafts &&
           rows.number("total") + static_cast<double>(bytes) <= mostBytes;
}

struct Draft {
    PageId pageId = 0;
    std::string nodeId;
    std::string title;
    int bodyId = 0;
    std::string html;
    std::string base;
    Value moment;
};

std::vector<Draft> draftsOf(db::Connection& connection, std::string_view statement,
                            const std::vector<db::Parameter>& values) {
    std::vector<Draft> drafts;
    auto rows = connection.query(statement, values);
    while (rows.next()) {
        drafts.push_back({rows.number("pageId"), rows.text("nodeId"), rows.text("title"),
                          static_cast<int>(rows.number("bodyId")), rows.text("html"), rows.text("base"),
                          rows.value("moment")});
    }
    return drafts;
}

/// Titles of trees in which the author works no more aren't hers to read; what she has typed is.
void hideTitles(db::Connection& connection, const Actor& actor, std::vector<Draft>& drafts) {
    std::map<std::string, bool> trees;
    for (Draft& draft : drafts) {
        const std::string tree = text::lower(text::first(draft.nodeId, PageIdentity::rootLength));
        const auto [known, isNew] = trees.try_emplace(tree);
        if (isNew) known->second = mayReadDesign(connection, actor, siteOf(tree), langOf(tree));
        if (!known->second) draft.title.clear();
    }
}

}  // namespace

std::string desk::saveDraft(const std::string& pageIdent, int bodyId, const std::string& html,
                            const std::string& base) try {
    const Actor actor = actorOf(host_);
    if (actor.loginId <= 0) return std::string(status::notLoggedIn);
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid()) return std::string(noPage);
    if (html.size() > longestDraft) return std::string(tooLong);
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveDraft of page " + text::fromNumber(page.pageId), status::failed,
        [&](db::Connection& own) -> db::Outcome<std::string_view> {
            if (!hasRoom(own, actor.loginId, page.pageId, bodyId, html.size())) return db::refuse(tooMany);
            own.execute(store, {actor.loginId, page.pageId, bodyId, std::string_view(html),
                                static_cast<std::int64_t>(html.size()),
                                text::first(text::trim(base), longestBase), actor.now});
            return db::commit(status::done);
        });
    return std::string(outcome.value);
} catch (...) {
    raiseFrom("saveDraft !");
}

Value desk::getDrafts(const std::string& pageIdent) try {
    const Actor actor = actorOf(host_);
    const bool isOfPage = !text::trim(pageIdent).empty();
    std::vector<db::Parameter> values{actor.loginId};
    if (isOfPage) values.emplace_back(pageIdFrom(connection(), pageIdent));
    auto drafts = draftsOf(connection(), isOfPage ? selectOfPage : selectAll, values);
    hideTitles(connection(), actor, drafts);
    ResultGrid grid(draftColumns);
    for (const Draft& draft : drafts) {
        grid.add({draft.pageId, siteOf(draft.nodeId), langOf(draft.nodeId), draft.nodeId, draft.title,
                  draft.bodyId, draft.html, draft.base, draft.moment});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getDrafts !");
}

std::string desk::dropDraft(const std::string& pageIdent, int bodyId) try {
    const Actor actor = actorOf(host_);
    if (actor.loginId <= 0) return std::string(status::notLoggedIn);
    connection().execute(drop, {actor.loginId, pageIdFrom(connection(), pageIdent), bodyId});
    return std::string(status::done);
} catch (...) {
    raiseFrom("dropDraft !");
}

}  // namespace torvex
