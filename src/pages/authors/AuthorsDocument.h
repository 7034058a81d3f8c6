#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "templates/HTMLTemplate.h"

namespace torvex {
namespace db {
class Connection;
}
struct HostContext;

/// A page of the server's own for authors, drawn from the interface's template of a language. Made for one
/// request.
class AuthorsDocument {
  public:
    /// `file` is the template's, "login.html"; `labels` are the words that the page says besides those that
    /// its template holds. Throws `Error` when the language's templates aren't there.
    AuthorsDocument(HostContext& host, db::Connection& connection, std::string_view language,
                    std::string_view file, const std::vector<double>& labels = {});

    const std::string& language() const { return language_; }
    /// As it stands in the vocabulary.
    const std::string& word(double label) const { return words_.at(label); }

    /// Fills a place with plain text.
    void fill(std::string_view tag, std::string_view text);
    void fill(std::string_view tag, double label) { fill(tag, word(label)); }
    /// Fills a place with what is HTML already.
    void fillHtml(std::string_view tag, std::string_view html);
    /// Takes a block out, or leaves what is in it.
    void showBlock(std::string_view block, bool isShown);

    /// Ends the page: places that nobody filled are gone.
    std::string take();

  private:
    const std::string language_;
    const std::map<double, std::string> words_;
    HTMLTemplate page_;
};

/// A word's "{name}" filled with what stands for it.
std::string filled(std::string_view word, std::string_view name, std::string_view value);

}  // namespace torvex
