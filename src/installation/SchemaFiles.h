#pragma once

#include "installation/Schema.h"

namespace torvex {

/// The schema that this program carries.
Schema installedSchema();

}  // namespace torvex
