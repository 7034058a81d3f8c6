#pragma once

#include <string>
#include <string_view>

#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"

namespace torvex {

/// Why a search has no results: its text is what `search_error` says.
class SearchError : public Error {
  public:
    explicit SearchError(std::string_view text) : Error(std::string(text)) {}
};

/// Runs a step of a search. What breaks in it ends the search with the step's own line, or that of the step
/// within it that broke; operators are told the cause.
template <typename Work>
auto asSearchStep(HostContext& host, std::string_view line, Work&& work) -> decltype(work()) try {
    return work();
} catch (const SearchError&) {
    throw;
} catch (const std::exception& error) {
    warnOf(host.log, line, error);
    throw SearchError(line);
}

}  // namespace torvex
