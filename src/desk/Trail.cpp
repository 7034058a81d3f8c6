// desk: what was done in the whole system, and by whom.

#include <map>

#include "desk/FirstRow.h"
#include "desk/StoredMoment.h"
#include "desk/TrailSearch.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr int mostLines = 200;
constexpr std::size_t lineColumns = 10;
constexpr std::size_t choiceColumns = 3;

constexpr std::string_view selectLines =
    "select auditId, Date, time, loginId, loginName, pageId, pageTitle, nodeId, advId, action, description "
    "from TORVEX_AUDIT_TRAIL where ";
constexpr std::string_view latestFirst = " order by Date desc, time desc, auditId desc limit ? offset ?";

// Each from one value to the next by an index: a trail has few of them in millions of lines.
constexpr std::string_view selectLogins =
    "with recursive held (id) as (select min(loginId) from TORVEX_AUDIT_TRAIL where loginId > 0 "
    "union all select (select min(t.loginId) from TORVEX_AUDIT_TRAIL t where t.loginId > h.id) "
    "from held h where h.id is not null) "
    "select h.id, (select t.loginName from TORVEX_AUDIT_TRAIL t where t.loginId = h.id "
    "order by t.Date desc limit 1) as name from held h where h.id is not null order by name, h.id";
constexpr std::string_view selectActions =
    "with recursive held (word) as (select min(action) from TORVEX_AUDIT_TRAIL "
    "union all select (select min(t.action) from TORVEX_AUDIT_TRAIL t where t.action > h.word) "
    "from held h where h.word is not null) select word from held where word is not null";
constexpr std::string_view selectEntries =
    "with recursive held (id) as (select min(advId) from TORVEX_AUDIT_TRAIL where advId > 0 "
    "union all select (select min(t.advId) from TORVEX_AUDIT_TRAIL t where t.advId > h.id) "
    "from held h where h.id is not null) "
    "select h.id, a.advTitle from held h left outer join TORVEX_ADVANCED a on a.advId = h.id "
    "where h.id is not null order by h.id";

Value momentOf(const db::Rows& row) {
    const auto moment = storedMoment(row.view("Date"), row.view("time"));
    return moment ? Value(*moment) : Value();
}

std::vector<Value> lineOf(const db::Rows& row) {
    return {row.value("auditId"), momentOf(row),          row.value("loginId"), row.text("loginName"),
            row.value("pageId"),  row.text("pageTitle"),  row.text("nodeId"),   row.value("advId"),
            row.text("action"),   row.text("description")};
}

void addLogins(db::Connection& connection, ResultGrid& choices) {
    auto rows = connection.query(selectLogins);
    while (rows.next()) choices.add({"login", rows.value("id"), rows.text("name")});
}

void addActions(db::Connection& connection, ResultGrid& choices) {
    auto rows = connection.query(selectActions);
    while (rows.next()) {
        const std::string word = rows.text("word");
        if (!word.empty()) choices.add({"action", Value(), word});
    }
}

void addEntries(db::Connection& connection, std::string_view language, ResultGrid& choices) {
    struct Entry {
        Value id;
        double title;
    };
    std::vector<Entry> entries;
    std::vector<double> titles;
    {
        auto rows = connection.query(selectEntries);
        while (rows.next()) {
            const std::string title = rows.text("advTitle");
            entries.push_back({rows.value("id"), text::isNumeric(title) ? text::toNumber(title) : 0});
            titles.push_back(entries.back().title);
        }
    }
    const auto words = vocabularyTexts(connection, language, titles);
    for (const Entry& entry : entries) choices.add({"entry", entry.id, words.at(entry.title)});
}

}  // namespace

Value desk::getTrail(const std::string& filters, double from) try {
    const auto search = TrailSearch::of(connection(), filters);
    const auto first = firstRow(from);
    if (!search || !first) return {};
    std::string statement(selectLines);
    statement.append(search->condition()).append(latestFirst);
    auto values = search->values();
    values.insert(values.end(), {mostLines, *first});
    ResultGrid grid(lineColumns);
    auto rows = connection().query(statement, values);
    while (rows.next()) grid.add(lineOf(rows));
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getTrail !");
}

Value desk::getTrailChoices() try {
    ResultGrid choices(choiceColumns);
    addLogins(connection(), choices);
    addActions(connection(), choices);
    addEntries(connection(), host_.session.text(sessionKey::interfaceLanguage), choices);
    return gridOrEmpty(std::move(choices));
} catch (...) {
    raiseFrom("getTrailChoices !");
}

}  // namespace torvex
