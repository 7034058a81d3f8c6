#pragma once

#include <map>
#include <string>

#include "operations/calls/BatchRequest.h"
#include "operations/register/PublicObject.h"
#include "platform/HostContext.h"
#include "platform/db/Database.h"

namespace torvex::operations {

/// The steps of one request and the objects they share. An object is made when a step first names it, and
/// works on the request's connection, which is opened then. Calling with a step runs it; whatever it raises
/// passes through.
class BatchRun {
  public:
    BatchRun(const operations::Register& classes, HostContext& host) : classes_(classes), host_(host) {}

    Value operator()(const OperationStep& step);
    Value operator()(const GetStep& step);
    Value operator()(const SetStep& step);
    Value operator()(const SessionStep& step) const;
    Value operator()(const ApplicationStep& step) const;

  private:
    operations::PublicObject& objectNamed(const std::string& name);
    db::Connection& connection();

    const operations::Register& classes_;
    HostContext& host_;
    db::Lease connection_;  ///< outlives the objects that work on it
    std::map<std::string, operations::PublicObject> objects_;
};

}  // namespace torvex::operations
