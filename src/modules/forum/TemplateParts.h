#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvex {

class HTMLTemplate;

/// What goes into the places of a template: texts for its tags, and which of its blocks stay.
class TemplateParts {
  public:
    /// Plain text, which is encoded.
    TemplateParts& text(std::string tag, std::string_view plain);
    /// What is HTML already.
    TemplateParts& html(std::string tag, std::string html);
    /// A day "yyyymmdd" as the tags "_day", "_month", "_year" and "_iso" behind `prefix`.
    TemplateParts& day(const std::string& prefix, std::string_view date8);
    /// A block stays, without its marks, or goes.
    TemplateParts& block(std::string name, bool stays);

    /// Nothing when the parts don't name it.
    const std::string* tag(std::string_view name) const;
    const bool* stays(std::string_view name) const;

    /// Fills a whole page. Places that the page doesn't have are passed over.
    void fill(HTMLTemplate& page) const;

  private:
    std::vector<std::pair<std::string, std::string>> tags_;
    std::vector<std::pair<std::string, bool>> blocks_;
};

/// A block that is filled many times: read once, so that a row costs what it writes. What the parts don't name
/// stays as it is.
class RowTemplate {
  public:
    explicit RowTemplate(std::string text);
    RowTemplate(const RowTemplate&) = delete;  // the pieces lie in the text
    RowTemplate& operator=(const RowTemplate&) = delete;

    void append(std::string& html, const TemplateParts& parts) const;

  private:
    struct Piece {
        std::string_view text;  ///< as it stands in the template
        std::string_view name;  ///< of a marker; "" for what stands between markers
    };

    std::string text_;
    std::vector<Piece> pieces_;
};

}  // namespace torvex
