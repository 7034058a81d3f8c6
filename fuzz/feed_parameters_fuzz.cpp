#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "delivery/FeedParameters.h"
#include "platform/text/ContentType.h"
#include "platform/text/Text.h"

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

bool isAlreadyEncoded(std::string_view text) {
    return text.find_first_of("?#/<>\"'& ") == std::string_view::npos;
}

}  // namespace

/// The input is a visitor's query, a line break, a feed's parameters, a line break and an address, which
/// serves as a content type as well.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace torvex;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t first = std::min(input.find('\n'), size);
    const std::size_t second = std::min(input.find('\n', std::min(first + 1, size)), size);
    const std::string_view column =
        input.substr(std::min(first + 1, second), second - std::min(first + 1, second));
    const std::string address(input.substr(std::min(second + 1, size)));

    const NamedValues visitors = parseQuery(input.substr(0, first));
    for (const auto& [name, value] : feeds::parameters(visitors, column)) {
        check(text::trim(value).size() == value.size());
        check(isAlreadyEncoded(text::replaceAll(feeds::convertSpecial(value), " ", "")));
    }
    const std::string query = feeds::queryText(visitors, column);
    check(query.find(' ') == std::string::npos);
    const std::string asked = feeds::withQuery(address, query);
    check(asked.starts_with(address) && asked.ends_with(query));
    check(text::isValidUtf8(decodeText(input, address)));
    return 0;
}
