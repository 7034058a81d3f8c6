#include "search/catalogue/FrequentWords.h"

#include <algorithm>
#include <utility>

#include "search/catalogue/Format.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

/// More would be terms and traces of much room for phrases that leave few traces to be read.
constexpr std::size_t mostWords = 1'100;
constexpr Xapian::doccount oneIn = 40;
/// First bytes of codes; from the second one on a further byte follows.
constexpr std::size_t firstShort = 128;
constexpr std::size_t firstLong = 251;

std::string codeAt(std::size_t place) {
    if (place < firstLong - firstShort) return {static_cast<char>(firstShort + place)};
    const std::size_t further = place - (firstLong - firstShort);
    return {static_cast<char>(firstLong + further / 256), static_cast<char>(further % 256)};
}

/// Signs have terms for their pairs already.
bool isPlainWord(const std::string& term) {
    WordReader reader(term);
    return reader.next() && !reader.word().isSign && reader.word().folded == term;
}

}  // namespace

FrequentWords::FrequentWords(std::vector<std::string> words) : words_(std::move(words)) {
    if (words_.size() > mostWords) words_.resize(mostWords);
    for (std::size_t place = 0; place < words_.size(); ++place) codes_.emplace(words_[place], codeAt(place));
}

FrequentWords FrequentWords::in(const Xapian::Database& database) {
    std::vector<std::string> words;
    for (const Word& word : wordsOf(database.get_metadata(std::string(metadata::frequentWords))))
        words.push_back(word.folded);
    return FrequentWords(std::move(words));
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

const std::string& FrequentWords::codeOf(const std::string& word) const {
    static const std::string none;
    const auto found = codes_.find(word);
    return found == codes_.end() ? none : found->second;
}

bool FrequentWords::beginsCode(char byte) {
    return static_cast<unsigned char>(byte) >= firstShort;
}

std::size_t FrequentWords::codeSize(char begin) {
    return static_cast<unsigned char>(begin) < firstLong ? 1 : 2;
}

std::string FrequentWords::pairTerm(const std::string& first, const std::string& second) {
    return "P" + first + second;
}

std::string FrequentWords::untoldTerm() {
    return "P";
}

}  // namespace torvex::catalogue
