#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// The text of one start tag, "<" to ">", taken apart by its attributes. Blanks may stand around an
/// attribute's "=". Names ignore case.
class StartTag {
  public:
    explicit StartTag(std::string text) : text_(std::move(text)) {}

    struct Attribute {
        std::size_t begin;       ///< of the blanks in front of the name
        std::size_t valueBegin;  ///< behind the quote
        std::size_t valueEnd;    ///< at the closing quote
        std::size_t end;         ///< behind it
        char quote;              ///< 0 for a value without
        bool isClosed;           ///< false for a value whose quote has no end in the tag
    };

    /// The first one of that name that has a value.
    std::optional<Attribute> find(std::string_view name) const;
    std::string_view valueOf(const Attribute& attribute) const;

    /// Takes all attributes of that name out.
    void remove(std::string_view name);
    void replace(std::size_t begin, std::size_t end, std::string_view with);
    /// Puts `text` in the place of the tag's last ">".
    void finish(std::string_view text);

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace torvex
