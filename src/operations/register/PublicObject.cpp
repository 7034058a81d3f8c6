#include "operations/register/PublicObject.h"

#include <algorithm>

#include "operations/register/Conversion.h"
#include "operations/register/NeedLabels.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

std::string namesOf(const std::vector<Argument>& arguments) {
    std::string names;
    for (const auto& argument : arguments) names += (names.empty() ? "" : ", ") + argument.name;
    return names.empty() ? "none" : names;
}

std::size_t positionOf(const Operation& operation, const std::string& name) {
    const auto& arguments = operation.arguments;
    const auto found = std::find_if(arguments.begin(), arguments.end(), [&name](const Argument& argument) {
        return text::equals(argument.name, name);
    });
    if (found != arguments.end()) return static_cast<std::size_t>(found - arguments.begin());
    throw ArgumentError(
        operation.name + ": there is no argument \"" + name + "\"; the arguments are " + namesOf(arguments),
        name, need::knownName);
}

Value converted(const Operation& operation, const Argument& argument, const Value& given) try {
    return convert(given, argument.type);
} catch (const ConversionError& error) {
    throw ArgumentError(operation.name + ": argument \"" + argument.name + "\" " + error.what(),
                        argument.name, error.need);
}

}  // namespace

std::vector<Value> arrange(const Operation& operation, const GivenValues& given) {
    std::vector<const Value*> sources(operation.arguments.size());
    for (const auto& [name, value] : given) {
        auto& source = sources[positionOf(operation, name)];
        if (source)
            throw ArgumentError(operation.name + ": argument \"" + name + "\" is given twice", name,
                                need::once);
        source = &value;
    }
    std::vector<Value> values;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const auto& argument = operation.arguments[i];
        if (!sources[i] && argument.defaultValue) sources[i] = &*argument.defaultValue;
        if (!sources[i])
            throw ArgumentError(operation.name + ": argument \"" + argument.name + "\" is missing",
                                argument.name, need::given);
        values.push_back(converted(operation, argument, *sources[i]));
    }
    return values;
}

Value PublicObject::call(std::string_view name, const GivenValues& arguments) {
    const auto* operation = entry_.findOperation(name);
    if (!operation) throw Error(entry_.name + " has no operation \"" + std::string(name) + "\"");
    return invoke(*operation, arrange(*operation, arguments));
}

Value PublicObject::get(std::string_view name) const {
    return propertyNamed(name).get(object_.get());
}

void PublicObject::set(std::string_view name, const Value& value) {
    const auto& property = propertyNamed(name);
    if (!property.set)
        throw ArgumentError("the property \"" + property.name + "\" of " + entry_.name + " is read-only",
                            property.name, need::writable);
    Value wanted;
    try {
        wanted = convert(value, property.type);
    } catch (const ConversionError& error) {
        throw ArgumentError("the property \"" + property.name + "\" " + error.what(), property.name,
                            error.need);
    }
    property.set(object_.get(), wanted);
}

const Property& PublicObject::propertyNamed(std::string_view name) const {
    if (const auto* property = entry_.findProperty(name)) return *property;
    throw Error(entry_.name + " has no property \"" + std::string(name) + "\"");
}

}  // namespace torvex::operations
