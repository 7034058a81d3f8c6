#pragma once

#include <string_view>

#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// The text of a PDF with what it says of itself. Throws `ExtractionError` for one that is broken or opens
/// with a password alone.
Reading readPdf(std::string_view bytes);

}  // namespace torvex::catalogue
