// registers: the languages of the authoring interface, and their words.

#include <algorithm>
#include <map>
#include <optional>

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordFields.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Csv.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr std::size_t wordColumns = 3;

namespace interface {
constexpr std::string_view added = "0";
constexpr std::string_view noCode = "-1";
constexpr std::string_view codeTaken = "-2";
constexpr std::string_view noName = "-3";
constexpr std::string_view nameTaken = "-4";
}  // namespace interface

namespace words {
constexpr std::string_view noLanguage = "-1";
constexpr std::string_view noTable = "-2";
constexpr std::string_view noSuchLabel = "-3";
}  // namespace words

constexpr std::string_view selectCode = "select id from TORVEX_INTERFACE_LANGUAGES where lang_id = ?";
constexpr std::string_view selectName = "select id from TORVEX_INTERFACE_LANGUAGES where lang_name = ?";
constexpr std::string_view insertLanguage =
    "insert into TORVEX_INTERFACE_LANGUAGES (lang_id, lang_name, lang_default, lang_enabled, lock) "
    "values (?, ?, 0, 0, '')";

using Outcome = db::Outcome<std::string>;

int idOf(db::Connection& connection, std::string_view statement, std::string_view text) {
    auto rows = connection.query(statement, {text});
    return rows.next() ? static_cast<int>(rows.number("id")) : 0;
}

Outcome addLanguage(db::Connection& own, const std::string& code, const std::string& name) {
    lockRegisters(own);
    if (!isCode(code)) return db::refuse(interface::noCode);
    if (idOf(own, selectCode, code) != 0) return db::refuse(interface::codeTaken);
    if (name.empty()) return db::refuse(interface::noName);
    if (idOf(own, selectName, name) != 0) return db::refuse(interface::nameTaken);
    own.execute(insertLanguage, {code, name});
    makeVocabularyColumn(own, idOf(own, selectCode, code));
    return db::commit(interface::added);
}

/// Words by their labels.
using Words = std::map<double, std::string>;

bool isWhole(std::string_view number) {
    return !number.empty() && number.size() <= 9 &&
           std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

/// Lines of a label and its text; nothing when one isn't that. Of two for one label the later one counts.
std::optional<Words> wordsIn(std::string_view text) {
    const csv::Table table = csv::read(text);
    if (table.openQuote > 0 || table.lines.empty()) return std::nullopt;
    Words read;
    for (const csv::Line& line : table.lines) {
        if (line.cells.size() != 2 || !isWhole(text::trim(line.cells[0]))) return std::nullopt;
        read[text::toNumber(text::trim(line.cells[0]))] = text::trim(line.cells[1]);
    }
    return read;
}

/// The words that differ from those that are there; nothing when a label isn't there.
std::optional<Words> changesIn(db::Connection& own, std::string_view language, Words given) {
    Words known;
    for (VocabularyWord& word : wordsBesideEnglish(own, language))
        known.emplace(word.label, std::move(word.text));
    const bool allKnown =
        std::ranges::all_of(given, [&](const auto& one) { return known.contains(one.first); });
    if (!allKnown) return std::nullopt;
    std::erase_if(given, [&](const auto& one) { return known.at(one.first) == one.second; });
    return given;
}

Outcome writeWords(db::Connection& own, const std::string& language, const std::string& text) {
    lockRegisters(own);
    if (idOf(own, selectCode, language) == 0) return db::refuse(words::noLanguage);
    auto given = wordsIn(text);
    if (!given) return db::refuse(words::noTable);
    const auto changes = changesIn(own, language, std::move(*given));
    if (!changes) return db::refuse(words::noSuchLabel);
    for (const auto& [label, word] : *changes) saveVocabularyText(own, language, label, word);
    return db::commit(std::to_string(changes->size()));
}

}  // namespace

std::string registers::addInterface(const std::string& langId, const std::string& name, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string code = text::lowerTrim(langId);
    const std::string shown(recordName(name));
    const auto outcome = db::tryInOwnTransaction(host_, "addInterface of " + code, status::failed,
                                                 [&](auto& own) { return addLanguage(own, code, shown); });
    if (outcome.isCommitted)
        recordChange("addInterface", advId, "new", "New interface language \"" + shown + '"');
    return outcome.value;
}

Value registers::getWords(const std::string& langId) try {
    ResultGrid grid(wordColumns);
    for (const VocabularyWord& word : wordsBesideEnglish(connection(), text::trim(langId)))
        grid.add({word.label, word.english, word.text});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getWords !");
}

std::string registers::saveWords(const std::string& langId, const std::string& words, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string code = text::lowerTrim(langId);
    const auto outcome = db::tryInOwnTransaction(host_, "saveWords of " + code, status::failed,
                                                 [&](auto& own) { return writeWords(own, code, words); });
    if (outcome.isCommitted && outcome.value != "0") {
        recordChange(
            "saveWords", advId, "edit",
            outcome.value + " interface labels, language " + text::upper(code) + ", have been updated");
    }
    return outcome.value;
}

}  // namespace torvex
