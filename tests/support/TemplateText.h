#pragma once

#include <string>

namespace torvex::test {

/// A tag of a template.
inline std::string tag(const std::string& name) {
    return "<!--!" + name + "!-->";
}

/// A block of a template with what is in it.
inline std::string block(const std::string& name, const std::string& inner) {
    return "<!--!" + name + "_start!-->" + inner + "<!--!" + name + "_end!-->";
}

}  // namespace torvex::test
