#include "search/WordMarks.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "search/catalogue/Translation.h"
#include "search/catalogue/Words.h"

namespace torvex {

WordMarks::WordMarks(std::string_view words, SearchDerivation derivation, std::string_view lang)
    : derivation_(derivation), stem_(catalogue::stemmerOf(lang)) {
    for (const catalogue::Word& word : catalogue::wordsOf(words))
        words_.insert(derivation == SearchDerivation::Stemming ? stem_(word.folded) : word.folded);
}

bool WordMarks::isSought(const std::string& folded) const {
    if (derivation_ == SearchDerivation::Stemming) return words_.contains(stem_(folded));
    if (derivation_ == SearchDerivation::None) return words_.contains(folded);
    return std::any_of(words_.begin(), words_.end(),
                       [&](const std::string& word) { return folded.starts_with(word); });
}

std::string WordMarks::marked(std::string_view text) const {
    std::string html;
    std::size_t kept = 0;
    catalogue::WordReader words(text);
    while (words.next()) {
        const catalogue::Word& word = words.word();
        if (!isSought(word.folded)) continue;
        html.append(text::htmlEncode(text.substr(kept, word.begin - kept)));
        html.append("<mark>").append(text::htmlEncode(text.substr(word.begin, word.end - word.begin)));
        html.append("</mark>");
        kept = word.end;
    }
    return html.append(text::htmlEncode(text.substr(kept)));
}

}  // namespace torvex
