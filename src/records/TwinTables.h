#pragma once

#include <string>
#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {

/// The statement for one of the twins: in `statement`, "_TWIN" stands for the end of each of their tables' names.
std::string onTwin(std::string_view statement, Twin twin);

}  // namespace torvex
