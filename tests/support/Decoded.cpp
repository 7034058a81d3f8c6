#include "support/Decoded.h"

#include <brotli/decode.h>
#include <zlib.h>
#include <zstd.h>

namespace torvex::test {

namespace {

/// What is sent in tests is at most so long.
constexpr std::size_t longest = 8 * 1024 * 1024;

std::string ofGzip(std::string_view bytes) {
    std::string result(longest, '\0');
    z_stream stream{};
    inflateInit2(&stream, 15 + 16);
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    const bool isWhole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_in == 0;
    result.resize(isWhole ? stream.total_out : 0);
    inflateEnd(&stream);
    return result;
}

std::string ofBrotli(std::string_view bytes) {
    std::string result(longest, '\0');
    std::size_t size = result.size();
    const auto outcome =
        BrotliDecoderDecompress(bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()), &size,
                                reinterpret_cast<std::uint8_t*>(result.data()));
    result.resize(outcome == BROTLI_DECODER_RESULT_SUCCESS ? size : 0);
    return result;
}

std::string ofZstd(std::string_view bytes) {
    std::string result(longest, '\0');
    const std::size_t size = ZSTD_decompress(result.data(), result.size(), bytes.data(), bytes.size());
    result.resize(ZSTD_isError(size) ? 0 : size);
    return result;
}

}  // namespace

std::string decoded(std::string_view coding, std::string_view bytes) {
    if (coding == "gzip") return ofGzip(bytes);
    if (coding == "br") return ofBrotli(bytes);
    if (coding == "zstd") return ofZstd(bytes);
    return std::string(bytes);
}

}  // namespace torvex::test
