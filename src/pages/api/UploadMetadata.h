#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace torvex::api {

/// What is told of an upload, by its names.
using UploadMetadata = std::map<std::string, std::string, std::less<>>;

/// Reads the field `Upload-Metadata`: names, each with a value in Base64 or without one, divided by commas.
/// Nothing when it is no such field, or a name stands in it twice. Values may be any bytes. Pure.
std::optional<UploadMetadata> readUploadMetadata(std::string_view field);

}  // namespace torvex::api
