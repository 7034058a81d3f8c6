#include <cstdint>
#include <cstdlib>

#include "platform/Request.h"
#include "platform/text/Text.h"

/// The input is what stands behind the "?" of an address.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const torvex::Request request(std::string(reinterpret_cast<const char*>(data), size), {}, {});
    for (const auto& [name, value] : request.queryItems()) {
        if (!torvex::text::isValidUtf8(name) || !torvex::text::isValidUtf8(value)) std::abort();
        if (!torvex::text::contains(request.item(name), value)) std::abort();
    }
    return 0;
}
