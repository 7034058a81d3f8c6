#pragma once

#include <exception>
#include <string_view>

#include "host/http/Answer.h"

namespace torvex {

class Exchange;

/// What is said when a request isn't let through or fails: in the form of the address that answers it, or by
/// the server's own pages. Safe from any thread.
namespace refusals {

/// The status is all there is to say.
Answer of(const Exchange& exchange, int status);

/// For 405: with what the address takes.
Answer methodNotAllowed(const Exchange& exchange);

/// For 500: with the number under which the log tells what happened; `error` is null for what is no exception
/// of the standard's.
Answer failure(const Exchange& exchange, std::string_view reference, const std::exception* error);

}  // namespace refusals

}  // namespace torvex
