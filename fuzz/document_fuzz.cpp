#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/text/Text.h"
#include "search/extraction/TextExtractor.h"

/// The first byte of the input chooses the kind of file, the others are the file. PDF is left out: its reader
/// is another project's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace torvex;
    if (size == 0) return 0;
    constexpr const char* names[] = {"a.html", "a.txt", "a.rtf", "a.docx", "a.odt", "a.xlsx"};
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    try {
        const auto reading = catalogue::DirectExtractor().read(names[data[0] % std::size(names)], bytes);
        if (!text::isValidUtf8(reading.text)) std::abort();
        for (const auto& [name, value] : reading.columns) {
            if (name.empty() || value.empty() || !text::isValidUtf8(value)) std::abort();
        }
    } catch (const catalogue::ExtractionError& error) {
        if (std::string_view(error.what()).empty()) std::abort();
    }
    return 0;
}
