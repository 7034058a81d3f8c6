#pragma once

#include <string>

#include "operations/register/Register.h"

namespace torvex::operations {

/// The reference page of all public operations, in Markdown: what each class can do, with arguments,
/// defaults, results, codes, effects and rights. The same register always gives the same text.
std::string referenceMarkdown(const Register& classes);

/// The same for programs, as one JSON object: what a typed client is generated from. docs/call.md tells its
/// fields. An operation or a property is a line, so that changes can be read.
std::string referenceJson(const Register& classes);

}  // namespace torvex::operations
