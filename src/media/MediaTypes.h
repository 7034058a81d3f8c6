#pragma once

#include <string_view>

#include "installation/StaticFileOptions.h"

namespace torvex {

/// The value of Content-Type for a file name, by its suffix, which `more` adds to; text types say that they
/// are UTF-8. "" for a suffix that isn't known and for none: such a file isn't public. The table holds what
/// sites show and offer; it has no sources, settings, keys, databases or logs.
std::string_view mediaType(std::string_view fileName, const MediaTypes& more = {});

}  // namespace torvex
