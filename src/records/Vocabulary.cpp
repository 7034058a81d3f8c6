#include "records/Vocabulary.h"

#include <algorithm>

#include "installation/Schema.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectColumnNumber = "select id from TORVEX_INTERFACE_LANGUAGES where lang_id = ?";

/// The number of a language's column as digits; "" when the language isn't there.
std::string columnNumber(db::Connection& connection, std::string_view language) {
    if (text::isNumeric(language)) return std::string(text::trim(language));
    auto rows = connection.query(selectColumnNumber, {language});
    return rows.next() ? rows.text("id") : std::string();
}

bool isDigits(std::string_view number) {
    return std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// "" when the language isn't there.
std::string columnOf(db::Connection& connection, std::string_view language) {
    const std::string number = columnNumber(connection, language);
    if (number.empty()) return {};
    // A column can't be bound, so nothing but digits may reach the statement.
    if (!isDigits(number)) throw db::DatabaseError("no such column: lang_vocab" + number);
    return "lang_vocab" + number;
}

/// Of the table of words.
bool hasColumn(db::Connection& connection, std::string_view column) {
    const auto rows = connection.query("select * from TORVEX_INTERFACE_VOCAB where lang_label is null");
    for (std::size_t i = 0; i < rows.columns(); ++i)
        if (text::equals(rows.columnName(i), column)) return true;
    return false;
}

/// Fills in the texts that are still empty.
void fillFrom(db::Connection& connection, std::string_view language, std::map<double, std::string>& texts) {
    std::vector<db::Parameter> missing;
    std::string marks;
    for (const auto& [label, text] : texts) {
        if (!text.empty()) continue;
        missing.emplace_back(label);
        marks += marks.empty() ? "?" : ", ?";
    }
    if (missing.empty()) return;
    const std::string column = columnOf(connection, language);
    if (column.empty()) return;
    auto rows = connection.query(
        "select lang_label, " + column + " from TORVEX_INTERFACE_VOCAB where lang_label in (" + marks + ")",
        missing);
    while (rows.next()) texts[rows.number("lang_label")] = text::trim(rows.text(column));
}

}  // namespace

std::string vocabularyText(db::Connection& connection, std::string_view language, double label) {
    const std::string column = columnOf(connection, language);
    if (column.empty()) return {};
    auto rows =
        connection.query("select " + column + " from TORVEX_INTERFACE_VOCAB where lang_label = ?", {label});
    return rows.next() ? std::string(text::trim(rows.text(column))) : std::string();
}

std::map<double, std::string> vocabularyTexts(db::Connection& connection, std::string_view language,
                                              const std::vector<double>& labels) {
    std::map<double, std::string> texts;
    for (const double label : labels) texts[label];
    fillFrom(connection, language, texts);
    fillFrom(connection, "en", texts);
    return texts;
}

std::map<int, std::string> wholeVocabulary(db::Connection& connection, std::string_view language) {
    std::map<int, std::string> words;
    const std::string column = columnOf(connection, language);
    if (column.empty()) return words;
    const std::string english = columnOf(connection, "en");
    auto rows =
        connection.query("select lang_label, " + column + " as word, " + (english.empty() ? "''" : english) +
                         " as english from TORVEX_INTERFACE_VOCAB");
    while (rows.next()) {
        std::string word(text::trim(rows.text("word")));
        if (word.empty()) word = text::trim(rows.text("english"));
        if (!word.empty()) words.emplace(static_cast<int>(rows.number("lang_label")), std::move(word));
    }
    return words;
}

std::vector<VocabularyWord> wordsBesideEnglish(db::Connection& connection, std::string_view language) {
    std::vector<VocabularyWord> words;
    const std::string column = columnOf(connection, language);
    if (column.empty() || text::isNumeric(language)) return words;
    const std::string english = columnOf(connection, "en");
    auto rows =
        connection.query("select lang_label, " + (english.empty() ? "''" : english) + " as english, " +
                         column + " as word from TORVEX_INTERFACE_VOCAB order by lang_label");
    while (rows.next()) {
        words.push_back({rows.number("lang_label"), std::string(text::trim(rows.text("english"))),
                         std::string(text::trim(rows.text("word")))});
    }
    return words;
}

bool saveVocabularyText(db::Connection& connection, std::string_view language, double label,
                        std::string_view text) {
    auto rows = connection.query(selectColumnNumber, {language});
    if (!rows.next()) return false;
    const std::string column = columnOf(connection, rows.text("id"));
    connection.execute("insert into TORVEX_INTERFACE_VOCAB (lang_label, " + column +
                           ") values (?, ?) on conflict (lang_label) do update set " + column +
                           " = excluded." + column,
                       {label, text::trim(text)});
    return true;
}

void makeVocabularyColumn(db::Connection& transaction, int languageId) {
    const std::string column = columnOf(transaction, std::to_string(languageId));
    if (hasColumn(transaction, column)) return clearVocabulary(transaction, languageId);
    transaction.executeScript(Schema::wordsOf(
        transaction.engine(), "alter table TORVEX_INTERFACE_VOCAB add column " + column + " {text}"));
}

void clearVocabulary(db::Connection& connection, int languageId) {
    const std::string column = columnOf(connection, std::to_string(languageId));
    connection.execute("update TORVEX_INTERFACE_VOCAB set " + column + " = ''");
}

}  // namespace torvex
