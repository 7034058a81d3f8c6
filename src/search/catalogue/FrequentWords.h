#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <xapian.h>

namespace torvex::catalogue {

/// The words that so many texts have that reading the traces of all of them for a phrase takes long. Two of them
/// that follow each other in a text are a term of it, of three bytes. Which words they are is settled once, by
/// the first entries of a catalogue: another choice would ask for other terms.
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
    /// 0 for a word that isn't among them.
    std::uint8_t codeOf(const std::string& word) const;

    /// Of two codes other than 0.
    static std::string pairTerm(std::uint8_t first, std::uint8_t second);
    /// What entries have that were put in before the words were known.
    static std::string untoldTerm();

  private:
    explicit FrequentWords(std::vector<std::string> words);

    std::vector<std::string> words_;
    std::unordered_map<std::string, std::uint8_t> codes_;
};

}  // namespace torvex::catalogue
