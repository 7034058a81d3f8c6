#include "media/Image.h"

#include <algorithm>
#include <array>
#include <exception>

#include "media/ImageHeader.h"
#include "platform/HostContext.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

bool isPictureName(std::string_view path) {
    static constexpr std::array<std::string_view, 5> extensions{"gif", "bmp", "jpg", "jpeg", "png"};
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos) return false;
    const std::string_view extension = path.substr(dot + 1);
    return std::any_of(extensions.begin(), extensions.end(),
                       [extension](std::string_view known) { return text::equals(extension, known); });
}

}  // namespace

void Image::setFilename(const std::string& value) try {
    const std::string path(text::trim(value));
    if (isPictureName(path)) read(path);
} catch (const std::exception&) {
    // A file that can't be read is none.
}

void Image::read(const std::string& path) {
    const auto bytes = host_.files.fileSize(path);
    if (!bytes) return;
    const ImageHeader header = readImageHeader([&](std::uint64_t offset, std::size_t length) {
        return host_.files.readRange(path, offset, length).value_or(std::string());
    });
    if (header.type.empty()) return;
    filename_ = path;
    filetype_ = header.type;
    size_ = static_cast<double>(*bytes);
    width_ = header.width.value_or(width_);
    height_ = header.height.value_or(height_);
    depth_ = header.depth.value_or(depth_);
}

}  // namespace torvex
