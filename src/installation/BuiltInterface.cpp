#include "installation/BuiltInterface.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "installation/EmbeddedFile.h"

extern "C" {
extern const torvex::EmbeddedFile torvex_interface_files[];
extern const std::uint64_t torvex_interface_file_count;
}

namespace torvex {

namespace fs = std::filesystem;

namespace {

/// No way out of the folder, and no name that a program reads otherwise.
bool isPlainName(std::string_view name) {
    return !name.empty() && name.find("..") == std::string_view::npos && name.front() != '/' &&
           name.find_first_of(std::string_view("\\\0", 2)) == std::string_view::npos;
}

BuiltInterface::Bytes readFrom(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return nullptr;
    std::ifstream stream(file, std::ios::binary);
    auto bytes = std::make_shared<std::string>(std::istreambuf_iterator<char>(stream),
                                               std::istreambuf_iterator<char>());
    return stream.bad() ? nullptr : bytes;
}

}  // namespace

BuiltInterface::BuiltInterface() {
    for (std::uint64_t i = 0; i < torvex_interface_file_count; ++i) {
        const EmbeddedFile& file = torvex_interface_files[i];
        files_[std::string(file.name())].embedded = file.bytes();
    }
}

BuiltInterface::BuiltInterface(const Files& files) {
    for (const auto& [name, bytes] : files) files_[name].text.store(bytes);
}

BuiltInterface::BuiltInterface(fs::path folder) : folder_(std::move(folder)) {}

BuiltInterface::Bytes BuiltInterface::file(std::string_view name) const {
    if (!isPlainName(name)) return nullptr;
    if (!folder_.empty()) return readFrom(folder_ / name);
    const auto found = files_.find(name);
    if (found == files_.end()) return nullptr;
    const Held& held = found->second;
    Bytes bytes = held.text.load();
    if (bytes) return bytes;
    bytes = std::make_shared<const std::string>(held.embedded);
    held.text.store(bytes);
    return bytes;
}

}  // namespace torvex
