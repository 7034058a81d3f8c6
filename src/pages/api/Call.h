#pragma once

#include <optional>
#include <string>
#include <variant>

#include "operations/calls/CallRun.h"
#include "operations/register/PublicObject.h"
#include "pages/api/Problem.h"
#include "pages/api/Words.h"
#include "platform/Errors.h"

namespace torvex {
class GuessThrottle;
class Session;
struct HostContext;
namespace operations {
class Register;
}
}  // namespace torvex

namespace torvex::api {

/// What the requests of all callers share.
struct Shared {
    const operations::Register& classes;
    GuessThrottle& throttle;
    Words& words;
};

/// What is wrong where a login is needed: there was none, or the session has lost it.
const ProblemKind& lackOfLogin(const Session& session);

/// What came of a call: its result as programs get it, or why there is none.
using Reply = std::variant<boost::json::value, Problem>;

/// An operation that raised an error, with what its problem says besides. `what()` is the error's own text, for
/// the log.
class CallFailure : public Error {
  public:
    CallFailure(const std::exception& cause, Problem told) : Error(cause.what()), problem(std::move(told)) {}

    Problem problem;
};

/// The calls of one request past the gate, with problems in the caller's language. Nothing that an operation
/// writes as an answer to browsers goes out. One thread uses it.
class Calls {
  public:
    /// All must outlive the object. Refusals are told in `language`.
    Calls(const Shared& shared, HostContext& host, std::string language);

    Reply call(const std::string& className, const std::string& operation,
               const operations::GivenValues& arguments);
    Reply read(const std::string& className, const std::string& property);
    /// All properties that can be read over the network, by their names.
    Reply readAll(const std::string& className);
    /// A value that can't be one is refused like one that doesn't fit.
    Reply write(const std::string& className, const std::string& property, const boost::json::value& value);

    /// Why a request of the operation is refused that isn't from our own pages: those who aren't logged in
    /// where that is needed learn this first.
    Problem foreign(const operations::Operation& operation);
    /// The same for a request of several.
    Problem foreign(bool needsLogin);
    /// The same for one whose arguments can't even be read.
    Problem notFitting(const operations::Operation& operation, const operations::ArgumentError& error);
    /// Told to everybody.
    Problem unfitting(const operations::ArgumentError& error) const;

    /// Null for what isn't there or is out of reach.
    const operations::Operation* find(const std::string& className, const std::string& operation) const;

    /// "cManager.checkOut", as the register spells it; the operation must be there.
    std::string nameOf(const std::string& className, const std::string& operation) const;

    Problem problem(const ProblemKind& kind, std::initializer_list<Place> places = {}) const;
    const std::string& language() const { return language_; }

  private:
    Problem refusedBy(const operations::Verdict& verdict) const;
    std::optional<Problem> refusedBecause(const operations::Operation& operation,
                                          const operations::GivenValues& arguments, const Value& result);
    std::optional<Problem> lacksLogin();
    std::optional<Problem> lacksLogin(const operations::Operation& operation);
    void noteLogin(const operations::Operation& operation, const Value& result);
    template <typename Work>
    Reply guarded(const std::string& name, Work&& work);

    const Shared& shared_;
    HostContext& host_;
    std::string language_;
    Response scratch_;
    HostContext inner_;
    operations::CallRun run_;
};

}  // namespace torvex::api
