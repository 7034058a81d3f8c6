#include "search/designs/PageIndex.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "delivery/PageBodies.h"
#include "platform/HostContext.h"
#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/TwinTables.h"
#include "search/designs/PageWords.h"

namespace torvex {

namespace {

constexpr std::string_view selectPages = "select pageId, nodeId, title from TORVEX_PAGES_DESIGN where pageId";
constexpr std::string_view selectBranch =
    "select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ? order by nodeId";
constexpr std::string_view selectMissing =
    "select d.pageId from TORVEX_PAGES_DESIGN d "
    "where not exists (select 1 from TORVEX_PAGE_WORDS w where w.pageId = d.pageId) limit 512";

// "_TWIN" stands for the tables of either twin. What is inherited has no value of its own.
constexpr std::string_view selectBodies =
    "select pageId, bodyId, bodyText from TORVEX_BODIES_TWIN where coalesce(bodyType, 1) = 1 and pageId";
constexpr std::string_view selectMetaData =
    "select metaData_pageId as pageId, 0 - metaData_id as bodyId, metaData_value as bodyText "
    "from TORVEX_PAGES_METADATA_TWIN where coalesce(metaData_inherited, 0) = 0 and metaData_pageId";

constexpr std::string_view insertWords = "insert into TORVEX_PAGE_WORDS (pageId, words) values ";
constexpr std::string_view replaceWords =
    " on conflict (pageId) do update set words = excluded.words "
    "where TORVEX_PAGE_WORDS.words <> excluded.words";

constexpr std::string_view deleteDesignLinks = "delete from TORVEX_LINKS where linkTwin = 'D' and pageId";
constexpr std::string_view deleteLiveLinks = "delete from TORVEX_LINKS where linkTwin = 'L' and pageId";
constexpr std::string_view insertLinks =
    "insert into TORVEX_LINKS (pageId, linkTwin, bodyId, linkKind, linkPage, linkSite, linkTarget) values ";
constexpr std::string_view selectLinks =
    "select bodyId, linkKind, linkPage, linkSite, linkTarget from TORVEX_LINKS "
    "where pageId = ? and linkTwin = 'D'";

constexpr std::string_view deleteLive = "delete from TORVEX_LINKS where pageId = ? and linkTwin = 'L'";
constexpr std::string_view copyToLive =
    "insert into TORVEX_LINKS (pageId, linkTwin, bodyId, linkKind, linkPage, linkSite, linkTarget) "
    "select pageId, 'L', bodyId, linkKind, linkPage, linkSite, linkTarget from TORVEX_LINKS "
    "where pageId = ? and linkTwin = 'D'";

struct PlacedLink {
    PageId pageId = 0;
    double bodyId = 0;
    FoundLink link;
};

struct PageTexts {
    std::string nodeId;
    std::string title;
    std::vector<std::string> bodies;  ///< without mark-up
};

using PageNumbers = std::vector<db::Parameter>;

/// So many rows go into one statement; what is left over goes by halves, so that there are few different ones.
constexpr std::size_t mostRows = 64;

/// Writes `count` rows; `addRow` appends the values of one.
template <typename AddRow>
void insertRows(db::Connection& connection, std::string_view insert, std::string_view places,
                std::string_view behind, std::size_t count, AddRow addRow) {
    std::size_t together = mostRows;
    for (std::size_t from = 0; from < count; from += together) {
        while (together > count - from) together /= 2;
        std::string statement(insert);
        std::vector<db::Parameter> values;
        for (std::size_t i = 0; i < together; ++i) {
            statement.append(i == 0 ? "" : ", ").append(places);
            addRow(values, from + i);
        }
        connection.execute(statement.append(behind), values);
    }
}

std::string listOnTwin(std::string_view statement, Twin twin) {
    return db::withList(onTwin(statement, twin));
}

/// What stands in one twin of up to 32 pages.
class Texts {
  public:
    Texts(db::Connection& connection, const FilePrefixes& prefixes, const PageNumbers& pages, Twin twin)
        : prefixes_(prefixes) {
        static const std::string selects[] = {
            listOnTwin(selectBodies, Twin::Design), listOnTwin(selectMetaData, Twin::Design),
            listOnTwin(selectBodies, Twin::Live), listOnTwin(selectMetaData, Twin::Live)};
        const std::size_t first = twin == Twin::Design ? 0 : 2;
        db::forEachRow(connection, selects[first], pages, [&](const db::Rows& row) {
            add(row);
            if (twin == Twin::Design)
                texts_[row.number("pageId")].push_back(pageWords::textOf(row.view("bodyText")));
        });
        db::forEachRow(connection, selects[first + 1], pages, [&](const db::Rows& row) { add(row); });
    }

    const std::vector<PlacedLink>& links() const { return links_; }
    std::vector<std::string> takeTexts(PageId pageId) { return std::move(texts_[pageId]); }

  private:
    void add(const db::Rows& row) {
        for (FoundLink& link : linksIn(row.view("bodyText"), prefixes_)) {
            links_.push_back({row.number("pageId"), row.number("bodyId"), std::move(link)});
        }
    }

