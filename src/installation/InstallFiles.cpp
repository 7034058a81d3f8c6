#include "installation/InstallFiles.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>

#include "platform/Errors.h"

extern "C" {
extern const torvex::InstallFile torvex_install_files[];
extern const std::uint64_t torvex_install_file_count;
}

namespace torvex {

std::span<const InstallFile> installFiles() {
    return {torvex_install_files, static_cast<std::size_t>(torvex_install_file_count)};
}

std::span<const InstallFile> installFiles(std::string_view prefix) {
    const auto files = installFiles();
    const auto first = std::partition_point(files.begin(), files.end(),
                                            [&](const InstallFile& file) { return file.name() < prefix; });
    const auto end = std::partition_point(
        first, files.end(), [&](const InstallFile& file) { return file.name().starts_with(prefix); });
    return {first, end};
}

std::string_view installFile(std::string_view name) {
    const auto found = installFiles(name);
    if (!found.empty() && found.front().name() == name) return found.front().bytes();
    throw Error(fmt::format("the program doesn't carry the file {}: it was built without it", name));
}

}  // namespace torvex
