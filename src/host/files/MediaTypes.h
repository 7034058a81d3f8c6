#pragma once

#include <string_view>

namespace torvex {

/// The value of Content-Type for a file name, by its suffix; text types say that they are UTF-8. Unknown ones
/// are "application/octet-stream", which a browser saves and doesn't show.
std::string_view mediaType(std::string_view fileName);

}  // namespace torvex
