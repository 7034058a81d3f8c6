#pragma once

#include <string>
#include <string_view>

#include "host/http/Answer.h"

/// The server's own pages for what went wrong: they say what happened and what to do next, stand by
/// themselves and are never stored. Pure; safe from any thread.
namespace torvex::errorPages {

/// The value of the field `Retry-After` where the server is too busy.
inline constexpr std::string_view retryAfter = "5";

/// The page of a status; one without a text of its own gets a general one.
Answer page(int status);

/// For 405: `allowed` lists what is, "GET, HEAD".
Answer methodNotAllowed(std::string_view allowed);

/// For 500: shows the number under which the log tells what happened.
Answer failure(std::string_view reference);

}  // namespace torvex::errorPages
