#include "platform/files/WildCards.h"

#include "platform/files/FileSystem.h"
#include "platform/text/Utf8.h"

namespace torvex {

namespace {

constexpr std::string_view anyEnding = ".*";

/// Goes back to the last "*" only: what came before it has been matched as early as can be.
bool matchesWhole(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;
    std::size_t tried = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            tried = at;
        } else if (in < pattern.size() && pattern[in] == '?') {
            ++in;
            ++at;
            while (at < name.size() && utf8::isContinuation(name[at])) ++at;
        } else if (in < pattern.size() && pattern[in] == name[at]) {
            ++in;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star + 1;
            at = ++tried;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

}  // namespace

bool hasWildCard(std::string_view name) {
    return name.find_first_of("*?") != std::string_view::npos;
}

bool matchesWildCard(std::string_view name, std::string_view pattern) {
    if (matchesWhole(name, pattern)) return true;
    return pattern.ends_with(anyEnding) && name.find('.') == std::string_view::npos &&
           matchesWhole(name, pattern.substr(0, pattern.size() - anyEnding.size()));
}

void deleteMatchingFiles(FileSystem& files, const std::string& folder, std::string_view pattern) {
    const std::string path = folder.ends_with('/') ? folder : folder + "/";
    for (const std::string& name : files.files(folder)) {
        if (matchesWildCard(name, pattern)) files.deleteFile(path + name);
    }
}

}  // namespace torvex
