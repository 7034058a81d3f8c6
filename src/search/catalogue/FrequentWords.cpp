#include "search/catalogue/FrequentWords.h"

#include <algorithm>
#include <utility>

#include "search/catalogue/Format.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

/// The codes that a byte has beside 0.
constexpr std::size_t mostWords = 255;
/// A word of fewer entries, one in so many, leaves few traces to be read.
constexpr Xapian::doccount oneIn = 10;

/// Signs have terms for their pairs already.
bool isPlainWord(const std::string& term) {
    WordReader reader(term);
    return reader.next() && !reader.word().isSign && reader.word().folded == term;
}

}  // namespace

FrequentWords::FrequentWords(std::vector<std::string> words) : words_(std::move(words)) {
    if (words_.size() > mostWords) words_.resize(mostWords);
    for (const std::string& word : words_) codes_.emplace(word, static_cast<std::uint8_t>(codes_.size() + 1));
}

FrequentWords FrequentWords::in(const Xapian::Database& database) {
    return FrequentWords([&] {
        std::vector<std::string> words;
        for (const Word& word : wordsOf(database.get_metadata(std::string(metadata::frequentWords))))
            words.push_back(word.folded);
        return words;
    }());
}

FrequentWords FrequentWords::chosenFrom(const Xapian::Database& database) {
    std::vector<std::pair<Xapian::doccount, std::string>> found;
    const Xapian::doccount least = std::max<Xapian::doccount>(database.get_doccount() / oneIn, 1);
    for (auto at = database.allterms_begin(); at != database.allterms_end(); ++at) {
        if (at.get_termfreq() >= least && isPlainWord(*at)) found.emplace_back(at.get_termfreq(), *at);
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    std::vector<std::string> words;
    for (auto& [entries, word] : found) words.push_back(std::move(word));
    return FrequentWords(std::move(words));
}

void FrequentWords::storeIn(Xapian::WritableDatabase& database) const {
    std::string all = " ";
    for (const std::string& word : words_) all.append(word).append(" ");
    database.set_metadata(std::string(metadata::frequentWords), all);
}

bool FrequentWords::areSettledIn(const Xapian::Database& database) {
    return !database.get_metadata(std::string(metadata::frequentWords)).empty();
}

std::uint8_t FrequentWords::codeOf(const std::string& word) const {
    const auto found = codes_.find(word);
    return found == codes_.end() ? 0 : found->second;
}

std::string FrequentWords::pairTerm(std::uint8_t first, std::uint8_t second) {
    return {'P', static_cast<char>(first), static_cast<char>(second)};
}

std::string FrequentWords::untoldTerm() {
    return "P";
}

}  // namespace torvex::catalogue
