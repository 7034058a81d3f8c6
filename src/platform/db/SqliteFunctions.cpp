#include "platform/db/SqliteFunctions.h"

#include <optional>
#include <sqlite3.h>
#include <string>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex::db {

namespace {

/// No character has this value, nor has a byte that is part of none.
constexpr char32_t nothing = 0xFFFFFFFF;

/// Takes one folded character off the text at `at`, which must not be at its end.
char32_t take(std::string_view text, std::size_t& at) {
    const utf8::Unit unit = utf8::unitAt(text, at);
    at += unit.length;
    return utf8::folded(unit.value);
}

enum class Token { Character, One, Run, End };

struct Piece {
    Token token = Token::End;
    char32_t character = 0;
};

/// Takes one piece off the pattern.
Piece takePiece(std::string_view pattern, std::size_t& at, char32_t escape) {
    if (at == pattern.size()) return {};
    const char32_t c = take(pattern, at);
    if (escape != 0 && c == escape) {
        if (at == pattern.size()) return {Token::Character, nothing};
        return {Token::Character, take(pattern, at)};
    }
    if (c == U'%') return {Token::Run};
    if (c == U'_') return {Token::One};
    return {Token::Character, c};
}

/// What a text must hold anywhere, of a pattern that asks for no more: "%walks%". By far the most are of this kind,
/// and asked of many thousand rows.
std::optional<std::string_view> partWanted(std::string_view pattern, char32_t escape) {
    constexpr char special[] = {'%', '_', static_cast<char>(defaultEscape), '\0'};
    if (escape != defaultEscape || pattern.size() < 2 || !pattern.starts_with('%') || !pattern.ends_with('%'))
        return std::nullopt;
    const std::string_view part = pattern.substr(1, pattern.size() - 2);
    if (part.find_first_of(special) != std::string_view::npos) return std::nullopt;
    return part;
}

std::string_view textOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

int collate(void* /*unused*/, int sizeA, const void* a, int sizeB, const void* b) {
    return text::compare({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                         {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

bool anyNull(int count, sqlite3_value** arguments) {
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) return true;
    }
    return false;
}

/// "text like pattern escape e" arrives as like(pattern, text, e). A null anywhere gives null.
void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (anyNull(count, arguments)) return;
    char32_t escape = defaultEscape;
    if (count == 3) {
        const std::string_view given = textOf(arguments[2]);
        std::size_t at = 0;
        escape = given.empty() ? 0 : take(given, at);
        if (at != given.size()) {
            sqlite3_result_error(context, "the escape of like must be one character", -1);
            return;
        }
    }
    sqlite3_result_int(context, matchesLike(textOf(arguments[1]), textOf(arguments[0]), escape) ? 1 : 0);
}

using Change = std::string (*)(std::string_view);

template <Change change>
void changeCase(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (anyNull(count, arguments)) return;
    const std::string changed = change(textOf(arguments[0]));
    sqlite3_result_text64(context, changed.data(), changed.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void addFunction(sqlite3* database, const char* name, int arguments, Function function) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    const int code = sqlite3_create_function_v2(database, name, arguments, flags, nullptr, function, nullptr,
                                                nullptr, nullptr);
    if (code != SQLITE_OK) throw DatabaseError(sqlite3_errmsg(database));
}

}  // namespace

bool matchesLike(std::string_view text, std::string_view pattern, char32_t escape) {
    if (const auto part = partWanted(pattern, escape)) return text::contains(text, *part);
    std::size_t textAt = 0;
    std::size_t patternAt = 0;
    // Where to go on when the characters behind the last "%" don't match: one character further on in the
    // text.
    bool hasRun = false;
    std::size_t textRetry = 0;
    std::size_t patternRetry = 0;
    while (true) {
        const Piece piece = takePiece(pattern, patternAt, escape);
        if (piece.token == Token::Run) {
            hasRun = true;
            textRetry = textAt;
            patternRetry = patternAt;
            if (patternAt == pattern.size()) return true;
            continue;
        }
        const bool atEnd = textAt == text.size();
        if (piece.token == Token::End && atEnd) return true;
        if (piece.token != Token::End && atEnd) return false;
        if (piece.token != Token::End) {
            const char32_t c = take(text, textAt);
            if (piece.token == Token::One || c == piece.character) continue;
        }
        if (!hasRun) return false;
        take(text, textRetry);
        textAt = textRetry;
        patternAt = patternRetry;
    }
}

void addTextFunctions(sqlite3* database) {
    if (sqlite3_create_collation_v2(database, "torvex", SQLITE_UTF8, nullptr, collate, nullptr) !=
        SQLITE_OK) {
        throw DatabaseError(sqlite3_errmsg(database));
    }
    addFunction(database, "like", 2, like);
    addFunction(database, "like", 3, like);
    addFunction(database, "lower", 1, changeCase<text::lower>);
    addFunction(database, "upper", 1, changeCase<text::upper>);
}

}  // namespace torvex::db
