#pragma once

#include <string_view>

#include "operations/register/Register.h"
#include "platform/Errors.h"

namespace torvex::operations {

/// What is needed in place of a value, as text and by its label in NeedLabels.h.
class ConversionError : public Error {
  public:
    ConversionError(const std::string& description, int label) : Error(description), need(label) {}

    int need;
};

/// The value as the one alternative that stands for `type`: a text, a number, a boolean, or a moment. Empty
/// is "", 0 and false.
///
/// - Text: everything but a grid.
/// - Number: a number, a boolean, or a text that is a plain decimal number.
/// - Integer: such a number rounded to a whole one (a half to the even side), of 16 bits.
/// - Boolean: a boolean, a number, "true", "false", or a text that is a number.
/// - Date: a moment, or a text as `parseIso` reads it.
/// - TextFormat: one of the numbers of `torvex::TextFormat`.
///
/// Throws `ConversionError` that says what is needed ("must be a number, not \"x\"") for anything else.
Value convert(const Value& given, ArgumentType type);

/// The name of a type in messages and in the reference.
std::string_view typeName(ArgumentType type);

}  // namespace torvex::operations
