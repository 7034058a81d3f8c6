#include "search/designs/PageWords.h"

#include <set>

#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/catalogue/Words.h"
#include "search/extraction/HtmlText.h"

namespace torvex::pageWords {

namespace {

constexpr char ofTitle = 't';
constexpr char ofBody = 'w';
constexpr char ofTree = 's';

/// A page that says more than a book of a thousand pages is found by its beginning: one row has no place for
/// more.
constexpr std::size_t longestColumn = 400'000;

/// As one word: site and language are letters and digits.
std::string treeWord(std::string_view nodeId) {
    std::string word(1, ofTree);
    for (const char c : text::lower(text::first(nodeId, PageIdentity::rootLength))) {
        if (c != '.' && c != ' ') word += c;
    }
    return word;
}

void addWords(std::set<std::string>& words, char mark, std::string_view text) {
    for (catalogue::WordReader reader(text); reader.next();) {
        words.insert(std::string(1, mark) + reader.word().folded);
    }
}

/// How an engine writes its queries.
struct Grammar {
    std::string_view open;
    std::string_view closeExact;
    std::string_view closeBeginning;
    std::string_view conjunction;
    std::string_view disjunction;
};
constexpr Grammar sqlite{"\"", "\"", "\"*", " AND ", " OR "};
constexpr Grammar postgres{"'", "'", "':*", " & ", " | "};

std::string beginning(const Grammar& grammar, char mark, std::string_view word) {
    return std::string(grammar.open).append(1, mark).append(word).append(grammar.closeBeginning);
}

std::string partFor(const Grammar& grammar, std::string_view word, Place place) {
    std::string part = beginning(grammar, ofTitle, word);
    if (place == Place::Title) return part;
    return std::string("(")
               .append(part)
               .append(grammar.disjunction)
               .append(beginning(grammar, ofBody, word)) +
           ")";
}

std::string inTrees(const Grammar& grammar, const std::vector<std::string>& trees) {
    std::string part;
    for (const std::string& tree : trees) {
        part.append(part.empty() ? std::string_view("(") : grammar.disjunction);
        part.append(grammar.open).append(treeWord(tree)).append(grammar.closeExact);
    }
    return part + ")";
}

std::string queryFor(const Grammar& grammar, const Wanted& wanted, Place place) {
    std::string query;
    for (const std::string& word : wanted.beginnings) {
        query.append(query.empty() ? std::string_view() : grammar.conjunction)
            .append(partFor(grammar, word, place));
    }
    if (!wanted.trees.empty()) {
        query.append(query.empty() ? std::string_view() : grammar.conjunction)
            .append(inTrees(grammar, wanted.trees));
    }
    return query;
}

}  // namespace

std::string textOf(std::string_view html) {
    return catalogue::readHtml(html).text;
}

std::string columnOf(std::string_view nodeId, std::string_view title, const std::vector<std::string>& texts) {
    std::set<std::string> words;
    addWords(words, ofTitle, title);
    for (const std::string& text : texts) addWords(words, ofBody, text);
    std::string column = treeWord(nodeId);
    for (const std::string& word : words) {
        if (column.size() + 1 + word.size() > longestColumn) break;
        column.append(1, ' ').append(word);
    }
    return column;
}

std::string sqliteQuery(const Wanted& wanted, Place place) {
    return queryFor(sqlite, wanted, place);
}

std::string postgresQuery(const Wanted& wanted, Place place) {
    return queryFor(postgres, wanted, place);
}

}  // namespace torvex::pageWords
