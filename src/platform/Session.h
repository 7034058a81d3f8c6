#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Value.h"

namespace torvex {

/// What a visitor keeps from request to request that is no value, such as the results of a search. Shared between
/// requests that may run on different threads, one after the other; never changes once it is kept.
struct SessionObject {
    virtual ~SessionObject() = default;
};

/// One visitor's values from request to request. Keys ignore case; a key never written is empty. The requests
/// of one visitor run one at a time, so nothing here locks.
///
/// The values that every new session starts with are shared between sessions; a session owns just the keys
/// that were written to it, so one that only has defaults is a few words of memory.
class Session {
  public:
    using Values = std::vector<std::pair<std::string, Value>>;

    explicit Session(std::string id, std::shared_ptr<const Values> defaults = nullptr)
        : id_(std::move(id)), defaults_(std::move(defaults)) {}

    const std::string& id() const {
        isIdKnown_ = true;
        return id_;
    }
    /// Whether anybody has asked for the id.
    bool isIdKnown() const { return isIdKnown_; }
    /// Asks for a new token in the visitor's cookie when the request is done: after a login, so that a token
    /// known before is worth nothing.
    void renewToken() { wantsNewToken_ = true; }
    bool wantsNewToken() const { return wantsNewToken_; }
    /// Whether one was asked for; asks once.
    bool takeTokenRequest() { return std::exchange(wantsNewToken_, false); }

    Value get(std::string_view key) const;
    std::string text(std::string_view key) const { return get(key).toText(); }
    double number(std::string_view key) const { return get(key).toNumber(); }
    bool isTrue(std::string_view key) const { return get(key).isTrue(); }
    void set(std::string_view key, Value value);
    /// The same for what only matters as long as there is a session: a visitor without one needs none for it. `key` is a
    /// constant.
    void setPassing(std::string_view key, Value value);

    /// Whether something was stored that a later request must find: more than the defaults, and what is passing.
    bool holdsSomething() const;

    /// Objects have keys of their own, apart from those of values; null when there is none.
    std::shared_ptr<const SessionObject> object(std::string_view key) const;
    /// Null lets it go.
    void setObject(std::string_view key, std::shared_ptr<const SessionObject> object);

    /// Ends the session when the request is done.
    void abandon() { abandoned_ = true; }
    bool isAbandoned() const { return abandoned_; }

    int codePage() const { return codePage_; }
    void setCodePage(int codePage) { codePage_ = codePage; }

    /// The keys written to this session itself.
    const Values& ownValues() const { return own_; }

  private:
    Value defaultOf(std::string_view key) const;

    std::string id_;
    std::shared_ptr<const Values> defaults_;
    Values own_;
    std::vector<std::string_view> passing_;  ///< keys
    std::vector<std::pair<std::string, std::shared_ptr<const SessionObject>>> objects_;
    int codePage_ = 65001;
    bool abandoned_ = false;
    bool wantsNewToken_ = false;
    mutable bool isIdKnown_ = false;
};

}  // namespace torvex
