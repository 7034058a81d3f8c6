// Whatever a client may send: the parser, and what reads the parts that it finds. The first byte chooses how
// the rest is cut in pieces.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/files/StaticFiles.h"
#include "host/http/ByteRange.h"
#include "host/http/ContentCoding.h"
#include "host/http/RequestConversion.h"
#include "host/http/RequestParser.h"
#include "host/http/RequestTarget.h"

namespace {

using torvex::RequestParser;
using State = RequestParser::State;

void require(bool holds) {
    if (!holds) std::abort();
}

void readParts(const torvex::RequestHead& head) {
    if (const auto target = torvex::parseTarget(head.target)) {
        require(target->path.front() == '/');
        require(target->path.find('\0') == std::string::npos);
        if (torvex::isPublicPath(target->path)) require(target->path.find("/..") == std::string::npos);
    }
    torvex::isValidHost(head.field("Host"));
    torvex::cookie(head.field("Cookie"), "torvex_session");
    torvex::preferredCoding(head, std::array{torvex::Coding::Brotli, torvex::Coding::Gzip});
    const auto selection = torvex::selectRange(head.field("Range"), 1000);
    if (const auto* part = std::get_if<torvex::FilePart>(&selection))
        require(part->length > 0 && part->offset + part->length <= 1000);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::size_t piece = data[0] == 0 ? size : data[0];
    std::string_view coming(reinterpret_cast<const char*>(data) + 1, size - 1);
    RequestParser parser({.requestLine = 512, .header = 1024, .fields = 20, .body = 2048});
    std::string held;
    while (parser.state() != State::Refused) {
        const std::size_t consumed = parser.feed(held);
        require(consumed <= held.size());
        held.erase(0, consumed);
        if (parser.state() == State::HeaderDone) {
            readParts(parser.head());
            parser.readBody(2048);
        } else if (parser.state() == State::Complete) {
            require(parser.body().size() <= 2048);
            parser.reset();
        } else if (consumed == 0) {
            if (coming.empty()) return 0;
            held += coming.substr(0, piece);
            coming.remove_prefix(std::min(piece, coming.size()));
        }
    }
    return 0;
}
