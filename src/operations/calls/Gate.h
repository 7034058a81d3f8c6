#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "operations/register/Register.h"

namespace torvex {
class GuessThrottle;
struct HostContext;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex::operations {

/// What the gate says to a caller.
struct Verdict {
    enum class Kind {
        Allowed,
        OutOfReach,   ///< nobody may do this over the network
        NotLoggedIn,  ///< nobody is, or the session has lost its login
        NoRight,      ///< the login hasn't got the right for what the arguments name
        Wait          ///< too many wrong passwords from this address or for this name
    };

    Kind kind = Kind::Allowed;
    std::string message;           ///< says why not, for people; "" when it is allowed
    std::chrono::seconds wait{0};  ///< for `Wait`: when to come back

    bool isAllowed() const { return kind == Kind::Allowed; }
};

/// What a caller from outside has to pass before an operation runs or a property is read or set. It goes by
/// the row's right and the login that the visitor's session owns at that moment, and denies what it doesn't
/// know. Callers on this machine (the command line) don't pass it.
///
/// Made for one request; one thread uses it. Throws what the database throws: the caller is then refused
/// too. A row that names an argument it hasn't got is a programming error and throws as well.
class Gate {
  public:
    /// All must outlive the gate; the throttle is shared by all requests.
    Gate(HostContext& host, db::Connection& connection, GuessThrottle& throttle)
        : host_(host), connection_(connection), throttle_(throttle) {}

    /// `values` are the converted arguments, in order (see `arrange`).
    Verdict mayCall(const Operation& operation, const std::vector<Value>& values);
    Verdict mayUse(const Property& property);

    /// To be told of every call that was allowed, with what it gave: counts wrong passwords.
    void called(const Operation& operation, const std::vector<Value>& values, const Value& result);

  private:
    HostContext& host_;
    db::Connection& connection_;
    GuessThrottle& throttle_;
};

}  // namespace torvex::operations
