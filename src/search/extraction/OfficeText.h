#pragma once

#include <string_view>

#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// The text of documents, tables and slides as office programs write them: Office Open XML (docx, xlsx, pptx
/// and their like), and OpenDocument (odt, ods, odp and their like). With what they say of themselves. Throws
/// `ExtractionError`.
Reading readOpenXml(std::string_view bytes);
Reading readOpenDocument(std::string_view bytes);

}  // namespace torvex::catalogue
