#include "search/catalogue/Catalogue.h"

#include <algorithm>
#include <mutex>

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "search/catalogue/Backend.h"
#include "search/catalogue/Reader.h"
#include "search/catalogue/RemoteBackend.h"

namespace torvex::catalogue {

namespace {

/// Enough for what most visitors look at. Who goes on beyond that gets so many times more.
constexpr std::size_t firstHits = 240;
/// A phrase reads the traces of all texts that have its words, and would once more for whoever goes on: as many as
/// there may be cost little more.
constexpr std::size_t firstHitsOfPhrase = 960;
constexpr std::size_t growth = 8;
/// Rows are read together, as those of a page are asked for one after the other.
constexpr std::size_t rowsTogether = 25;
/// Many rows are tested before one is shown.
constexpr std::size_t pathsTogether = 128;

/// Paths as callers have them: below a root, divided by backslashes.
class Root {
  public:
    explicit Root(std::string_view path) : path_(path) {
        while (path_.ends_with('\\')) path_.pop_back();
    }

    std::string outside(std::string path) const {
        std::replace(path.begin(), path.end(), '/', '\\');
        return path_ + '\\' + path;
    }
    /// None for what doesn't lie below the root.
    std::optional<std::string> inside(std::string_view path) const {
        if (!text::startsWith(path, path_)) return std::nullopt;
        std::string below(path.substr(text::matchLength(path, 0, path_)));
        if (!below.empty() && below.front() != '\\') return std::nullopt;
        std::replace(below.begin(), below.end(), '\\', '/');
        return below;
    }

  private:
    std::string path_;
};

Query withScopesInside(Query query, const Root& root) {
    std::vector<Scope> scopes;
    for (const Scope& scope : query.scopes) {
        if (const auto path = root.inside(scope.path)) scopes.push_back({*path, scope.depth});
    }
    query.scopes = std::move(scopes);
    return query;
}

std::size_t firstHitsOf(const Query& query) {
    return query.text.find('"') == std::string::npos ? firstHits : firstHitsOfPhrase;
}

class FoundResults final : public Results {
  public:
    FoundResults(std::shared_ptr<const Backend> backend, Root root, Query query)
        : backend_(std::move(backend)),
          root_(std::move(root)),
          query_(std::move(query)),
          asked_(firstHitsOf(query_)),
          found_(backend_->find(query_, asked_)) {}

    std::size_t size() const override {
        const std::scoped_lock lock(mutex_);
        if (!found_.isAll) readMore(0);
        return found_.hits.size();
    }

    bool has(std::size_t index) const override {
        const std::scoped_lock lock(mutex_);
        return reaches(index);
    }

    Row row(std::size_t index) const override {
        const std::scoped_lock lock(mutex_);
        reaches(index);
        if (index < firstRow_ || index >= firstRow_ + rows_.size()) readRows(index);
        Row row = rows_.at(index - firstRow_);
        if (!row.path.empty()) row.path = root_.outside(row.path);
        std::erase_if(row.columns, [this](const auto& value) { return !isAskedFor(value.first); });
        return row;
    }

    std::string path(std::size_t index) const override {
        const std::scoped_lock lock(mutex_);
        reaches(index);
        if (index < firstPath_ || index >= firstPath_ + paths_.size()) {
            paths_ = backend_->paths(query_, found_.database, hitsFrom(index, pathsTogether));
            firstPath_ = index;
        }
        const std::string& path = paths_.at(index - firstPath_);
        return path.empty() ? path : root_.outside(path);
    }

  private:
    bool isAskedFor(const std::string& column) const {
        return std::find(query_.columns.begin(), query_.columns.end(), column) != query_.columns.end();
    }

    bool reaches(std::size_t index) const {
        while (index >= found_.hits.size() && !found_.isAll) {
            asked_ = growth * std::max(asked_, index);
            readMore(asked_);
        }
        return index < found_.hits.size();
    }

    /// Those that were put in since aren't taken, and none is named twice.
    void readMore(std::size_t most) const {
        const Found more = backend_->find(query_, most);
        std::vector<std::uint32_t> known;
        for (const Hit& hit : found_.hits) known.push_back(hit.id);
        std::sort(known.begin(), known.end());
        for (const Hit& hit : more.hits) {
            const bool isNew = more.database != found_.database || hit.id > found_.last;
            if (isNew || std::binary_search(known.begin(), known.end(), hit.id)) continue;
            found_.hits.push_back(hit);
        }
        found_.isAll = more.isAll || more.database != found_.database;
    }

    void readRows(std::size_t index) const {
        rows_ = backend_->rows(query_, found_.database, hitsFrom(index, rowsTogether));
        firstRow_ = index;
    }

    std::vector<Hit> hitsFrom(std::size_t index, std::size_t most) const {
        const auto begin = found_.hits.begin() + static_cast<std::ptrdiff_t>(index);
        const auto count = std::min(most, found_.hits.size() - index);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }

    const std::shared_ptr<const Backend> backend_;
    const Root root_;
    const Query query_;
    mutable std::mutex mutex_;
    mutable std::size_t asked_;
    mutable Found found_;
    mutable std::vector<Row> rows_;
    mutable std::size_t firstRow_ = 0;
    mutable std::vector<std::string> paths_;
    mutable std::size_t firstPath_ = 0;
};

class OpenCatalogue final : public Catalogue {
  public:
    OpenCatalogue(std::shared_ptr<const Backend> backend, std::string_view rootPath)
        : backend_(std::move(backend)), root_(rootPath) {}

    std::shared_ptr<const Results> find(const Query& query) override {
        return std::make_shared<FoundResults>(backend_, root_, withScopesInside(query, root_));
    }
    std::string corrected(std::string_view words, std::string_view language) override {
        return backend_->corrected(words, language);
    }

  private:
    std::shared_ptr<const Backend> backend_;
    Root root_;
};

constexpr std::string_view remotePrefix = "query://";

}  // namespace

std::unique_ptr<Catalogue> open(HostContext& host, std::string_view name, std::string_view rootPath) {
    if (text::startsWith(name, remotePrefix)) {
        auto remote = std::make_shared<RemoteBackend>(name.substr(remotePrefix.size()));
        remote->check();
        return std::make_unique<OpenCatalogue>(std::move(remote), rootPath);
    }
    auto own = std::make_shared<Reader>(host.application.text(applicationKey::installPath));
    own->check();
    return std::make_unique<OpenCatalogue>(std::move(own), rootPath);
}

}  // namespace torvex::catalogue
