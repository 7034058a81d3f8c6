#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/LoginAttempt.h"
#include "operations/calls/Verdict.h"
#include "operations/register/Register.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex::operations {

/// The entry of the administration menu that the row's right asks for with these arguments; 0 for none.
int entryFor(const Operation& operation, const std::vector<Value>& values);

/// What a caller from the network has to pass before an operation runs or a property is read or set;
/// `CallRun` sees to it. It goes by the row's right and the login that the visitor's session owns at that
/// moment, and denies what it doesn't know.
///
/// Made for one request; one thread uses it. Throws what the database throws: the caller is then refused
/// too. A row that names an argument it hasn't got is a programming error and throws as well.
class Gate {
  public:
    /// Reads a property of the object that a call is made on.
    using PropertyOf = std::function<Value(std::string_view name)>;

    /// All must outlive the gate; the throttle is shared by all requests.
    Gate(HostContext& host, db::Connection& connection, GuessThrottle& throttle)
        : host_(host), connection_(connection), throttle_(throttle) {}

    /// Whether this is within the network's reach, and the caller is who may ask for the rest.
    Verdict mayAsk(const Right& right, const std::string& name);
    /// Whether somebody who may ask may do it with these arguments: converted, in order (see `arrange`). A
    /// password among them counts as a wrong one from then on, until `called` knows better.
    Verdict mayCall(const Operation& operation, const std::vector<Value>& values, const PropertyOf& property);
    Verdict mayUse(const Property& property);

    /// To be told of every call that was allowed, with what it gave.
    void called(const Operation& operation, const std::vector<Value>& values, const Value& result);

  private:
    HostContext& host_;
    db::Connection& connection_;
    GuessThrottle& throttle_;
    std::optional<LoginAttempt> attempt_;  ///< of the call that was allowed last
};

}  // namespace torvex::operations
