#pragma once

#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {
struct HostContext;

/// Whether a login of this name is the administrator: it has every right without a row for it, and may be
/// held by any number of sessions.
bool isAdministrator(std::string_view username);

/// Who does something on the authoring side, in which session, and when: what the functions of the rooms are
/// told in place of an object or a host. Plain data of one operation; `loginId` 0 is nobody.
struct Actor {
    int loginId = 0;
    std::string username;
    std::string fullname;  ///< for the audit trail and the page record
    std::string sessionId;
    DateTime now;

    bool isLoggedIn() const { return loginId > 0; }
    bool isAdministrator() const { return torvex::isAdministrator(username); }
};

/// The one that the request's session says it is. Whether the session still owns that login is another
/// question.
Actor actorOf(const HostContext& host);

}  // namespace torvex
