#include "installation/SettingsFile.h"

#include <fmt/format.h>

#include "installation/InstallFiles.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// As a basic string of the file's language.
std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            result += fmt::format("\\u{:04X}", static_cast<unsigned char>(c));
        } else {
            result += c;
        }
    }
    return result + '"';
}

}  // namespace

std::string settingsFileText(std::string_view databaseUrl) {
    return text::replaceAll(installFile("torvex.toml"), "{{databaseUrl}}", quoted(databaseUrl));
}

}  // namespace torvex
