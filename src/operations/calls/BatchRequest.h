#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "operations/calls/Call.h"
#include "operations/register/PublicObject.h"
#include "platform/DateTime.h"
#include "platform/Request.h"
#include "platform/Value.h"

namespace torvex::operations {

struct SessionRead {
    std::string key;
};
struct ApplicationRead {
    std::string key;
};
using Step = std::variant<Call, PropertyRead, PropertyWrite, SessionRead, ApplicationRead>;

/// One request that the owner of the installation runs without a browser: what the visitor sends, the state
/// it finds, and what is called.
struct BatchRequest {
    std::optional<DateTime> now;  ///< none: the real time
    std::string visitor = "1";    ///< the name of the session
    std::optional<std::string> login;
    GivenValues session;      ///< stored before the steps
    GivenValues application;  ///< stored before the steps
    std::string query;
    NamedValues form;
    NamedValues serverVariables;
    std::vector<Step> steps;
};

/// Reads one line of a batch. Throws `Error` that names the place when it isn't a JSON object of the known
/// fields with values of the right kind.
BatchRequest parseBatchRequest(std::string_view line);

}  // namespace torvex::operations
