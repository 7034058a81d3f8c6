#include "desk/FoundPages.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <set>

#include "accounts/Actor.h"
#include "desk/PageState.h"
#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageKind.h"
#include "search/catalogue/Abstract.h"
#include "search/catalogue/Words.h"
#include "search/designs/PageWords.h"

namespace torvex {

namespace {

constexpr std::size_t mostWords = 10;
/// Of one body: an excerpt from further down isn't worth the wait.
constexpr std::size_t mostOfABody = 64 * 1024;

// The pages found stand between these parts.
constexpr std::string_view selectPages =
    "select d.pageId, d.site, d.lang, d.nodeId, d.title, d.type, d.editStatus, d.deleteStatus, "
    "d.approveStatus, l.online, l.onlineFrom, l.onlineTo, "
    "case when l.pageId is null then 0 else 1 end as isPublished from ";
constexpr std::string_view bySqliteIndex =
    "(select rowid as pageId from TORVEX_PAGE_WORDS_INDEX where TORVEX_PAGE_WORDS_INDEX match ?) w "
    "cross join TORVEX_PAGES_DESIGN d on d.pageId = w.pageId ";
constexpr std::string_view byPostgresIndex =
    "(select pageId from TORVEX_PAGE_WORDS "
    "where array_to_tsvector(string_to_array(cast(words as text), ' ')) @@ cast(? as tsquery)) w "
    "inner join TORVEX_PAGES_DESIGN d on d.pageId = w.pageId ";
constexpr std::string_view withLive = "left outer join TORVEX_PAGES_LIVE l on l.pageId = d.pageId where ";
constexpr std::string_view inPlace = "(? = '' or d.site = ?) and (? = '' or d.lang = ?)";
// By the index's own number, it gives no more pages than are read.
constexpr std::string_view latestOfIndex = " order by w.pageId desc limit 1000";
constexpr std::string_view latestFirst = " order by d.pageId desc limit 1000";

constexpr std::string_view selectTitles = "select nodeId, title from TORVEX_PAGES_DESIGN where nodeId";
constexpr std::string_view selectBodies =
    "select pageId, bodyId, bodyText from TORVEX_BODIES_DESIGN where coalesce(bodyType, 1) = 1 and pageId";

/// A condition on the design's row, and the values of its places.
struct Filter {
    std::string condition;
    std::vector<std::string> values;
};

std::optional<Filter> stateFilter(std::string_view state) {
    constexpr std::string_view unmarked = "coalesce(d.deleteStatus, 0) <> 1";
    constexpr std::string_view open =
        "coalesce(d.deleteStatus, 0) <> 1 and coalesce(d.approveStatus, 0) <> 1 and ";
    if (state == "marked") return Filter{"d.deleteStatus = 1", {}};
    if (state == "held") return Filter{"d.lockStatus = 1", {}};
    if (state == "approved") return Filter{std::string(unmarked) + " and d.approveStatus = 1", {}};
    if (state == "new") return Filter{std::string(open) + "d.editStatus = 'N'", {}};
    if (state == "changed") return Filter{std::string(open) + "d.editStatus = 'M'", {}};
    if (state == "live") return Filter{std::string(open) + "d.editStatus = 'P'", {}};
    return std::nullopt;
}

/// Nothing for one that isn't known.
std::optional<Filter> filterOf(const std::string& filter) {
    const std::size_t colon = filter.find(':');
    if (colon == std::string::npos) return std::nullopt;
    const std::string name = text::lowerTrim(filter.substr(0, colon));
    const std::string value = text::lowerTrim(filter.substr(colon + 1));
    if (value.empty()) return std::nullopt;
    if (name == "state") return stateFilter(value);
    if (name == "type") return Filter{"d.type = ?", {value}};
    if (name == "below") return Filter{"d.nodeId >= ? and d.nodeId < ?", {value, endOfPrefix(value)}};
    return std::nullopt;
}

std::vector<std::string> beginningsOf(const std::string& words) {
    std::vector<std::string> beginnings;
    for (const catalogue::Word& word : catalogue::wordsOf(words)) {
        if (beginnings.size() == mostWords) break;
        beginnings.push_back(word.folded);
    }
    return beginnings;
}

/// The roots of the reach, or of the tree that is asked for; none: all trees.
std::vector<std::string> treesOf(const EditReach& reach, const PageSearch& search) {
    std::set<std::string> trees;
    if (reach.isEverywhere && !search.site.empty() && !search.lang.empty()) {
        trees.insert(search.site + "." + search.lang);
    }
    for (const std::string& node : reach.nodes) trees.emplace(text::first(node, PageIdentity::rootLength));
    return {trees.begin(), trees.end()};
}

bool isIn(const std::vector<std::string>& trees, std::string_view nodeId) {
    return trees.empty() ||
           std::find(trees.begin(), trees.end(),
                     text::lower(text::first(nodeId, PageIdentity::rootLength))) != trees.end();
}

/// One search on its way.
class PageFinder {
  public:
    PageFinder(db::Connection& connection, const PageSearch& search, std::vector<Filter> filters,
               std::vector<std::string> trees, std::string today)
        : connection_(connection),
          search_(search),
          filters_(std::move(filters)),
          wanted_{beginningsOf(search.words), std::move(trees)},
          today_(std::move(today)) {}

    std::vector<FoundPage> run() {
        const auto enough = static_cast<std::size_t>(search_.from) + static_cast<std::size_t>(search_.most);
        addNamed();
        if (!wanted_.beginnings.empty() || !filters_.empty()) {
            addFound(pageWords::Place::Title);
            if (found_.size() < enough && !wanted_.beginnings.empty()) addFound(pageWords::Place::Anywhere);
        }
        const auto first = std::min(found_.size(), static_cast<std::size_t>(search_.from));
        const auto last = std::min(found_.size(), enough);
        std::vector<FoundPage> part(
            std::make_move_iterator(found_.begin() + static_cast<std::ptrdiff_t>(first)),
            std::make_move_iterator(found_.begin() + static_cast<std::ptrdiff_t>(last)));
        addPaths(part);
        addExcerpts(part);
        return part;
    }

