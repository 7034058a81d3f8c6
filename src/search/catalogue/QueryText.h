#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The language of queries:
///
///     query    = part { "OR" part }
///     part     = factor { "AND" factor }
///     factor   = "NOT" factor | "(" query ")" | "#filename=" pattern | [ property ] words
///     property = "@" name | "$" name
///     words    = word [ "*" ] | '"' text '"'
///
/// AND, OR and NOT may be written in either case; NOT binds closest, OR least. A property holds for what
/// follows it, up to the end of its parentheses or the next property; before the first one words are looked
/// for in "contents". Words behind "@" stand for themselves, and two of them need an operator between them.
/// Behind "$" they stand for all forms of the word, and words without an operator are alternatives. "*" stands
/// for the rest of a word; in the pattern of a file name, which goes up to the next blank or parenthesis, it
/// stands for any characters and "?" for one. A word that has neither letters nor digits is left out.
///
/// Properties are "all" (the text and all columns of documents), "contents" (the text), and the columns:
/// "filename", "doctitle", "dockeywords", "docauthor", "docsubject", "doccomments", "doccompany" and those that
/// meta tags of pages have made.
namespace torvex::catalogue {

/// A query, taken apart.
struct QueryNode {
    enum class Kind {
        Nothing,   ///< words without letters and digits
        Word,      ///< `text`, in `property`
        Prefix,    ///< words that begin with `text`
        Forms,     ///< all forms of the word `text`
        Phrase,    ///< the words of `text`, one behind the other
        FileName,  ///< the file's name matches `text`
        And,
        Or,
        Not  ///< of one part
    };

    Kind kind = Kind::Nothing;
    std::string text;
    std::string property;  ///< in small letters
    std::vector<QueryNode> parts;
};

struct QueryLimits {
    std::size_t bytes = 256 * 1024;
    std::size_t depth = 50;      ///< of parentheses and NOTs
    std::size_t nodes = 20'000;  ///< words, patterns and operators
    std::size_t wildCards = 4'000;
};

/// Throws `QueryError` for a text that is none, `TooManyError` for one beyond the limits.
QueryNode parseQuery(std::string_view text, const QueryLimits& limits = {});

}  // namespace torvex::catalogue
