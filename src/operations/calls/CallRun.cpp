#include "operations/calls/CallRun.h"

#include <algorithm>

#include "operations/calls/Gate.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

std::string_view className(std::string_view object) {
    return object.substr(0, object.find('#'));
}

/// Converted, with the right's entry in the arguments that the gate fills, whatever was sent for them.
std::vector<Value> valuesFor(const Operation& operation, GivenValues given) {
    const auto& arguments = operation.arguments;
    for (const auto& argument : arguments) {
        if (!operation.isFilledByGate(argument)) continue;
        std::erase_if(given, [&](const auto& one) { return text::equals(one.first, argument.name); });
        given.emplace_back(argument.name, 0);
    }
    auto values = arrange(operation, given);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (operation.isFilledByGate(arguments[i])) values[i] = entryFor(operation, values);
    }
    return values;
}

/// Whoever sends a withheld argument believes that it counts, whatever its value.
const std::string* withheldIn(const Operation& operation, const GivenValues& given) {
    for (const auto& argument : operation.arguments) {
        const auto isIt = [&](const auto& one) { return text::equals(one.first, argument.name); };
        if (argument.withheld && std::any_of(given.begin(), given.end(), isIt)) return &argument.name;
    }
    return nullptr;
}

}  // namespace

Outcome CallRun::run(const Call& call) {
    if (const auto* network = std::get_if<Network>(&origin_)) return runPastGate(call, *network);
    return {{}, objectNamed(call.object).call(call.operation, call.arguments)};
}

Outcome CallRun::runPastGate(const Call& call, const Network& network) {
    const ClassEntry* entry = classOf(call.object);
    const Operation* operation = entry ? entry->findOperation(call.operation) : nullptr;
    if (!operation) return {outOfReach(call.operation), {}};
    Gate gate(host_, connection(), network.throttle);
    if (const auto verdict = gate.mayAsk(operation->right, operation->name); !verdict.isAllowed())
        return {verdict, {}};
    const auto values = valuesFor(*operation, call.arguments);
    if (const auto* name = withheldIn(*operation, call.arguments)) return {withheld(*name), {}};
    const auto property = [&](std::string_view name) { return objectNamed(call.object).get(name); };
    if (const auto verdict = gate.mayCall(*operation, values, property); !verdict.isAllowed())
        return {verdict, {}};
    const Value result = objectNamed(call.object).invoke(*operation, values);
    gate.called(*operation, values, result);
    return {{}, result};
}

Outcome CallRun::run(const PropertyRead& read) {
    const Verdict verdict = verdictOn(read.object, read.property);
    if (!verdict.isAllowed()) return {verdict, {}};
    return {{}, objectNamed(read.object).get(read.property)};
}

Outcome CallRun::run(const PropertyWrite& write) {
    const Verdict verdict = verdictOn(write.object, write.property);
    if (!verdict.isAllowed()) return {verdict, {}};
    objectNamed(write.object).set(write.property, write.value);
    return {};
}

Verdict CallRun::verdictOn(const std::string& object, const std::string& name) {
    const auto* network = std::get_if<Network>(&origin_);
    if (!network) return {};
    const ClassEntry* entry = classOf(object);
    const Property* property = entry ? entry->findProperty(name) : nullptr;
    if (!property) return outOfReach(name);
    return Gate(host_, connection(), network->throttle).mayUse(*property);
}

const ClassEntry* CallRun::classOf(const std::string& object) const {
    return classes_.findClass(className(object));
}

PublicObject& CallRun::objectNamed(const std::string& name) {
    const std::string key = text::lower(name);
    if (const auto found = objects_.find(key); found != objects_.end()) return found->second;
    PublicObject made(classes_.find(className(name)), host_);
    if (made.takesConnection()) made.connect(connection());
    return objects_.emplace(key, std::move(made)).first->second;
}

db::Connection& CallRun::connection() {
    if (!connection_) connection_ = db::openOwn(host_, db::Purpose::Everything);
    return *connection_;
}

}  // namespace torvex::operations
