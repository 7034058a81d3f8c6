#include "cli/SqlScript.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

constexpr std::string_view blanks = " \t\r\n\f\v";

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Behind the end of what begins at `at` up to and with `end`, or the end of the text.
std::size_t behind(std::string_view text, std::string_view end, std::size_t at) {
    const std::size_t found = text.find(end, at);
    return found == std::string_view::npos ? text.size() : found + end.size();
}

bool isCommentAt(std::string_view text, std::size_t at) {
    return text.substr(at, 2) == "--" || text.substr(at, 2) == "/*";
}

std::size_t behindComment(std::string_view text, std::size_t at) {
    return text[at] == '-' ? behind(text, "\n", at) : behind(text, "*/", at + 2);
}

/// Behind the character, the quoted stretch or the comment that begins at `at`. A doubled quote within a
/// quoted stretch ends one and begins the next, which comes to the same.
std::size_t behindPart(std::string_view text, std::size_t at) {
    if (isCommentAt(text, at)) return behindComment(text, at);
    if (text[at] == '\'' || text[at] == '"') return behind(text, text.substr(at, 1), at + 1);
    return at + 1;
}

/// Where the statement's own text begins, behind blanks and comments.
std::size_t beginOf(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (isCommentAt(text, at)) {
            at = behindComment(text, at);
        } else if (blanks.find(text[at]) != std::string_view::npos) {
            ++at;
        } else {
            break;
        }
    }
    return at;
}

}  // namespace

std::vector<std::string> splitStatements(std::string_view script) {
    std::vector<std::string> statements;
    while (!script.empty()) {
        std::size_t end = 0;
        while (end < script.size() && script[end] != ';') end = behindPart(script, end);
        std::string_view statement = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        statement.remove_prefix(beginOf(statement));
        if (statement.empty()) continue;
        statements.emplace_back(statement.substr(0, statement.find_last_not_of(blanks) + 1));
    }
    return statements;
}

std::string firstWord(std::string_view statement) {
    statement.remove_prefix(beginOf(statement));
    const auto end = std::find_if_not(statement.begin(), statement.end(), isWordCharacter);
    return text::lower(statement.substr(0, static_cast<std::size_t>(end - statement.begin())));
}

}  // namespace torvex::cli
