#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}

/// The text of a label in an interface language, trimmed; "" where there is none. `language` is the
/// language's code, or the number of its column, which is used unchecked: a number without a column is a
/// `DatabaseError`.
std::string vocabularyText(db::Connection& connection, std::string_view language, double label);

/// Several labels at once: each as `vocabularyText` gives it, or in English where that is empty. There is an
/// element for every label asked for.
std::map<double, std::string> vocabularyTexts(db::Connection& connection, std::string_view language,
                                              const std::vector<double>& labels);

/// All words of a language by their labels: each trimmed, and in English where it has none. One that has none in
/// either is left out. Nothing for a language that isn't there.
std::map<int, std::string> wholeVocabulary(db::Connection& connection, std::string_view language);

/// A word as those who translate see it.
struct VocabularyWord {
    double label = 0;
    std::string english;
    std::string text;  ///< "" where it is missing
};
/// All words of a language beside the English ones, by their labels; nothing for a language that isn't there.
std::vector<VocabularyWord> wordsBesideEnglish(db::Connection& connection, std::string_view language);

/// Gives a label its text in a language, which is given by its code; makes the label if it isn't there. False
/// when there is no such language.
bool saveVocabularyText(db::Connection& connection, std::string_view language, double label,
                        std::string_view text);

/// Sees that a language that is added has a column, and an empty one. For a transaction.
void makeVocabularyColumn(db::Connection& transaction, int languageId);

/// Empties the column of a language that goes.
void clearVocabulary(db::Connection& connection, int languageId);

}  // namespace torvex
