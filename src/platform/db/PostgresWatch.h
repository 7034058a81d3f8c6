#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/db/TableStates.h"

namespace torvex::db {

/// Listens, on a thread and a connection of its own, to what a PostgreSQL server tells of changes; they are known here
/// within the time that a message takes. While the connection is broken nothing is known. Safe to share between threads.
class PostgresListener {
  public:
    PostgresListener(std::string text, std::string user, std::string password);
    PostgresListener(const PostgresListener&) = delete;
    PostgresListener& operator=(const PostgresListener&) = delete;
    ~PostgresListener();

    /// Null while nothing is known.
    SharedStates now() const;
    /// Asks the server, once for all who wait for it: what was committed before is known then. Tells from the listener's
    /// thread, which must not ask again from there, or at once; null while nothing is known.
    void ask(const void* asker, ContentWatch::Told told);
    /// The asker is told nothing any more.
    void forget(const void* asker);

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// What a listener knows, or, when it is to ask, what it learns.
std::unique_ptr<ContentWatch> watchBy(std::shared_ptr<PostgresListener> listener, bool asks);

}  // namespace torvex::db
