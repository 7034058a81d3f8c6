#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/text/Text.h"
#include "platform/xml/XslTransform.h"

/// The input is a stylesheet, a byte 0, and the document that it transforms.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace torvex;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\0'), size);
    XslLimits limits;
    limits.templateDepth = 100;
    limits.operations = 20'000;
    try {
        XslInput documents{XmlDocument::parse(input.substr(0, end), XmlBlanks::Keep),
                           XmlDocument::parse(input.substr(std::min(end + 1, size)), XmlBlanks::Drop),
                           {{"q", "it's \"quoted\""}}};
        if (!text::isValidUtf8(transform(std::move(documents), limits))) std::abort();
    } catch (const XmlError& error) {
        const std::string_view reason = error.what();
        if (reason.empty() || reason.find('\n') != std::string_view::npos) std::abort();
        if (!text::isValidUtf8(reason) || error.code() == 0) std::abort();
    }
    return 0;
}
