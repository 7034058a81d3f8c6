#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <xapian.h>

#include "search/catalogue/Entry.h"
#include "search/catalogue/FrequentWords.h"

/// How entries stand in the database: which terms they are found by, and what its numbered values hold.
///
/// Words are folded, so that a term that begins with a capital letter is never a word of a text. A word in the
/// text is a term as it is. "A" stands before words of any column of documents, and "X", a column's name and
/// ":" before those of one column. Further terms: "Q" path, "D" each folder that a file lies in or below, "H"
/// the folder that it lies in, "F" file name, "E" its ending, all in small letters but for the path; "P" two
/// frequent words that follow each other in the text (see `FrequentWords`).
///
/// There are no positions: half of the database would be made of them. Phrases are told by traces: a trace is
/// three bytes of each word's hash in their order. Words that follow each other in a text other than the one
/// that is asked for have the same three bytes once in millions.
namespace torvex::catalogue {

namespace slot {
inline constexpr Xapian::valueno path = 0;
inline constexpr Xapian::valueno stamp = 1;
inline constexpr Xapian::valueno textTrace = 2;
inline constexpr Xapian::valueno anyColumnTrace = 3;
inline constexpr Xapian::valueno codedTextTrace = 4;  ///< in place of `textTrace`, see `codedTraceOf`
}  // namespace slot

/// What words are looked for in: a text, any column, one column.
struct Field {
    std::string prefix;
    Xapian::valueno trace;
};
Field textField();
Field anyColumnField();
/// `name` in small letters.
Field columnField(std::string_view name);
/// What a column is sorted by; see `sortKey`.
Xapian::valueno sortSlot(std::string_view name);
inline constexpr std::size_t longestSortKey = 64;

/// The database's terms are bounded: what is longer is told by its hash.
std::string termOf(std::string_view prefix, std::string_view text);

std::string pathTerm(std::string_view path);
/// Folders are named as in "search/html/en", without dividers at their ends; "" is all.
std::string deepFolderTerm(std::string_view folder);
std::string folderTerm(std::string_view folder);
std::string fileNameTerm(std::string_view lowerName);
std::string endingTerm(std::string_view lowerEnding);
/// "" for a name without one.
std::string_view endingOf(std::string_view fileName);

std::string traceOf(std::string_view word);
inline constexpr std::size_t traceSize = 3;
/// In the trace of a text that was put in when its frequent words were known: the code of such a word, or the
/// trace of another one without its highest bit, so that it can't be taken for a code.
std::string codedTraceOf(const std::string& word, const FrequentWords& frequent);
/// Divides the traces of columns, so that no phrase goes over their ends. No word has it.
inline constexpr std::string_view traceGap{"\0\0\0", traceSize};

/// Two signs that follow each other, as one word.
std::string pairOf(std::string_view first, std::string_view second);

/// The stamp of a file as a value. Each rebuilding is a further generation: entries of an earlier one are out
/// of date whatever their file.
std::string stampValue(const FileStamp& stamp, std::string_view generation);

/// The text that an entry is sorted by: the beginning of a column, or of the file's name.
std::string sortKey(const Xapian::Document& document, Xapian::valueno slot);

/// All that is kept of an entry.
Xapian::Document documentOf(const Entry& entry, std::string_view generation, const FrequentWords& frequent);
/// Throws `Error` for what isn't one.
Entry entryOf(const Xapian::Document& document);
/// The words of an entry by which others are corrected: those of its text, in small letters.
std::vector<std::string> spellingsOf(const Entry& entry);

}  // namespace torvex::catalogue
