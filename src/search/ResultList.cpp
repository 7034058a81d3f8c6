#include "search/ResultList.h"

#include <algorithm>
#include <limits>
#include <set>

#include "delivery/AccessOfMany.h"
#include "delivery/LinkTargets.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "search/SearchScopes.h"

namespace torvex {

namespace {

constexpr std::string_view selectLive = "select pageId from TORVEX_PAGES_LIVE where pageId";

/// The folders of language and site in front of a snapshot's name: "en\aa\".
constexpr std::size_t snapshotFolders = 6;
constexpr std::size_t smallestBatch = 32;
constexpr std::size_t largestBatch = 256;
constexpr std::size_t anyRow = std::numeric_limits<std::size_t>::max();

std::string folderOf(const HostContext& host, const FoundFile& file) {
    const std::size_t end = file.document.rfind('/') + 1;
    return host.application.text(applicationKey::documentsPath) + file.document.substr(0, end);
}

/// The rows of a result set with what is known about the visitor's right to see them.
class TestedRows {
  public:
    TestedRows(HostContext& host, db::Connection& connection, const SearchParameters& search,
               const catalogue::Results& results)
        : host_(host),
          connection_(connection),
          search_(search),
          results_(results),
          targets_(connection, host.clock.today()),
          access_(host, connection) {}

    /// The next row from `row` on, before `end`, that may be seen.
    std::optional<ShownResult> nextVisible(std::size_t row, std::size_t end, std::size_t batch);

  private:
    void learn(std::size_t from, std::size_t count);
    void learnPages();
    void learnLivePages(const std::vector<PageIdentity>& pages);
    bool isVisible(const FoundFile& file);
    bool isShownPage(const PageIdentity& page);

    HostContext& host_;
    db::Connection& connection_;
    const SearchParameters& search_;
    const catalogue::Results& results_;
    LinkTargets targets_;
    AccessOfMany access_;
    std::size_t begin_ = 0;
    std::vector<FoundFile> files_;  ///< of the rows from `begin_` on
    std::set<PageId> live_;         ///< for a preview
};

std::optional<ShownResult> TestedRows::nextVisible(std::size_t row, std::size_t end, std::size_t batch) {
    for (; row < end && results_.has(row); ++row) {
        if (row < begin_ || row >= begin_ + files_.size()) learn(row, std::min(batch, end - row));
        const FoundFile& file = files_[row - begin_];
        if (isVisible(file)) return ShownResult{row, file};
    }
    return std::nullopt;
}

void TestedRows::learn(std::size_t from, std::size_t count) {
    host_.deadline().check();
    begin_ = from;
    files_.clear();
    for (std::size_t row = from; row < from + count && results_.has(row); ++row)
        files_.push_back(foundFile(host_, search_.rootPath, text::trim(results_.path(row))));
    learnPages();
    if (!search_.security.forDocuments) return;
    std::vector<std::string> folders;
    for (const FoundFile& file : files_) {
        if (file.kind == FoundFile::Kind::Document) folders.push_back(folderOf(host_, file));
    }
    access_.learnFolders(folders);
}

void TestedRows::learnPages() {
    std::vector<std::string> nodes;
    for (const FoundFile& file : files_) {
        if (file.isPage()) nodes.push_back(file.page.nodeId);
    }
    targets_.learn(nodes);
    std::vector<PageIdentity> pages;
    for (FoundFile& file : files_) {
        if (!file.isPage()) continue;
        file.page.pageId = targets_.identityOf(file.page.nodeId).pageId;
        pages.push_back(file.page);
    }
    if (search_.isPreview) learnLivePages(pages);
    if (search_.security.forPages) access_.learnPages(pages);
}

void TestedRows::learnLivePages(const std::vector<PageIdentity>& pages) {
    static const std::string statement = db::withList(selectLive);
    std::vector<db::Parameter> values;
    for (const PageIdentity& page : pages) values.emplace_back(page.pageId);
    db::forEachRow(connection_, statement, values,
                   [this](const db::Rows& rows) { live_.insert(rows.number("pageId")); });
}

bool TestedRows::isVisible(const FoundFile& file) {
    switch (file.kind) {
        case FoundFile::Kind::Page:
            return isShownPage(file.page) && (!search_.security.forPages || access_.mayEnter(file.page));
        case FoundFile::Kind::Document:
            return !search_.security.forDocuments || access_.folderAccess(folderOf(host_, file)) >= 0;
        default:
            return false;
    }
}

/// Authors see every page that was published, visitors those that show today.
bool TestedRows::isShownPage(const PageIdentity& page) {
    return search_.isPreview ? live_.contains(page.pageId) : targets_.isOnline(page.nodeId);
}

}  // namespace

FoundFile foundFile(const HostContext& host, std::string_view rootPath, std::string_view path) {
    FoundFile file;
    const auto behind = [path](const std::string& folder) { return path.substr(folder.size()); };
    if (const std::string pages = snapshotsPath(rootPath); text::startsWith(path, pages)) {
        const std::string_view name = behind(pages);
        if (name.size() <= snapshotFolders) return file;
        file.kind = FoundFile::Kind::Page;
        file.page.nodeId = text::lower(name.substr(snapshotFolders, name.rfind('.') - snapshotFolders));
        return file;
    }
    if (const std::string documents = documentsPath(host, rootPath); text::startsWith(path, documents)) {
        file.kind = FoundFile::Kind::Document;
        file.document = behind(documents);
        std::replace(file.document.begin(), file.document.end(), '\\', '/');
        const std::size_t point = file.document.rfind('.');
        const std::size_t name = file.document.rfind('/') + 1;
        if (point != std::string::npos && point >= name)
            file.type = text::lower(file.document.substr(point + 1));
    }
    return file;
}

ResultList listedResults(HostContext& host, db::Connection& connection, const SearchRun& run) {
    const SearchParameters& search = run.search;
    const auto perPage = static_cast<std::size_t>(search.resultsPerPage);
    const std::size_t earlier = perPage * static_cast<std::size_t>(run.page - 1);
    const auto most = static_cast<std::size_t>(search.maxResults);
    const std::size_t batch = std::clamp(perPage + 1, smallestBatch, largestBatch);
    TestedRows rows(host, connection, search, run.results());
    ResultList list;
    std::size_t row = run.firstRow;
    while (earlier + list.shown.size() < most) {
        const auto visible = rows.nextVisible(row, anyRow, batch);
        if (!visible) break;
        if (list.shown.size() == perPage) {
            list.next = visible->row;
            break;
        }
        list.shown.push_back(*visible);
        row = visible->row + 1;
    }
    return list;
}

bool hasVisibleResult(HostContext& host, db::Connection& connection, const SearchParameters& search,
                      const catalogue::Results& results, std::size_t most) {
    TestedRows rows(host, connection, search, results);
    return rows.nextVisible(0, most, smallestBatch).has_value();
}

}  // namespace torvex
