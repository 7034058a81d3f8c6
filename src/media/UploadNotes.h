#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "media/UploadStore.h"

namespace torvex {

/// What a server writes down of an upload for the one that comes after it.
std::string noteOf(const Upload& upload);
/// Nothing for a text that is none. The number isn't in it.
std::optional<Upload> readNote(std::string_view note);

}  // namespace torvex
