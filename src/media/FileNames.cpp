#include "media/FileNames.h"

#include <sodium.h>

#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex {

namespace {

constexpr std::uint32_t shortestRandomName = 10;
constexpr std::uint32_t lengthsOfRandomNames = 10;

struct Parts {
    std::string_view name;
    std::string_view extension;  ///< without its point

    explicit Parts(std::string_view whole) : name(whole) {
        const std::size_t dot = whole.rfind('.');
        if (dot == std::string_view::npos) return;
        name = whole.substr(0, dot);
        extension = whole.substr(dot + 1);
    }
    std::string with(std::string newName) const {
        if (!extension.empty()) newName.append(".").append(extension);
        return newName;
    }
};

/// First drawn whether it is a letter or a digit, so that digits are as frequent as letters.
char randomCharacter() {
    if (::randombytes_uniform(2) == 0) return static_cast<char>('a' + ::randombytes_uniform(26));
    return static_cast<char>('0' + ::randombytes_uniform(10));
}

constexpr std::size_t longestNameOfDisk = 240;  ///< bytes, with room for what is put around it

/// Those of ASCII and of Latin 1.
bool isControl(std::uint32_t character) {
    return character < 32 || (character >= 127 && character < 160);
}

bool hasControl(std::string_view name) {
    for (std::size_t at = 0; at < name.size();) {
        const utf8::Unit character = utf8::unitAt(name, at);
        if (isControl(character.value)) return true;
        at += character.length;
    }
    return false;
}

bool stays(std::uint32_t character) {
    return character >= 32 && character <= 255 && character != '#' && character != 127;
}

}  // namespace

std::string safeFileName(std::string_view name) {
    const std::string whole = text::replaceAll(name, " ", "_");
    const Parts parts(whole);
    std::string safe;
    for (std::size_t at = 0; at < parts.name.size();) {
        const utf8::Unit character = utf8::unitAt(parts.name, at);
        if (stays(character.value)) {
            safe.append(parts.name.substr(at, character.length));
        } else {
            safe += randomCharacter();
        }
        at += character.length;
    }
    return parts.with(std::move(safe));
}

std::string randomFileName(std::string_view name) {
    const std::string whole = text::replaceAll(name, " ", "_");
    std::string random;
    const std::uint32_t length = shortestRandomName + ::randombytes_uniform(lengthsOfRandomNames);
    for (std::uint32_t i = 0; i < length; ++i) random += randomCharacter();
    return Parts(whole).with(std::move(random));
}

std::optional<std::string> keptFileName(std::string_view given) {
    if (!text::isValidUtf8(given) || hasControl(given)) return std::nullopt;
    given = text::trim(given);
    const bool leadsElsewhere = given.find_first_of("/\\") != std::string_view::npos;
    if (given.empty() || given.front() == '.' || leadsElsewhere) return std::nullopt;
    std::string kept = text::lowerTrim(safeFileName(given));
    if (kept.empty() || kept.front() == '.' || kept.size() > longestNameOfDisk) return std::nullopt;
    return kept;
}

}  // namespace torvex
