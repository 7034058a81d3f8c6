#pragma once

#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>
#include <xapian.h>

#include "search/catalogue/QueryText.h"
#include "search/catalogue/Sources.h"
#include "search/catalogue/Terms.h"

namespace torvex::catalogue {

/// Brings words of a language, a code of two letters, to their stems; none for one that isn't known.
Xapian::Stem stemmerOf(std::string_view language);

/// The words by which an entry was found, as they are to be shown: folded.
struct FoundWords {
    std::set<std::string, std::less<>> words;
    std::set<std::string, std::less<>> beginnings;
};

/// So much is made of one query, however it is written.
struct TranslationLimits {
    std::size_t beginnings = 10'000;  ///< words that those with "*" stand for
    std::size_t forms = 200;          ///< of one word
    std::size_t formsRead = 20'000;   ///< words that are looked at for them
    std::size_t fileNames = 300;      ///< that a pattern is replaced by
    std::size_t patternStars = 32;    ///< in one pattern
};

/// Turns a query into the one that the database answers. It asks the database for the words that there are,
/// so that it is good for this state of the database only.
class Translation {
  public:
    /// By the rules of `language`, a code of two letters, words are brought to their forms.
    Translation(const Xapian::Database& database, const std::string& language,
                const TranslationLimits& limits = {});

    /// Throws `TooManyError` when it stands for more than the limits.
    Xapian::Query of(const QueryNode& query);
    /// What the queries so far look for, but not what they rule out.
    const FoundWords& foundWords() const { return found_; }

  private:
    using Part = std::optional<Xapian::Query>;  ///< none says nothing

    Part partOf(const QueryNode& node);
    Part andOf(const QueryNode& node);
    Part orOf(const QueryNode& node);
    Part notOf(const QueryNode& node);
    Part negated(const QueryNode& node);
    Xapian::Query wordsOf(const QueryNode& node);
    Xapian::Query inField(const QueryNode& node, const Field& field);
    Xapian::Query phrase(const std::vector<std::string>& words, const std::vector<bool>& joins,
                         const Field& field);
    const FrequentWords& frequent();
    std::vector<PhraseTrace> phraseTraces(const std::vector<std::string>& words, const Field& field);
    std::vector<std::string> frequentPairs(const std::vector<std::string>& words, const Field& field);
    Xapian::Query phraseOf(const std::string& text, const Field& field);
    Xapian::Query beginning(const std::string& text, const Field& field);
    Xapian::Query formsOf(const std::string& text, const Field& field);
    Xapian::Query fileNames(const std::vector<std::string>& patterns);
    bool hasStem(const std::string& form, const std::set<std::string>& stems);
    std::optional<std::vector<std::string>> namesLike(const std::string& pattern) const;
    void note(const std::string& word);

    const Xapian::Database& database_;
    Xapian::Stem stem_;
    TranslationLimits limits_;
    std::optional<FrequentWords> frequent_;
    std::unordered_map<std::string, std::string> stems_;  ///< by form: fields have the same words
    FoundWords found_;
    std::size_t beginnings_ = 0;
    bool isNegated_ = false;
};

}  // namespace torvex::catalogue
