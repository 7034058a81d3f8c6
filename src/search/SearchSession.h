#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Session.h"
#include "search/SearchParameters.h"
#include "search/catalogue/Catalogue.h"

namespace torvex {

struct HostContext;

/// What was asked, kept for the further pages of its results.
struct KeptQuery final : SessionObject {
    SearchParameters search;
    std::string soughtWords;
    std::vector<std::string> extraColumns;
    catalogue::Query query;
};

/// What was found, as it was then.
struct KeptResults final : SessionObject {
    std::shared_ptr<const catalogue::Results> results;
};

/// A search that goes on from page to page.
struct RunningSearch {
    std::shared_ptr<const KeptQuery> query;
    std::shared_ptr<const KeptResults> results;
};

/// What a visitor's session holds of the search that is running. Nothing of it outlives the session: after a
/// restart there is no further page.
class SearchSession {
  public:
    explicit SearchSession(Session& session) : session_(session) {}

    /// The effective values of a new search, in place of those of an earlier one.
    void begin(const SearchParameters& search);
    /// The values and the query with which the search goes on at the page `pageTo`; nothing when something of
    /// it is missing.
    std::optional<RunningSearch> resume(const std::string& pageTo) const;
    void keep(const RunningSearch& running);
    std::string words() const;
    /// The effective values as the session has them, in those of the kept query.
    SearchParameters values(const SearchParameters& kept) const;
    void clear();

    /// The row with which a page of results begins; nothing for a page that hasn't been come to.
    std::optional<std::size_t> bookmark(const std::string& page) const;
    void setBookmark(int page, std::size_t row);

    /// The rank that counts as the best one.
    int rankBase() const;
    void setRankBase(int rank);

  private:
    Session& session_;
};

}  // namespace torvex
