#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Response.h"
#include "platform/Value.h"

namespace torvex::operations {

struct BatchFailure {
    int number;
    std::string description;
    std::optional<std::size_t> step;  ///< none: it failed before the first step
};

/// What came of one request.
struct BatchAnswer {
    std::vector<Value> results;  ///< of the steps that were run to their end
    std::optional<BatchFailure> failure;
    Response response;
    bool ended = false;      ///< the response was ended; later steps didn't run
    bool abandoned = false;  ///< the session was abandoned
};

/// One line of JSON, always valid UTF-8, without a line break at its end.
std::string toJson(const BatchAnswer& answer);

}  // namespace torvex::operations
