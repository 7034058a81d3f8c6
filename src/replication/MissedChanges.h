#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/db/Database.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// What a server has missed, kept for whoever brings it up to date. Never fails: the log has it too.
class MissedChanges {
  public:
    MissedChanges(HostContext& host, const std::string& server) : host_(host), server_(server) {}

    /// `task` is "write" or "remove"; a `reason` "" says that the server has the change, and with it what it had
    /// missed of that path.
    void note(const std::string& path, std::string_view task, const std::string& reason);

  private:
    db::Connection& connection();
    bool hasMissedAny();

    HostContext& host_;
    const std::string& server_;
    std::optional<db::Lease> connection_;
    std::optional<bool> hasMissed_;
};

/// The server is up to date.
void forgetMissedChanges(db::Connection& connection, std::string_view server);

}  // namespace torvex
