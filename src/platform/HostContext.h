#pragma once

#include <optional>

#include "platform/Deadline.h"
#include "platform/Services.h"

namespace torvex {

class Request;
class Response;
class Session;

/// One request's view of the server: what all requests share, and what is this one's own. It is handed to a
/// class at creation and is the only way in: nothing is reached through globals. It refers to what it names
/// and must not outlive it; one thread uses it.
struct HostContext : Services {
    Request& request;
    Response& response;
    Session& session;
    int scriptTimeout = 90;  ///< seconds that this request may take
    /// When it began; nothing for work that nobody waits for at the other end of a line, which may take its
    /// time.
    std::optional<Deadline::Clock::time_point> begin{};

    /// What waits or loops observes it.
    Deadline deadline() const {
        return begin ? Deadline(*begin + std::chrono::seconds(scriptTimeout)) : Deadline();
    }
};

}  // namespace torvex
