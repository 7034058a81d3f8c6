#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/http/Answer.h"

/// What an answer is made of, as every protocol sends it.
namespace torvex::answerParts {

/// "Name: value\r\n" for each field: the answer's own, and of `common` those whose place it doesn't take.
void appendFields(std::string& out, const Answer& answer, std::string_view common);

/// Takes the first line off fields, with its end.
std::string_view takeLine(std::string_view& fields);

/// Of the body as a whole, also where none is sent.
std::uint64_t bodyLength(const Answer& answer);

/// The body; "" when it is a file.
std::string_view bodyText(const Answer& answer);

/// Bytes of the body, which must have so many. False, and nothing is appended, when the file has become shorter
/// than the answer says.
bool appendBody(std::string& out, const Answer& answer, std::uint64_t offset, std::size_t count);

}  // namespace torvex::answerParts
