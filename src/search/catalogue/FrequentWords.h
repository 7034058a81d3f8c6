#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <xapian.h>

namespace torvex::catalogue {

/// The words that so many texts have that reading the traces of all of them for a phrase takes long. Each has a
/// code of one or two bytes; none begins another, and none begins with a byte below 128. Two of them that follow each other in a
/// text are a term of it, and they are short in its trace. Which words they are is settled once, by the first
/// entries of a catalogue: another choice would ask for other terms.
class FrequentWords {
  public:
    /// None.
    FrequentWords() = default;
    /// As a catalogue has them.
    static FrequentWords in(const Xapian::Database& database);
    /// Those of a database that has no such terms yet.
    static FrequentWords chosenFrom(const Xapian::Database& database);
    static bool areSettledIn(const Xapian::Database& database);

    /// Afterwards `areSettledIn` the database, even if there are none.
    void storeIn(Xapian::WritableDatabase& database) const;

    bool areNone() const { return codes_.empty(); }
    /// "" for a word that isn't among them.
    const std::string& codeOf(const std::string& word) const;

    static bool beginsCode(char byte);
    /// How long the code is that begins so.
    static std::size_t codeSize(char begin);
    /// Of two codes.
    static std::string pairTerm(const std::string& first, const std::string& second);
    /// What entries have that were put in before the words were known.
    static std::string untoldTerm();

  private:
    explicit FrequentWords(std::vector<std::string> words);

    std::vector<std::string> words_;
    std::unordered_map<std::string, std::string> codes_;
};

}  // namespace torvex::catalogue
