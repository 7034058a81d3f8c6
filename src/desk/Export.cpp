#include "desk/Export.h"

#include "accounts/AdminEntries.h"
#include "accounts/AdvancedRights.h"
#include "accounts/DesignRights.h"
#include "desk/TrailSearch.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

using Columns = std::vector<std::string_view>;
using Take = std::function<void(std::vector<Value>)>;

constexpr std::string_view selectAudit =
    "select Date, time, loginName, pageId, pageTitle, nodeId, advId, action, description from "
    "TORVEX_AUDIT_TRAIL where ";
constexpr std::string_view inOrder = " order by Date, time, auditId";
constexpr std::string_view selectHits =
    "select yyyymmdd, nodeId, hits, uniquehits from TORVEX_LOGGING where nodeId >= ? and nodeId < ? and "
    "yyyymmdd >= ? and yyyymmdd <= ? order by yyyymmdd, nodeId";
constexpr std::string_view selectWords =
    "select search_word, sum(searches), sum(withoutResult) from TORVEX_SEARCH_DAYS "
    "where site = ? and lang = ? and yyyymmdd >= ? and yyyymmdd <= ? group by search_word "
    "order by sum(searches) desc, search_word";
constexpr std::string_view selectPages =
    "select nodeId, pageId, title, type, editStatus, lockStatus, deleteStatus, approveStatus, onlineFrom, "
    "onlineTo, editingDate from TORVEX_PAGES_DESIGN where site = ? and lang = ? order by nodeId";
constexpr std::string_view selectUsers =
    "select userId, username, firstname, lastname, validFrom, validTo from TORVEX_USERS order by username, "
    "userId";

std::string_view until(const ExportChoice& choice) {
    return choice.to.empty() ? lastOfDays : std::string_view(choice.to);
}

void takeRows(db::Rows rows, std::size_t columns, const Take& take) {
    while (rows.next()) {
        std::vector<Value> cells;
        for (std::size_t i = 0; i < columns; ++i) cells.push_back(rows.value(i));
        take(std::move(cells));
    }
}

auto withEntry(int advId) {
    return [advId](db::Connection& connection, const Actor& actor, const ExportChoice& choice) {
        return mayUseEntry(connection, actor, "view", advId, choice.site, choice.lang);
    };
}

void auditRows(db::Connection& connection, const ExportChoice& choice, const Take& take) {
    std::string filters = choice.filters;
    if (!choice.from.empty()) filters += ",from:" + choice.from;
    if (!choice.to.empty()) filters += ",to:" + choice.to;
    const auto search = TrailSearch::of(connection, filters);
    if (!search) return;
    std::string statement(selectAudit);
    statement.append(search->condition()).append(inOrder);
    takeRows(connection.query(statement, search->values()), 9, take);
}

/// A site and language are the nodes from their root to what would follow all below it.
void statisticsRows(db::Connection& connection, const ExportChoice& choice, const Take& take) {
    const std::string root = text::lowerTrim(choice.site) + '.' + text::lowerTrim(choice.lang);
    takeRows(connection.query(selectHits, {root, root + '/', choice.from, until(choice)}), 4, take);
}

void searchRows(db::Connection& connection, const ExportChoice& choice, const Take& take) {
    const std::string site = text::lowerTrim(choice.site);
    const std::string lang = text::lowerTrim(choice.lang);
    takeRows(connection.query(selectWords, {site, lang, choice.from, until(choice)}), 3, take);
}

void sitemapRows(db::Connection& connection, const ExportChoice& choice, const Take& take) {
    takeRows(connection.query(selectPages, {text::trim(choice.site), text::trim(choice.lang)}), 11, take);
}

bool mayReadSitemap(db::Connection& connection, const Actor& actor, const ExportChoice& choice) {
    return mayReadDesign(connection, actor, text::lowerTrim(choice.site), text::lowerTrim(choice.lang));
}

void userRows(db::Connection& connection, const ExportChoice&, const Take& take) {
    takeRows(connection.query(selectUsers), 6, take);
}

void wordRows(db::Connection& connection, const ExportChoice& choice, const Take& take) {
    for (const VocabularyWord& word : wordsBesideEnglish(connection, text::trim(choice.lang)))
        take({word.label, word.english, word.text});
}

/// A spreadsheet would work out what begins so, and what it works out may call out.
bool looksLikeFormula(std::string_view content) {
    return !content.empty() && std::string_view("=+-@\t\r").find(content.front()) != std::string_view::npos;
}

std::string cellText(const Value& cell) {
    std::string content = cell.toText();
    if (cell.isText() && looksLikeFormula(content)) content.insert(0, 1, '\'');
    if (content.find_first_of(",\"\r\n") == std::string::npos) return content;
    return '"' + text::replaceAll(content, "\"", "\"\"") + '"';
}

}  // namespace

std::span<const Export> exports() {
    static const std::vector<Export> all{
        {"audit",
         {"date", "time", "login", "pageId", "page", "nodeId", "entry", "action", "description"},
         withEntry(adminEntry::auditTrail),
         auditRows},
        {"statistics",
         {"day", "nodeId", "views", "visitors"},
         withEntry(adminEntry::statistics),
         statisticsRows},
        {"searches", {"word", "searches", "withoutResult"}, withEntry(adminEntry::statistics), searchRows},
        {"sitemap",
         {"nodeId", "pageId", "title", "type", "editStatus", "lockStatus", "deleteStatus", "approveStatus",
          "onlineFrom", "onlineTo", "changed"},
         mayReadSitemap,
         sitemapRows},
        {"users",
         {"userId", "username", "firstname", "lastname", "validFrom", "validTo"},
         withEntry(adminEntry::users),
         userRows},
        {"words", {"label", "english", "text"}, withEntry(adminEntry::vocabulary), wordRows},
    };
    return all;
}

std::string csvLine(const std::vector<Value>& cells) {
    std::string line;
    for (const Value& cell : cells)
        line += (line.empty() && &cell == &cells.front() ? "" : ",") + cellText(cell);
    return line + "\r\n";
}

}  // namespace torvex
