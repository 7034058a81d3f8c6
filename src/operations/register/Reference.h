#pragma once

#include <string>

#include "operations/register/Register.h"

namespace torvex::operations {

/// The reference page of all public operations, in Markdown: what each class can do, with arguments,
/// defaults, results and rights. The same register always gives the same text.
std::string referenceMarkdown(const Register& classes);

}  // namespace torvex::operations
