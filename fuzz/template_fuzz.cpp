#include <cstdint>
#include <cstdlib>

#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "support/TestHost.h"
#include "templates/HTMLTemplate.h"

using namespace torvex;

namespace {

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

void require(bool holds) {
    if (!holds) std::abort();
}

/// The rules of comparing must hold for any bytes.
void checkText(std::string_view a, std::string_view b) {
    require(text::compare(a, b) == -text::compare(b, a));
    require(text::equals(a, b) == (text::compare(a, b) == 0));
    const std::size_t at = text::find(a, b);
    require(at == text::npos || b.empty() || text::matchLength(a, at, b) > 0);
    require(!text::startsWith(a, b) || text::find(a, b) == 0);
    require(!text::endsWith(a, b) || b.empty() || text::contains(a, b));
    require(text::length(text::first(a, 3)) <= 3 && text::length(text::last(a, 3)) <= 3);
    require(text::isValidUtf8(text::toValidUtf8(a)));
    require(text::urlDecode(text::urlEncode(a)) == a);
}

template <typename Operation>
void onCopy(HostContext& host, std::string_view buffer, Operation operation) {
    HTMLTemplate made(host);
    made.setStrVal(std::string(buffer));
    try {
        operation(made);
    } catch (const ResponseEnded&) {
        // The answer to a block that isn't there.
    }
}

void runOperations(HostContext& host, std::string_view tag, std::string_view text, std::string_view buffer) {
    onCopy(host, buffer, [&](auto& made) {
        const bool exists = made.tagExists(tag);
        made.replaceTag(tag, text, "u", 2);
        made.replaceTag(tag, "");
        require(exists || made.strVal() == buffer);
    });
    onCopy(host, buffer, [&](auto& made) { made.iTagExists(tag); });
    onCopy(host, buffer, [&](auto& made) {
        const bool exists = made.blockExists(tag);
        made.replaceAllBlocks(tag, "");
        require(exists || made.strVal() == buffer || text::endsWith(tag, "_i"));
        made.replaceAllBlocks(std::string(tag) + "_i", text);
    });
    onCopy(host, buffer, [&](auto& made) { made.replaceBlock(tag, made.extractBlock(tag)); });
    onCopy(host, buffer,
           [&](auto& made) { made.replaceCustomBlock(tag, text, made.extractCustomBlock(tag, text)); });
    onCopy(host, buffer, [&](auto& made) { made.emailToLinks(); });
    onCopy(host, buffer, [&](auto& made) { made.removeTags(); });
}

}  // namespace

/// The input is a tag, a text and a template, each on lines of its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view buffer(reinterpret_cast<const char*>(data), size);
    const std::string_view tag = takeLine(buffer);
    const std::string_view text = takeLine(buffer);
    checkText(buffer, tag);
    checkText(text, tag);
    test::TestHost host;
    runOperations(host.context(), tag, text, buffer);
    return 0;
}
