#pragma once

#include <map>
#include <string>

#include "operations/calls/Call.h"
#include "operations/calls/Origin.h"
#include "operations/calls/Verdict.h"
#include "operations/register/PublicObject.h"
#include "platform/HostContext.h"
#include "platform/db/Database.h"

namespace torvex::operations {

/// What came of a call: its result, or why it wasn't run.
struct Outcome {
    Verdict verdict;
    Value result;  ///< empty unless the verdict allows
};

/// The calls of one request from outside, and the objects that they share: the one way by which callers from
/// outside reach the public classes. An object is made when a call first names it, and works on the request's
/// connection, which is opened then. Made for one request; one thread uses it.
///
/// From the network, a call is run only if the gate allows it, tested in this order: that there is such an
/// operation within reach, a login where one is needed, with a second factor where a role demands it, names and kinds of the arguments, the right and the
/// arguments that are withheld, and the wait after wrong passwords. An argument that the gate fills has the
/// entry of the row, whatever was sent. From the command line everything is allowed.
///
/// Throws `ArgumentError` for arguments that don't fit the operation, `Error` for a class, an operation or a
/// property that isn't there (the command line alone) or can't be set, and whatever the operation raises.
/// When the gate itself fails, the call isn't run.
class CallRun {
  public:
    /// All must outlive the object.
    CallRun(const Register& classes, HostContext& host, Origin origin)
        : classes_(classes), host_(host), origin_(origin) {}

    Outcome run(const Call& call);
    Outcome run(const PropertyRead& read);
    Outcome run(const PropertyWrite& write);

  private:
    Outcome runPastGate(const Call& call, const Network& network);
    Verdict verdictOn(const std::string& object, const std::string& property);
    const ClassEntry* classOf(const std::string& object) const;
    PublicObject& objectNamed(const std::string& name);
    db::Connection& connection();

    const Register& classes_;
    HostContext& host_;
    const Origin origin_;
    db::Lease connection_;  ///< outlives the objects that work on it
    std::map<std::string, PublicObject> objects_;
};

}  // namespace torvex::operations
