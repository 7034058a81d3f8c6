#include "modules/forum/ForumRecord.h"

#include <algorithm>
#include <set>

#include "platform/db/Connection.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectForums =
    "select forum_id, forum_name, forum_desc, forum_hotPeriod, forum_reactionsOnline, forum_archiveAfter, "
    "forum_archiveVisible, forum_sendEmail, forum_emailFrom, forum_emailTo, forum_emailSubject, "
    "forum_pageSize, forum_askName, forum_askEmail, forum_words "
    "from TORVEX_FORUM_LIVE where forum_site = ? and forum_lang = ? order by forum_name, forum_id";
constexpr std::string_view selectActivity =
    "select topic_forumId, count(*) as topics, "
    "max(coalesce(topic_lastDate, topic_dateCreation, '')) as lastDay "
    "from TORVEX_FORUM_TOPICS where topic_online = 1 and topic_forumId in (select forum_id from "
    "TORVEX_FORUM_LIVE where forum_site = ? and forum_lang = ?) group by topic_forumId";
constexpr std::string_view selectOtherPages =
    "select a.app_param_public from TORVEX_PAGES_LIVE a "
    "inner join TORVEX_APPLICATIONS b on a.application = b.app_id "
    "where b.app_href_public like '%torvex\\_forum%' and a.site = ? and a.lang = ? and a.pageId <> ? "
    "and a.type = 'A' and a.app_param_public like '%forumId%'";

constexpr std::string_view parameterName = "forumId";

Asked askedFrom(double value) {
    if (value >= 2) return Asked::MustBeGiven;
    return value >= 1 ? Asked::MayBeGiven : Asked::No;
}

ForumRecord recordFrom(const db::Rows& rows) {
    return {.id = static_cast<int>(rows.number("forum_id")),
            .name = trimmed(rows, "forum_name"),
            .description = trimmed(rows, "forum_desc"),
            .hotPeriod = rows.number("forum_hotPeriod"),
            .showsAtOnce = rows.number("forum_reactionsOnline") == 1,
            .archiveAfter = rows.number("forum_archiveAfter"),
            .isArchiveVisible = rows.number("forum_archiveVisible") == 1,
            .sendsMail = rows.number("forum_sendEmail") == 1,
            .mailFrom = trimmed(rows, "forum_emailFrom"),
            .mailTo = trimmed(rows, "forum_emailTo"),
            .mailSubject = trimmed(rows, "forum_emailSubject"),
            .pageSize = static_cast<int>(rows.number("forum_pageSize")),
            .visitorName = askedFrom(rows.number("forum_askName", 2)),
            .visitorEmail = askedFrom(rows.number("forum_askEmail")),
            .words = trimmed(rows, "forum_words")};
}

/// The numbers that parameters name; "forumId = 2" counts, "otherForumId=2" doesn't.
std::set<int> namedIn(std::string_view parameters) {
    std::set<int> numbers;
    while (!parameters.empty()) {
        const std::size_t end = std::min(parameters.find_first_of(",&"), parameters.size());
        const std::string_view one = parameters.substr(0, end);
        parameters.remove_prefix(std::min(end + 1, parameters.size()));
        const std::size_t equals = one.find('=');
        if (equals == std::string_view::npos) continue;
        if (!text::equals(text::trim(one.substr(0, equals)), parameterName)) continue;
        numbers.insert(static_cast<int>(std::clamp(text::toNumber(one.substr(equals + 1)), -1.0, 32767.0)));
    }
    return numbers;
}

std::set<int> namedByOthers(db::Connection& connection, const PageIdentity& page) {
    std::set<int> numbers;
    auto rows = connection.query(selectOtherPages, {siteOf(page.nodeId), langOf(page.nodeId), page.pageId});
    while (rows.next()) numbers.merge(namedIn(rows.text("app_param_public")));
    return numbers;
}

/// Of the page's site and language.
std::vector<ForumRecord> recordsOfPage(db::Connection& connection, const PageIdentity& page,
                                       std::string_view parameters) {
    const std::set<int> own = namedIn(parameters);
    const std::set<int> others = own.empty() ? namedByOthers(connection, page) : std::set<int>();
    std::vector<ForumRecord> records;
    auto rows = connection.query(selectForums, {siteOf(page.nodeId), langOf(page.nodeId)});
    while (rows.next()) {
        ForumRecord record = recordFrom(rows);
        const bool isShown = own.empty() ? !others.contains(record.id) : own.contains(record.id);
        if (isShown) records.push_back(std::move(record));
    }
    return records;
}

}  // namespace

std::vector<ForumSummary> forumsOfPage(db::Connection& connection, const PageIdentity& page,
                                       std::string_view parameters) {
    std::vector<ForumSummary> forums;
    for (ForumRecord& record : recordsOfPage(connection, page, parameters))
        forums.push_back({std::move(record), 0, {}});
    auto rows = connection.query(selectActivity, {siteOf(page.nodeId), langOf(page.nodeId)});
    while (rows.next()) {
        const int id = static_cast<int>(rows.number("topic_forumId"));
        const auto forum = std::find_if(forums.begin(), forums.end(),
                                        [id](const ForumSummary& one) { return one.record.id == id; });
        if (forum == forums.end()) continue;
        forum->topics = rows.number("topics");
        forum->lastDay = rows.text("lastDay");
    }
    return forums;
}

std::optional<ForumRecord> forumOfPage(db::Connection& connection, const PageIdentity& page,
                                       std::string_view parameters, int forumId) {
    for (ForumRecord& record : recordsOfPage(connection, page, parameters)) {
        if (record.id == forumId) return std::move(record);
    }
    return std::nullopt;
}

}  // namespace torvex
