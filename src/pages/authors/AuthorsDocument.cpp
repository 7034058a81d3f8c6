#include "pages/authors/AuthorsDocument.h"

#include <fmt/format.h>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

AuthorsDocument::AuthorsDocument(HostContext& host, db::Connection& connection, std::string_view language,
                                 std::string_view file, const std::vector<double>& labels)
    : language_(language), words_(vocabularyTexts(connection, language, labels)), page_(host) {
    const std::string name =
        host.application.text(applicationKey::adminTemplatesPath) + language_ + "/" + std::string(file);
    if (!page_.load(name)) {
        throw Error(fmt::format(
            "The interface's template {} isn't there: \"torvex migrate\" or createInterface makes it", name));
    }
    fill("lang", language_);
}

void AuthorsDocument::fill(std::string_view tag, std::string_view text) {
    page_.replaceTag(tag, text::htmlEncode(text));
}

void AuthorsDocument::fillHtml(std::string_view tag, std::string_view html) {
    page_.replaceTag(tag, html);
}

void AuthorsDocument::showBlock(std::string_view block, bool isShown) {
    if (!page_.blockExists(block)) return;
    page_.replaceBlock(block, isShown ? page_.extractBlock(block) : std::string());
}

std::string AuthorsDocument::take() {
    page_.removeTags();
    return page_.takeStrVal();
}

std::string filled(std::string_view word, std::string_view name, std::string_view value) {
    return text::replaceAll(std::string(word), fmt::format("{{{}}}", name), value);
}

}  // namespace torvex
