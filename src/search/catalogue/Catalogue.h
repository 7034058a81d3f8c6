#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Errors.h"

namespace torvex {

struct HostContext;

namespace catalogue {

/// A text that is no query. Its message says what is wrong with it and where.
class QueryError : public Error {
  public:
    using Error::Error;
};

/// A query that would take more than it may: a prefix that thousands of words begin with, thousands of wild
/// cards.
class TooManyError : public QueryError {
  public:
    using QueryError::QueryError;
};

/// No catalogue there: a folder that is missing or of a newer version, a server that doesn't answer in 3
/// seconds.
class UnavailableError : public Error {
  public:
    using Error::Error;
};

enum class Depth { Shallow, Deep };

/// A folder that results must lie in (with backslashes, as `path` has them; letters ignore case).
struct Scope {
    std::string path;
    Depth depth = Depth::Deep;
};

/// What is asked of a catalogue.
struct Query {
    std::string text;      ///< in the language of queries, see `QueryText.h`
    std::string language;  ///< a language code: by its rules "$" stems
    /// Those to be read, in small letters, besides path, rank and file columns.
    std::vector<std::string> columns;
    std::string sortBy;         ///< "rank[d],doctitle": equal ones by title, then path
    std::vector<Scope> scopes;  ///< in any of these; none: nowhere
};

/// One result.
struct Row {
    std::string path;  ///< with backslashes, beginning with the root that the catalogue was opened with
    std::string filename;
    std::uint64_t size = 0;        ///< bytes
    std::string write;             ///< when the file was changed, yyyy-mm-dd hh:mm:ss
    int rank = 0;                  ///< 1 to 1000: thousandths of the best possible weight of the query
    std::string characterization;  ///< some 300 characters around the words found, else the beginning
    std::map<std::string, std::string> columns;  ///< by column; one without a value isn't in it
};

/// What a query found, as it was then: later changes of the catalogue neither add rows nor change their order.
/// Rows of files that have left the catalogue since have their rank alone, and no path. Safe to share between
/// threads.
class Results {
  public:
    virtual ~Results() = default;
    /// How many there are, which takes looking at each: who wants some of them asks for those.
    virtual std::size_t size() const = 0;
    /// Whether there is a row at `index`. May read the catalogue again; throws UnavailableError.
    virtual bool has(std::size_t index) const { return index < size(); }
    /// The row at `index` < size(). Reads the catalogue again; throws UnavailableError.
    virtual Row row(std::size_t index) const = 0;
    /// Its path alone, which is all that is needed of a row that isn't shown.
    virtual std::string path(std::size_t index) const { return row(index).path; }
};

/// One catalogue, opened for one request and used by one thread. Opening costs some 0.1 ms.
class Catalogue {
  public:
    virtual ~Catalogue() = default;

    /// Throws QueryError, TooManyError, UnavailableError.
    virtual std::shared_ptr<const Results> find(const Query& query) = 0;

    /// The words as they were probably meant ("Did you mean"), or "" when nothing is better than they are.
    virtual std::string corrected(std::string_view words, std::string_view language) = 0;
};

/// Opens the catalogue of this name: "query://server/name" one of another server, any other its own (below
/// data/search of the installation). `rootPath` is what its paths begin with, with backslashes. Throws
/// UnavailableError.
std::unique_ptr<Catalogue> open(HostContext& host, std::string_view name, std::string_view rootPath);

}  // namespace catalogue
}  // namespace torvex
