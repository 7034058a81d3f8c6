#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex::catalogue {

/// So much of a file's text is kept, in bytes; what a reader finds in a longer one is mostly at its beginning.
inline constexpr std::size_t longestText = 1'000'000;
inline constexpr std::size_t longestColumn = 4'000;

/// Puts a text together: runs of white space are one blank, or one line end where there was a gap. It takes no
/// more than it is to hold.
class TextBuilder {
  public:
    explicit TextBuilder(std::size_t most = longestText) : most_(most) {}

    void add(std::string_view text);
    /// What follows is a word of its own.
    void gap() { hasGap_ = true; }
    bool isFull() const { return text_.size() >= most_; }
    /// UTF-8, whatever was put in.
    std::string take();

  private:
    std::size_t most_;
    std::string text_;
    bool hasGap_ = false;
    bool hasBlank_ = false;
};

/// The text with its white space made one blank, without any at its ends, and cut.
std::string oneLine(std::string_view text);

/// Bytes of a text file as UTF-8: by their mark, else as UTF-8 if they are that, else as they are written on
/// most machines of the West (windows-1252).
std::string decodedText(std::string_view bytes);

}  // namespace torvex::catalogue
