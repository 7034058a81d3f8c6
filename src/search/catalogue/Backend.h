#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "search/catalogue/Catalogue.h"

namespace torvex::catalogue {

/// One result, as it is kept while its list is.
struct Hit {
    std::uint32_t id = 0;  ///< of the entry
    int rank = 0;
};

/// What a query finds.
struct Found {
    std::string database;    ///< which one was asked: entries of others have other numbers
    std::uint32_t last = 0;  ///< the highest number of an entry then
    bool isAll = true;       ///< whether there are no further ones
    std::vector<Hit> hits;   ///< the first ones, in their order
};

/// Where queries are answered: here, or on another server. Paths in what is asked and answered lie below the
/// installation and are divided by "/". Throws `QueryError`, `TooManyError`, `UnavailableError`.
class Backend {
  public:
    virtual ~Backend() = default;

    /// Throws `UnavailableError` when there is no catalogue that can be read.
    virtual void check() const = 0;
    /// The first results, `most` or fewer, or all of them; 0: all. How many there are isn't counted, as that
    /// would mean to look at each. Those whose order would be known only from later ones are left out, so that
    /// more must be asked for where they are needed.
    virtual Found find(const Query& query, std::size_t most) const = 0;
    /// A row for each hit, in their order. Those of another database, and those that are gone, have an empty
    /// path.
    virtual std::vector<Row> rows(const Query& query, const std::string& database,
                                  const std::vector<Hit>& hits) const = 0;
    /// The paths of those rows, which cost less than the rows.
    virtual std::vector<std::string> paths(const Query& query, const std::string& database,
                                           const std::vector<Hit>& hits) const {
        std::vector<std::string> paths;
        for (Row& row : rows(query, database, hits)) paths.push_back(std::move(row.path));
        return paths;
    }
    virtual std::string corrected(std::string_view words, std::string_view language) const = 0;
};

}  // namespace torvex::catalogue
