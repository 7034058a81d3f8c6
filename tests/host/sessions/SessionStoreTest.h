#pragma once

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "host/sessions/SessionStore.h"

namespace torvex::test {

/// The base of tests of the sessions' store: requests on one thread, at a time that the test sets.
class SessionStoreTest : public testing::Test {
  protected:
    SessionStore& store() {
        if (!store_) store_ = std::make_unique<SessionStore>(limits, [this] { return now; });
        return *store_;
    }

    /// One request: runs `body` with the session and returns the token sent, "" when none is. A new session is made worth
    /// keeping.
    std::string request(std::string_view token, const std::function<void(SessionLease&)>& body = {}) {
        return passingRequest(token, [&](SessionLease& lease) {
            if (body) body(lease);
            if (lease.isNew()) lease.session().set("kept", true);
        });
    }
    /// One that leaves the session as `body` does.
    std::string passingRequest(std::string_view token, const std::function<void(SessionLease&)>& body = {}) {
        std::string sent;
        store().enter(token, origin, [&](SessionLease lease) {
            if (body) body(lease);
            const auto fresh = lease.finish();
            if (fresh) sent = fresh->text();
        });
        return sent;
    }

    /// Whether the token leads to a session that was there before.
    bool isKnown(std::string_view token) {
        bool isNew = true;
        store().enter(token, origin, [&](SessionLease lease) { isNew = lease.isNew(); });
        return !isNew;
    }

    static auto set(const char* value) {
        return [value](SessionLease& lease) { lease.session().set("key", Value(std::string(value))); };
    }

    static void logIn(SessionLease& lease) {
        lease.session().set("tvx_username", Value(std::string("flora")));
        lease.session().renewToken();
    }
    static void logInAsAuthor(SessionLease& lease) {
        lease.session().set("torvex_username", Value(std::string("iris")));
        lease.session().renewToken();
    }

    /// Requests come from this address.
    std::uint64_t origin = 1;
    SessionLimits limits;
    SessionStore::TimePoint now = SessionStore::TimePoint(std::chrono::hours(1000));

  private:
    std::unique_ptr<SessionStore> store_;
};

}  // namespace torvex::test
