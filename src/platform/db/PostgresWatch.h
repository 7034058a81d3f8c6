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

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// What a listener knows.
std::unique_ptr<ContentWatch> watchBy(std::shared_ptr<const PostgresListener> listener);

}  // namespace torvex::db
