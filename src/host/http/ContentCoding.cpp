#include "host/http/ContentCoding.h"

#include <algorithm>
#include <brotli/encode.h>
#include <optional>
#include <zlib.h>
#include <zstd.h>

#include "host/http/Ascii.h"
#include "host/http/RequestHead.h"
#include "platform/Errors.h"

namespace torvex {

namespace {

// Weights in thousandths, as they have three digits at most.
constexpr int fullWeight = 1000;
constexpr std::size_t weightDigits = 3;

/// "0.25" is 250. What is no weight counts as none given: a client that writes it badly still wants the coding.
int weightOf(std::string_view text) {
    if (text.empty() || (text[0] != '0' && text[0] != '1')) return fullWeight;
    if (text[0] == '1') return fullWeight;
    int weight = 0;
    for (std::size_t i = 0; i < weightDigits; ++i) {
        const std::size_t at = i + 2;
        const bool isDigit = at < text.size() && ascii::isDigit(text[at]);
        weight = weight * 10 + (isDigit ? text[at] - '0' : 0);
    }
    return weight;
}

/// The weight of ";q=0.5", wherever it stands among parameters.
int weightIn(std::string_view parameters) {
    while (!parameters.empty()) {
        parameters.remove_prefix(1);
        const std::string_view one = ascii::trimmed(parameters.substr(0, parameters.find(';')));
        if (ascii::startsWith(one, "q=")) return weightOf(one.substr(2));
        parameters.remove_prefix(std::min(parameters.size(), parameters.find(';')));
    }
    return fullWeight;
}

/// What a list gives a name; nothing when it isn't there.
std::optional<int> givenWeight(std::string_view list, std::string_view wanted) {
    while (!list.empty()) {
        const std::string_view item = list.substr(0, list.find(','));
        list.remove_prefix(std::min(list.size(), item.size() + 1));
        const std::size_t end = std::min(item.find(';'), item.size());
        if (ascii::equals(ascii::trimmed(item.substr(0, end)), wanted)) return weightIn(item.substr(end));
    }
    return std::nullopt;
}

int weight(std::string_view accepted, Coding coding) {
    const bool isIdentity = coding == Coding::Identity;
    const auto given = givenWeight(accepted, isIdentity ? "identity" : codingName(coding));
    // "x-gzip" is an old name of it.
    const auto old = coding == Coding::Gzip && !given ? givenWeight(accepted, "x-gzip") : given;
    if (old) return *old;
    // The bytes as they are come last where they aren't named.
    return isIdentity ? 0 : givenWeight(accepted, "*").value_or(0);
}

std::string gzipped(std::string_view bytes, int level) {
    constexpr int largestWindow = 15;
    constexpr int gzipHeader = 16;
    constexpr int memoryLevel = 9;
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, largestWindow + gzipHeader, memoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        throw Error("gzip can't be begun");
    std::string result(deflateBound(&stream, bytes.size()), '\0');
    // The library's bytes are unsigned and, of the input, not const.
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    const int outcome = deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    if (outcome != Z_STREAM_END) throw Error("gzip failed");
    return result;
}

std::string brotli(std::string_view bytes, int quality) {
    std::size_t size = BrotliEncoderMaxCompressedSize(bytes.size());
    std::string result(size, '\0');
    const auto* input = reinterpret_cast<const std::uint8_t*>(bytes.data());
    auto* output = reinterpret_cast<std::uint8_t*>(result.data());
    if (!BrotliEncoderCompress(quality, BROTLI_DEFAULT_WINDOW, BROTLI_MODE_TEXT, bytes.size(), input, &size,
                               output))
        throw Error("brotli failed");
    result.resize(size);
    return result;
}

std::string zstd(std::string_view bytes, int level) {
    std::string result(ZSTD_compressBound(bytes.size()), '\0');
    const std::size_t size = ZSTD_compress(result.data(), result.size(), bytes.data(), bytes.size(), level);
    if (ZSTD_isError(size)) throw Error(std::string("zstd failed: ") + ZSTD_getErrorName(size));
    result.resize(size);
    return result;
}

/// The levels at which each gives most for its time.
struct Levels {
    int gzip;
    int brotli;
    int zstd;
};
constexpr Levels once{9, 6, 12};
constexpr Levels eachTime{1, 2, 1};

}  // namespace

std::string_view codingName(Coding coding) {
    switch (coding) {
        case Coding::Gzip:
            return "gzip";
        case Coding::Brotli:
            return "br";
        case Coding::Zstd:
            return "zstd";
        case Coding::Identity:
            break;
    }
    return {};
}

Coding preferredCoding(std::string_view accepted, std::span<const Coding> offered) {
    if (accepted.empty()) return Coding::Identity;
    Coding best = Coding::Identity;
    int most = weight(accepted, Coding::Identity);
    for (const Coding coding : offered) {
        const int given = weight(accepted, coding);
        const bool isBetter = given > most || (given == most && given > 0 && best == Coding::Identity);
        if (!isBetter) continue;
        best = coding;
        most = given;
    }
    return best;
}

Coding preferredCoding(const RequestHead& head, std::span<const Coding> offered) {
    constexpr std::string_view name = "Accept-Encoding";
    if (head.count(name) < 2) return preferredCoding(head.field(name), offered);
    std::string all;
    for (const auto& [key, value] : head.fields)
        if (ascii::equals(key, name)) all.append(value).append(",");
    return preferredCoding(all, offered);
}

std::string encodedAs(Coding coding, std::string_view bytes, Effort effort) {
    const Levels& levels = effort == Effort::Once ? once : eachTime;
    switch (coding) {
        case Coding::Gzip:
            return gzipped(bytes, levels.gzip);
        case Coding::Brotli:
            return brotli(bytes, levels.brotli);
        case Coding::Zstd:
            return zstd(bytes, levels.zstd);
        case Coding::Identity:
            break;
    }
    return std::string(bytes);
}

bool isTextType(std::string_view mediaType) {
    const std::string_view type = mediaType.substr(0, mediaType.find(';'));
    return ascii::startsWith(type, "text/") || ascii::endsWith(type, "xml") ||
           ascii::endsWith(type, "javascript") || ascii::endsWith(type, "json");
}

}  // namespace torvex