    const FilePrefixes& prefixes_;
    std::vector<PlacedLink> links_;
    std::map<PageId, std::vector<std::string>> texts_;
};

void writeLinks(db::Connection& connection, std::string_view twin, const std::vector<PlacedLink>& links) {
    insertRows(connection, insertLinks, "(?, ?, ?, ?, ?, ?, ?)", "", links.size(),
               [&](std::vector<db::Parameter>& values, std::size_t i) {
                   const auto& [pageId, bodyId, link] = links[i];
                   values.insert(values.end(), {pageId, twin, bodyId, wordOf(link.kind), link.pageId,
                                                std::string_view(link.site), std::string_view(link.target)});
               });
}

void replaceLinks(db::Connection& connection, Twin twin, const PageNumbers& pages,
                  const std::vector<PlacedLink>& links) {
    static const std::string deletions[] = {db::withList(deleteDesignLinks), db::withList(deleteLiveLinks)};
    const bool isDesign = twin == Twin::Design;
    PageNumbers list = pages;
    list.resize(db::listLength, pages.back());
    connection.execute(deletions[isDesign ? 0 : 1], list);
    writeLinks(connection, isDesign ? "D" : "L", links);
}

/// Most changes of a text leave its links as they are.
bool hasLinks(db::Connection& connection, PageId pageId, const std::vector<PlacedLink>& links) {
    using Line = std::pair<std::string, double>;
    std::multiset<Line> there;
    auto rows = connection.query(selectLinks, {pageId});
    while (rows.next()) {
        there.emplace(rows.text("linkKind") + rows.text("linkPage") + "|" + rows.text("linkSite") + "|" +
                          rows.text("linkTarget"),
                      rows.number("bodyId"));
    }
    std::multiset<Line> wanted;
    for (const auto& [page, bodyId, link] : links) {
        wanted.emplace(std::string(wordOf(link.kind)) + text::fromNumber(link.pageId) + "|" + link.site +
                           "|" + link.target,
                       bodyId);
    }
    return there == wanted;
}

void writeWords(db::Connection& connection, const std::map<PageId, std::string>& columns) {
    std::vector<std::pair<PageId, std::string_view>> lines(columns.begin(), columns.end());
    insertRows(connection, insertWords, "(?, ?)", replaceWords, lines.size(),
               [&](std::vector<db::Parameter>& values, std::size_t i) {
                   values.insert(values.end(), {lines[i].first, lines[i].second});
               });
}

void renewWords(db::Connection& connection, const PageNumbers& pages, Texts& texts) {
    static const std::string statement = db::withList(selectPages);
    std::map<PageId, std::string> columns;
    db::forEachRow(connection, statement, pages, [&](const db::Rows& row) {
        const PageId pageId = row.number("pageId");
        if (columns.contains(pageId)) return;
        columns[pageId] = pageWords::columnOf(row.view("nodeId"), row.view("title"), texts.takeTexts(pageId));
    });
    writeWords(connection, columns);
}

/// Up to 32 pages.
void renewDesigns(db::Connection& connection, const FilePrefixes& prefixes, const PageNumbers& pages) {
    Texts texts(connection, prefixes, pages, Twin::Design);
    const bool isOne = pages.size() == 1;
    if (!isOne || !hasLinks(connection, std::get<double>(pages.front()), texts.links())) {
        replaceLinks(connection, Twin::Design, pages, texts.links());
    }
    renewWords(connection, pages, texts);
}

template <typename Work>
void byLists(std::span<const PageId> pages, Work work) {
    for (std::size_t from = 0; from < pages.size(); from += db::listLength) {
        const auto part = pages.subspan(from, std::min(db::listLength, pages.size() - from));
        work(PageNumbers(part.begin(), part.end()));
    }
}

std::vector<PageId> pagesOf(db::Rows rows) {
    std::vector<PageId> pages;
    while (rows.next()) pages.push_back(rows.number("pageId"));
    return pages;
}

}  // namespace

void renewDesignIndex(db::Connection& connection, const FilePrefixes& prefixes,
                      std::span<const PageId> pages) {
    byLists(pages, [&](const PageNumbers& list) { renewDesigns(connection, prefixes, list); });
}

void renewDesignIndex(HostContext& host, db::Connection& connection, PageId pageId) {
    renewDesignIndex(connection, filePrefixes(host.application), {&pageId, 1});
}

void renewDesignIndexOfBranch(HostContext& host, db::Connection& connection, std::string_view nodeId) {
    const auto pages = pagesOf(connection.query(selectBranch, {nodeId, endOfPrefix(nodeId)}));
    renewDesignIndex(connection, filePrefixes(host.application), pages);
}

void publishLinks(db::Connection& connection, PageId pageId) {
    connection.execute(deleteLive, {pageId});
    connection.execute(copyToLive, {pageId});
}

std::size_t indexMissingPages(HostContext& host, db::Connection& connection) {
    const FilePrefixes prefixes = filePrefixes(host.application);
    for (std::size_t done = 0;;) {
        const auto missing = pagesOf(connection.query(selectMissing));
        if (missing.empty()) return done;
        db::Transaction transaction(connection);
        renewDesignIndex(connection, prefixes, missing);
        byLists(missing, [&](const PageNumbers& list) {
            const Texts live(connection, prefixes, list, Twin::Live);
            replaceLinks(connection, Twin::Live, list, live.links());
        });
        transaction.commit();
        done += missing.size();
    }
}

}  // namespace torvex
