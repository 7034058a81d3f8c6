#include "operations/calls/BatchRun.h"

#include "platform/ApplicationValues.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::operations {

Value BatchRun::operator()(const OperationStep& step) {
    return objectNamed(step.object).call(step.operation, step.arguments);
}

Value BatchRun::operator()(const GetStep& step) {
    return objectNamed(step.object).get(step.property);
}

Value BatchRun::operator()(const SetStep& step) {
    objectNamed(step.object).set(step.property, step.value);
    return {};
}

Value BatchRun::operator()(const SessionStep& step) const {
    return host_.session.get(step.key);
}

Value BatchRun::operator()(const ApplicationStep& step) const {
    return host_.application.get(step.key);
}

operations::PublicObject& BatchRun::objectNamed(const std::string& name) {
    const std::string key = text::lower(name);
    if (const auto found = objects_.find(key); found != objects_.end()) return found->second;
    operations::PublicObject made(classes_.find(name.substr(0, name.find('#'))), host_);
    if (made.takesConnection()) made.connect(connection());
    return objects_.emplace(key, std::move(made)).first->second;
}

db::Connection& BatchRun::connection() {
    if (!connection_) connection_ = db::openOwn(host_, db::Purpose::Everything);
    return *connection_;
}

}  // namespace torvex::operations
