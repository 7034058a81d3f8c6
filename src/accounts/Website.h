#pragma once

#include <span>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

// Which site and language a login works in, and how one of them keeps the others out while it rewrites the
// nodes there. A website is written "site.lang". Both sides write first and then look whether the other has:
// of two at the same moment, on different connections, at least one sees the other. None of these may be
// called within a transaction, which would hide what it writes.

/// Notes that the login is in the website. False, with nothing changed, while a login that is online has
/// locked it.
bool enterWebsite(db::Connection& connection, int loginId, std::string_view website);

/// The login is in no website any more; what it had locked is free.
void leaveWebsite(db::Connection& connection, int loginId);
/// The same for sessions that have ended. Their logins stay held, so that nobody else gets in by waiting.
void leaveWebsites(db::Connection& connection, std::span<const std::string> sessionIds);

/// A website that is kept for one login, for as long as the object lives.
class WebsiteLock {
  public:
    WebsiteLock(db::Connection& connection, int loginId, std::string_view website);
    WebsiteLock(const WebsiteLock&) = delete;
    WebsiteLock& operator=(const WebsiteLock&) = delete;
    /// A lock that can't be let go dies with the login's session.
    ~WebsiteLock();

    /// False, with nothing locked, when another login that is online works there.
    bool isHeld() const { return held_; }

  private:
    WebsiteLock(db::Connection& connection, int loginId) : connection_(connection), loginId_(loginId) {}
    void take(std::string_view website);
    void release();

    db::Connection& connection_;
    int loginId_;
    bool held_ = false;
};

}  // namespace torvex
