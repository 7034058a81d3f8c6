#include "platform/db/TableStates.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <string>
#include <unordered_map>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

class TableNumbers {
  public:
    std::size_t of(std::string_view name) {
        const std::scoped_lock guard(mutex_);
        const std::size_t next = numbers_.size();
        if (next < mostTables - 1) return numbers_.try_emplace(text::upper(name), next).first->second;
        const auto known = numbers_.find(text::upper(name));
        return known == numbers_.end() ? mostTables - 1 : known->second;
    }

  private:
    std::mutex mutex_;
    std::unordered_map<std::string, std::size_t> numbers_;
};

bool isOfName(char c) {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// What a statement is made of that asks for nothing but numbers and nodes.
bool isOfNames(std::string_view word) {
    constexpr std::array<std::string_view, 12> words{"",   "select", "from", "where", "and",    "or",
                                                     "in", "order",  "by",   "asc",   "pageId", "nodeId"};
    if (!word.empty() && word.front() >= '0' && word.front() <= '9') return true;
    return std::ranges::any_of(words, [&](std::string_view one) { return text::equals(one, word); });
}

}  // namespace

std::size_t tableNumber(std::string_view name) {
    static TableNumbers numbers;
    return numbers.of(name);
}

std::size_t countedNumber(std::string_view table, std::string_view column) {
    const bool isName =
        text::equals(table, designs) && (text::equals(column, "pageId") || text::equals(column, "nodeId"));
    return tableNumber(isName ? namesOfDesigns : table);
}

TableSet tablesNamedIn(std::string_view statement) {
    constexpr std::string_view prefix = "TORVEX_";
    TableSet tables;
    bool hasNamesAlone = true;
    bool hasDesigns = false;
    for (std::size_t at = 0; at < statement.size();) {
        std::size_t end = at;
        while (end < statement.size() && isOfName(statement[end])) ++end;
        const std::string_view word = statement.substr(at, end - at);
        at = end + 1;
        const bool isDesigns = text::equals(word, designs);
        hasDesigns = hasDesigns || isDesigns;
        if (!isDesigns && text::startsWith(word, prefix)) tables.set(tableNumber(word));
        hasNamesAlone = hasNamesAlone && (isDesigns || isOfNames(word));
    }
    if (hasDesigns) tables.set(tableNumber(hasNamesAlone ? namesOfDesigns : designs));
    return tables;
}

SharedStates readStates(Rows rows) {
    const auto states = std::make_shared<TableStates>();
    while (rows.next())
        states->note(rows.text("tableName"), static_cast<std::int64_t>(rows.number("changes")));
    return states;
}

void TableStates::note(std::string_view table, std::int64_t changes) {
    const std::size_t number = tableNumber(table);
    if (number != mostTables - 1) changes_[number] = changes;
}

void TableStates::add(std::string_view table) {
    std::int64_t& changes = changes_[tableNumber(table)];
    if (changes != unknown) ++changes;
}

bool TableStates::agreesWith(const TableStates& other, const TableSet& tables) const {
    for (std::size_t number = 0; number < mostTables; ++number) {
        if (!tables.test(number)) continue;
        if (changes_[number] == unknown || changes_[number] != other.changes_[number]) return false;
    }
    return true;
}

}  // namespace torvex::db
