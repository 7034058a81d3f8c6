#pragma once

#include <libpq-fe.h>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/db/RowSource.h"

namespace torvex::db {

struct FreeResult {
    void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, FreeResult>;

/// Whether the server has done what it was asked.
bool isFine(const PGresult* result);

/// A statement with each "?" outside quotes and comments as "$1", "$2" and so on.
struct NumberedStatement {
    std::string text;
    int parameters = 0;
};
NumberedStatement numberParameters(std::string_view statement);

/// The values of one call in libpq's form.
class PostgresParameters {
  public:
    explicit PostgresParameters(Parameters parameters);
    PostgresParameters(const PostgresParameters&) = delete;
    PostgresParameters& operator=(const PostgresParameters&) = delete;
    ~PostgresParameters() = default;

    int count() const { return static_cast<int>(types_.size()); }
    const Oid* types() const { return types_.data(); }
    const char* const* values() const { return values_.data(); }
    /// One letter for each parameter's type: a statement is prepared once for each of these.
    const std::string& signature() const { return signature_; }
    /// The same for the same values of the same types, and for no others.
    std::string key() const;
    bool operator==(const PostgresParameters& other) const {
        return texts_ == other.texts_ && positions_ == other.positions_;
    }

  private:
    void add(const Parameter& parameter);
    void endValue(Oid type, char letter);

    std::vector<Oid> types_;
    std::vector<const char*> values_;
    std::string signature_;
    std::string texts_;                   ///< the values, each ended by a NUL
    std::vector<std::size_t> positions_;  ///< where each begins in `texts_`; `noText` for null
};

/// The names of the statements that one connection has prepared on its server.
class PostgresNames {
  public:
    struct Name {
        std::string text;
        bool prepared;  ///< false when the caller has to prepare it now
    };

    Name find(std::string_view statement, const std::string& signature);
    /// The caller has prepared it.
    void keep(std::string_view statement, const std::string& signature, const std::string& name);
    std::size_t size() const { return count_; }
    void clear();

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    struct Variant {
        std::string signature;
        std::string name;
    };

    std::unordered_map<std::string, std::vector<Variant>, Hash, std::equal_to<>> names_;
    std::size_t count_ = 0;
    std::size_t lastNumber_ = 0;
};

/// The rows of a result, which is wholly in memory.
std::unique_ptr<Rows::Source> openPostgresRows(PostgresResult result);

}  // namespace torvex::db
