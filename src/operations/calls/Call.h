#pragma once

#include <string>

#include "operations/register/PublicObject.h"
#include "platform/Value.h"

/// What callers from outside ask for. `object` is a class's given name, with "#" and a tag for a further
/// object of it within the same request.
namespace torvex::operations {

struct Call {
    std::string object;
    std::string operation;
    GivenValues arguments;
};

struct PropertyRead {
    std::string object;
    std::string property;
};

struct PropertyWrite {
    std::string object;
    std::string property;
    Value value;
};

}  // namespace torvex::operations
