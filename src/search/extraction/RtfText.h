#pragma once

#include <string_view>

#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// The text of a document in the Rich Text Format with what it says of itself. Throws `ExtractionError` for
/// what isn't one.
Reading readRtf(std::string_view bytes);

}  // namespace torvex::catalogue
