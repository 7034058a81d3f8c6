#pragma once

#include <string>

#include "operations/register/Register.h"

namespace torvex::api {

/// The description of the whole interface for programs by OpenAPI 3.1, made from the register: what isn't in reach of
/// the network isn't in it. Always the same for the same register.
std::string openApi(const operations::Register& classes);

}  // namespace torvex::api
