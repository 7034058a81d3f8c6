#include "platform/workers/Packing.h"

#include "platform/Errors.h"

namespace torvex {

namespace {

constexpr unsigned bitsOfByte = 7;
constexpr unsigned more = 1U << bitsOfByte;

}  // namespace

Packing& Packing::number(std::uint64_t value) {
    for (; value >= more; value >>= bitsOfByte) bytes_ += static_cast<char>((value & (more - 1)) | more);
    bytes_ += static_cast<char>(value);
    return *this;
}

Packing& Packing::text(std::string_view value) {
    number(value.size());
    bytes_.append(value);
    return *this;
}

std::uint64_t Unpacking::number() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += bitsOfByte) {
        if (rest_.empty()) break;
        const auto byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        value |= static_cast<std::uint64_t>(byte & (more - 1)) << shift;
        if (byte < more) return value;
    }
    throw Error("a broken message");
}

std::string_view Unpacking::text() {
    const std::uint64_t size = number();
    if (size > rest_.size()) throw Error("a broken message");
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
}

}  // namespace torvex
