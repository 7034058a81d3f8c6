#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "operations/register/Register.h"
#include "platform/Errors.h"

namespace torvex::operations {

/// What a caller gives for arguments, by their given names; names ignore case.
using GivenValues = std::vector<std::pair<std::string, Value>>;

/// Arguments that don't fit an operation, or a value that doesn't fit a property.
class ArgumentError : public Error {
  public:
    /// `argument` is the name as the caller gave it, or the given name of one that she left out; `need` is the label
    /// of what it needs, from NeedLabels.h.
    ArgumentError(const std::string& description, std::string argument, int need)
        : Error(description), argument_(std::move(argument)), need_(need) {}

    const std::string& argument() const { return argument_; }
    int need() const { return need_; }

  private:
    std::string argument_;
    int need_;
};

/// An object of a public class, reached by names. Lives for one request; one thread uses it. A name that
/// isn't there is `Error`, as is whatever the operation raises.
class PublicObject {
  public:
    PublicObject(const ClassEntry& entry, HostContext& host) : entry_(entry), object_(entry.create(host)) {}

    bool takesConnection() const { return static_cast<bool>(entry_.connect); }
    void connect(const db::ConnectionSource& link) { entry_.connect(object_.get(), link); }

    Value call(std::string_view operation, const GivenValues& arguments);
    /// Of an operation of the object's class, with one converted value for each argument.
    Value invoke(const Operation& operation, const std::vector<Value>& values) {
        return operation.invoke(object_.get(), values);
    }
    Value get(std::string_view property) const;
    void set(std::string_view property, const Value& value);

  private:
    const Property& propertyNamed(std::string_view name) const;

    const ClassEntry& entry_;
    std::shared_ptr<void> object_;
};

/// One converted value for each argument of the operation, with its defaults for those left out. Throws
/// `ArgumentError`.
std::vector<Value> arrange(const Operation& operation, const GivenValues& given);

}  // namespace torvex::operations
