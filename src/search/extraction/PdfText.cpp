#include "search/extraction/PdfText.h"

#include <algorithm>
#include <memory>
#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>
#include <poppler/cpp/poppler-page.h>

#include "search/extraction/TextBuilder.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

constexpr int mostPages = 5'000;

std::string utf8Of(const poppler::ustring& text) {
    const poppler::byte_array bytes = text.to_utf8();
    return {bytes.begin(), bytes.end()};
}

void put(Reading& reading, std::string_view name, const poppler::document& document, const char* key) {
    std::string value = oneLine(utf8Of(document.info_key(key)));
    if (!value.empty()) reading.columns.emplace(name, std::move(value));
}

}  // namespace

Reading readPdf(std::string_view bytes) {
    poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr);
    const std::unique_ptr<poppler::document> document(
        poppler::document::load_from_raw_data(bytes.data(), static_cast<int>(bytes.size())));
    if (!document) throw ExtractionError("it is broken");
    if (document->is_locked()) throw ExtractionError("it is encrypted");
    TextBuilder text;
    for (int number = 0; number < std::min(document->pages(), mostPages) && !text.isFull(); ++number) {
        const std::unique_ptr<poppler::page> page(document->create_page(number));
        if (!page) continue;
        text.gap();
        text.add(utf8Of(page->text()));
    }
    Reading reading;
    reading.text = text.take();
    put(reading, column::title, *document, "Title");
    put(reading, column::author, *document, "Author");
    put(reading, column::subject, *document, "Subject");
    put(reading, column::keywords, *document, "Keywords");
    put(reading, column::company, *document, "Company");
    put(reading, column::comments, *document, "Comments");
    return reading;
}

}  // namespace torvex::catalogue
