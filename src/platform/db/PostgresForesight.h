#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/db/PostgresStatement.h"
#include "platform/db/ScopeMemory.h"

namespace torvex::db {

/// One query as a connection sends it.
struct PostgresQuestion {
    std::string name;  ///< of the prepared statement
    std::shared_ptr<const PostgresParameters> values;

    bool operator==(const PostgresQuestion& other) const;
};
using PostgresQuestions = std::vector<PostgresQuestion>;

/// What read scopes have asked of one connection, by the question that they began with: a page asks nearly the same each
/// time, and what is known beforehand takes one round trip together.
class PostgresForesight {
  public:
    /// What followed the question the last time; null when it is new. Valid until the next `learn`.
    const PostgresQuestions* after(const PostgresQuestion& first) const;
    /// All that a scope has asked, in its order.
    void learn(PostgresQuestions asked);
    void clear() { known_.clear(); }

  private:
    std::unordered_map<std::string, PostgresQuestions> known_;
};

/// A read scope: it begins with its first question, and with it goes what is expected to be asked behind it. All of that
/// is of one state of the database, whether it is asked for afterwards or not.
class PostgresReading {
  public:
    static constexpr const char* beginning = "begin transaction isolation level repeatable read read only";

    bool isBegun() const { return isBegun_; }
    void noteBegun() { isBegun_ = true; }

    /// Begins it with a question and with what has followed that one, in one round trip. False when any of it has failed:
    /// nothing is begun then.
    bool begin(PGconn* connection, const PostgresQuestion& first, const PostgresForesight& foresight);
    /// The answer that is there already; null for a question that wasn't foreseen.
    PostgresResult take(const PostgresQuestion& question);
    void note(PostgresQuestion question) { asked_.push_back(std::move(question)); }

    /// For the next scope like this one.
    void teach(PostgresForesight& foresight);

    ScopeMemory& memory() { return memory_; }

  private:
    struct Foreseen {
        PostgresQuestion question;
        PostgresResult result;
    };

    ScopeMemory memory_;
    bool isBegun_ = false;
    PostgresQuestions asked_;
    std::vector<Foreseen> foreseen_;
    std::size_t taken_ = 0;  ///< the one behind that which was taken last
};

}  // namespace torvex::db
