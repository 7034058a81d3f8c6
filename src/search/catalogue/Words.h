#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What counts as a word, in the files that are indexed and in what is asked for alike.
namespace torvex::catalogue {

/// Words are told apart by their first so many bytes.
inline constexpr std::size_t longestWord = 60;

struct Word {
    std::string folded;     ///< without its case and accents
    std::size_t begin = 0;  ///< where it stands in the text, in bytes
    std::size_t end = 0;
    bool isSign = false;  ///< one sign of a writing that puts no blanks between words
};

/// Goes over the words of a text: letters and digits that stand together. Signs of writings that don't
/// divide words (Chinese, Japanese, Korean, Thai and their like) are a word each. Broken UTF-8 divides.
class WordReader {
  public:
    explicit WordReader(std::string_view text) : text_(text) {}

    /// Moves to the next word, first to the first one; false when there is none.
    bool next();
    /// Valid until the next call of `next`.
    const Word& word() const { return word_; }

  private:
    bool skipToWord();
    void readAscii();

    std::string_view text_;
    std::size_t at_ = 0;
    Word word_;
};

std::vector<Word> wordsOf(std::string_view text);

/// The text without case and accents, as words have it; other characters stay.
std::string folded(std::string_view text);

/// The first `most` bytes of a text, less a character that would be cut in two.
std::string_view cut(std::string_view text, std::size_t most);

}  // namespace torvex::catalogue