  private:
    /// By number or node.
    void addNamed() {
        const PageIdentity page = identify(connection_, search_.words);
        if (!page.isValid()) return;
        read("TORVEX_PAGES_DESIGN d ", "d.pageId = ? and ", page.pageId, latestFirst);
    }
    void addFound(pageWords::Place place) {
        const std::size_t before = found_.size();
        if (wanted_.beginnings.empty() && wanted_.trees.empty()) {
            read("TORVEX_PAGES_DESIGN d ", "? = 0 and ", 0, latestFirst);
        } else if (connection_.engine() == db::Engine::Sqlite) {
            const std::string query = pageWords::sqliteQuery(wanted_, place);
            read(bySqliteIndex, "", std::string_view(query), latestOfIndex);
        } else {
            const std::string query = pageWords::postgresQuery(wanted_, place);
            read(byPostgresIndex, "", std::string_view(query), latestOfIndex);
        }
        std::sort(found_.begin() + static_cast<std::ptrdiff_t>(before), found_.end(),
                  [](const FoundPage& one, const FoundPage& other) {
                      const int order = text::compare(one.title, other.title);
                      return order != 0 ? order < 0 : text::compare(one.nodeId, other.nodeId) < 0;
                  });
    }

    /// `condition` or `source` has the place of `value`, ahead of all others.
    void read(std::string_view source, std::string_view condition, const db::Parameter& value,
              std::string_view order) {
        std::string statement(selectPages);
        statement.append(source).append(withLive).append(condition).append(inPlace);
        const std::string_view site = search_.site;
        const std::string_view lang = search_.lang;
        std::vector<db::Parameter> values{value, site, site, lang, lang};
        for (const Filter& filter : filters_) {
            statement.append(" and ").append(filter.condition);
            for (const std::string& bound : filter.values) values.emplace_back(std::string_view(bound));
        }
        statement.append(order);
        auto rows = connection_.query(statement, values);
        while (rows.next()) add(rows);
    }

    void add(const db::Rows& row) {
        const PageId pageId = row.number("pageId");
        if (!isIn(wanted_.trees, row.view("nodeId")) || !known_.insert(pageId).second) return;
        const bool isPublished = row.number("isPublished") == 1;
        const bool isOnline =
            isFolder(row.view("type")) ||
            isOnlineOn(today_, row.number("online"), row.view("onlineFrom"), row.view("onlineTo"));
        found_.push_back({pageId, row.text("site"), row.text("lang"), row.text("nodeId"), row.text("title"),
                          "", std::string(stateOf(row)), isPublished && isOnline, ""});
    }

    void addPaths(std::vector<FoundPage>& pages) {
        std::map<std::string, std::string> titles;
        for (const FoundPage& page : pages) {
            for (std::string_view node = page.nodeId; node.size() > PageIdentity::rootLength;) {
                node = parentOf(node);
                titles.emplace(text::lower(node), std::string());
            }
        }
        std::vector<db::Parameter> nodes;
        for (const auto& [node, title] : titles) nodes.emplace_back(std::string_view(node));
        db::forEachRow(connection_, db::withList(selectTitles), nodes, [&](const db::Rows& row) {
            titles[text::lower(row.view("nodeId"))] = row.text("title");
        });
        for (FoundPage& page : pages) page.path = pathOf(page.nodeId, titles);
    }
    static std::string pathOf(std::string_view node, const std::map<std::string, std::string>& titles) {
        std::string path;
        while (node.size() > PageIdentity::rootLength) {
            node = parentOf(node);
            const auto title = titles.find(text::lower(node));
            if (title == titles.end()) continue;
            path = path.empty() ? title->second : title->second + " / " + path;
        }
        return path;
    }

    void addExcerpts(std::vector<FoundPage>& pages) {
        std::vector<db::Parameter> numbers;
        for (const FoundPage& page : pages) numbers.emplace_back(page.pageId);
        std::map<PageId, std::map<double, std::string>> texts;
        db::forEachRow(connection_, db::withList(selectBodies), numbers, [&](const db::Rows& row) {
            const std::string_view html = catalogue::cut(row.view("bodyText"), mostOfABody);
            texts[row.number("pageId")][row.number("bodyId")] = pageWords::textOf(html);
        });
        catalogue::FoundWords words;
        words.beginnings.insert(wanted_.beginnings.begin(), wanted_.beginnings.end());
        for (FoundPage& page : pages) {
            std::string text;
            for (const auto& [bodyId, body] : texts[page.pageId])
                text.append(text.empty() ? "" : " ").append(body);
            page.excerpt = catalogue::abstractOf(text, words);
        }
    }

    db::Connection& connection_;
    const PageSearch& search_;
    const std::vector<Filter> filters_;
    const pageWords::Wanted wanted_;
    const std::string today_;
    std::vector<FoundPage> found_;
    std::set<PageId> known_;
};

}  // namespace

std::vector<FoundPage> foundPages(db::Connection& connection, const Actor& actor, const EditReach& reach,
                                  const PageSearch& search) {
    if (reach.isNowhere()) return {};
    std::vector<Filter> filters;
    for (const std::string& named : search.filters) {
        auto filter = filterOf(named);
        if (!filter) return {};
        filters.push_back(std::move(*filter));
    }
    return PageFinder(connection, search, std::move(filters), treesOf(reach, search), date8(actor.now)).run();
}

}  // namespace torvex
