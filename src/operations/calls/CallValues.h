#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "operations/register/Register.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex::operations {

/// The values of a call by the names of their arguments. Both must outlive the object. A name that no argument
/// has is an error of the row.
class CallValues {
  public:
    CallValues(const std::vector<Argument>& arguments, const std::vector<Value>& values)
        : arguments_(arguments), values_(values) {}

    /// "" for the name "": the right covers nothing of the kind.
    std::string text(const std::string& name) const {
        return name.empty() ? "" : values_.at(placeOf(name)).toText();
    }
    double number(const std::string& name) const { return values_.at(placeOf(name)).toNumber(); }
    /// Whether it is what the argument is when it is left out.
    bool isDefault(const std::string& name) const {
        const std::size_t at = placeOf(name);
        return arguments_[at].defaultValue == values_.at(at);
    }

  private:
    std::size_t placeOf(const std::string& name) const {
        const auto found =
            std::find_if(arguments_.begin(), arguments_.end(),
                         [&name](const Argument& argument) { return text::equals(argument.name, name); });
        if (found == arguments_.end()) throw Error("the right names the argument \"" + name + "\"");
        return static_cast<std::size_t>(found - arguments_.begin());
    }

    const std::vector<Argument>& arguments_;
    const std::vector<Value>& values_;
};

}  // namespace torvex::operations
