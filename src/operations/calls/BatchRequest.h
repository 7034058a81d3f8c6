#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "operations/register/PublicObject.h"
#include "platform/DateTime.h"
#include "platform/Request.h"
#include "platform/Value.h"

namespace torvex::operations {

/// The steps of one request. `object` is a class's given name, with "#" and a tag for a further object of it.
struct OperationStep {
    std::string object;
    std::string operation;
    operations::GivenValues arguments;
};
struct GetStep {
    std::string object;
    std::string property;
};
struct SetStep {
    std::string object;
    std::string property;
    Value value;
};
struct SessionStep {
    std::string key;
};
struct ApplicationStep {
    std::string key;
};
using Step = std::variant<OperationStep, GetStep, SetStep, SessionStep, ApplicationStep>;

/// One request that is run without a browser: what the visitor sends, the state it finds, and what is called.
struct BatchRequest {
    std::optional<DateTime> now;  ///< none: the real time
    std::string visitor = "1";    ///< the name of the session
    std::optional<std::string> login;
    operations::GivenValues session;      ///< stored before the steps
    operations::GivenValues application;  ///< stored before the steps
    std::string query;
    NamedValues form;
    NamedValues serverVariables;
    std::vector<Step> steps;
};

/// Reads one line of a batch. Throws `Error` that names the place when it isn't a JSON object of the known
/// fields with values of the right kind.
BatchRequest parseBatchRequest(std::string_view line);

}  // namespace torvex::operations
