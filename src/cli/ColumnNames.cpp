#include "cli/ColumnNames.h"

#include <algorithm>

#include "installation/InstallFiles.h"
#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

constexpr std::string_view createTable = "create table ";
constexpr std::string_view alterTable = "alter table ";
constexpr std::string_view addColumn = " add column ";

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The name at the start of the text; "" when it begins with something else.
std::string_view nameAt(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isNameCharacter);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

std::string_view withoutIndent(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return line;
}

/// The words of a statement, one after the other, wherever they stand.
std::vector<std::string_view> wordsOf(std::string_view statement) {
    std::vector<std::string_view> words;
    while (!statement.empty()) {
        const std::string_view word = nameAt(statement);
        if (!word.empty()) words.push_back(word);
        statement.remove_prefix(std::max<std::size_t>(word.size(), 1));
    }
    return words;
}

/// What a statement itself calls a column, "" when it doesn't.
std::string_view aliasOf(std::string_view column, const std::vector<std::string_view>& words) {
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (text::equals(words[i - 1], "as") && text::equals(words[i], column)) return words[i];
    }
    return {};
}

}  // namespace

ColumnNames::ColumnNames() {
    for (const InstallFile& file : installFiles("schema/")) {
        std::string_view text = file.bytes();
        if (!file.name().ends_with(".sql")) continue;
        for (std::size_t at = text.find(createTable); at != std::string_view::npos;
             at = text.find(createTable)) {
            text.remove_prefix(at + createTable.size());
            readTable(text.substr(0, text.find("\n);")));
        }
    }
    for (const InstallFile& file : installFiles("schema/")) {
        if (file.name().ends_with(".sql")) readAddedColumns(file.bytes());
    }
}

/// "alter table NAME add column NAME TYPE".
void ColumnNames::readAddedColumns(std::string_view text) {
    for (std::size_t at = text.find(alterTable); at != std::string_view::npos; at = text.find(alterTable)) {
        text.remove_prefix(at + alterTable.size());
        const std::string table = text::lower(nameAt(text));
        text.remove_prefix(table.size());
        if (!text.starts_with(addColumn)) continue;
        text.remove_prefix(addColumn.size());
        const std::string_view name = nameAt(text);
        for (auto& [known, columns] : tables_) {
            if (known == table) columns.emplace(text::lower(name), name);
        }
    }
}

/// The schema's files have one column a line, with its name in front; "primary key (" begins a line as well.
void ColumnNames::readTable(std::string_view definition) {
    Columns columns;
    const std::string table = text::lower(nameAt(definition));
    for (std::size_t end = definition.find('\n'); end != std::string_view::npos;
         end = definition.find('\n')) {
        definition.remove_prefix(end + 1);
        const std::string_view name = nameAt(withoutIndent(definition));
        if (!name.empty() && name != "primary") columns.emplace(text::lower(name), name);
    }
    tables_.emplace_back(table, std::move(columns));
}

std::string ColumnNames::spelled(std::string_view column, std::string_view statement) const {
    const auto words = wordsOf(statement);
    if (const auto alias = aliasOf(column, words); !alias.empty()) return std::string(alias);
    const std::string key = text::lower(column);
    std::string anywhere(column);
    for (const auto& [table, columns] : tables_) {
        const auto found = columns.find(key);
        if (found == columns.end()) continue;
        anywhere = found->second;
        const auto isTable = [&name = table](std::string_view word) { return text::equals(word, name); };
        if (std::any_of(words.begin(), words.end(), isTable)) return found->second;
    }
    return anywhere;
}

}  // namespace torvex::cli
