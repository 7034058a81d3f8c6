#pragma once

#include "platform/Schema.h"

namespace torvex::cli {

/// The schema that this program carries.
Schema installedSchema();

}  // namespace torvex::cli
