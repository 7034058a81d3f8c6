#pragma once

#include <map>
#include <string>
#include <string_view>

namespace torvex {
class Packing;
class Unpacking;
}  // namespace torvex

namespace torvex::catalogue {

using Columns = std::map<std::string, std::string>;  ///< by name, in small letters without blanks

/// Columns that every document may have.
namespace column {
inline constexpr std::string_view title = "doctitle";
inline constexpr std::string_view keywords = "dockeywords";
inline constexpr std::string_view author = "docauthor";
inline constexpr std::string_view subject = "docsubject";
inline constexpr std::string_view comments = "doccomments";
inline constexpr std::string_view company = "doccompany";
inline constexpr std::string_view ofDocument[] = {title, keywords, author, subject, comments, company};
}  // namespace column

/// What was read of a file: UTF-8.
struct Reading {
    std::string text;
    std::string language;  ///< its code of two letters, where it is known
    Columns columns;       ///< none is empty
};

void packColumns(Packing& packing, const Columns& columns);
Columns unpackColumns(Unpacking& unpacking);

}  // namespace torvex::catalogue
