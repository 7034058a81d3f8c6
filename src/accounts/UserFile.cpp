#include "accounts/UserFile.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

#include "platform/DateTime.h"
#include "platform/db/Connection.h"
#include "platform/text/Csv.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectGroups =
    "select groupId, name from TORVEX_USERGROUPS where groupId > 1 and name is not null order by groupId "
    "desc";

constexpr std::array<std::string_view, 7> columns{"username",  "password", "firstname", "lastname",
                                                  "validFrom", "validTo",  "groups"};
constexpr char groupDivider = '|';

/// Where each column stands in the file's lines.
using Places = std::map<std::string_view, std::size_t>;

/// Thrown for what makes a line useless.
struct Bad {
    std::string reason;
};

std::string_view columnNamed(std::string_view name) {
    for (const std::string_view column : columns) {
        if (text::equals(column, text::trim(name))) return column;
    }
    throw Bad{fmt::format("there is no column \"{}\"; the columns are {}", name, fmt::join(columns, ", "))};
}

Places placesIn(const csv::Line& head) {
    Places places;
    for (std::size_t i = 0; i < head.cells.size(); ++i) {
        const std::string_view column = columnNamed(head.cells[i]);
        if (!places.emplace(column, i).second)
            throw Bad{fmt::format("the column {} stands there twice", column)};
    }
    if (!places.contains("username")) throw Bad{"the column username is missing"};
    return places;
}

void refuseControlCharacters(std::string_view cell) {
    const bool has = std::ranges::any_of(cell, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (has) throw Bad{"it holds a control character"};
}

std::string dayIn(std::string_view cell) {
    std::string day(text::trim(cell));
    if (day.size() == 10 && day[4] == '-' && day[7] == '-') std::erase(day, '-');
    if (!day.empty() && !isDate8(day)) throw Bad{fmt::format("\"{}\" is no day (20261231)", cell)};
    return day;
}

std::set<int> groupsIn(std::string_view cell, const GroupNames& groups) {
    std::set<int> numbers;
    while (!cell.empty()) {
        const std::size_t end = std::min(cell.find(groupDivider), cell.size());
        const std::string_view name = text::trim(cell.substr(0, end));
        cell.remove_prefix(std::min(end + 1, cell.size()));
        if (name.empty()) continue;
        const int number = groups.numberOf(name);
        if (number == 0) throw Bad{fmt::format("there is no group \"{}\"", name)};
        numbers.insert(number);
    }
    return numbers;
}

VisitorChange changeIn(const csv::Line& line, const Places& places, const GroupNames& groups) {
    if (line.cells.size() != places.size()) {
        throw Bad{fmt::format("it has {} cells, and the first line {}", line.cells.size(), places.size())};
    }
    for (const std::string& cell : line.cells) refuseControlCharacters(cell);
    const auto cellOf = [&](std::string_view column) {
        const auto place = places.find(column);
        return place == places.end() ? std::optional<std::string>() : line.cells[place->second];
    };
    const auto trimmed = [&](std::string_view column) {
        auto cell = cellOf(column);
        if (cell) cell = std::string(text::trim(*cell));
        return cell;
    };
    VisitorChange change;
    change.username = *trimmed("username");
    if (change.username.empty()) throw Bad{"it has no username"};
    change.password = cellOf("password");
    if (change.password && change.password->empty()) change.password.reset();
    change.firstname = trimmed("firstname");
    change.lastname = trimmed("lastname");
    if (const auto day = cellOf("validFrom")) change.validFrom = dayIn(*day);
    if (const auto day = cellOf("validTo")) change.validTo = dayIn(*day);
    if (const auto names = cellOf("groups")) change.groups = groupsIn(*names, groups);
    return change;
}

class Reader {
  public:
    explicit Reader(const GroupNames& groups) : groups_(groups) {}

    UserFile read(std::string_view text) {
        const csv::Table table = csv::read(text, csv::dividerOf(text));
        if (table.openQuote > 0) refuse(table.openQuote, "the quote is never closed");
        if (table.lines.empty() && file_.bad.empty()) refuse(1, "the file is empty");
        if (!table.lines.empty()) readLines(table.lines);
        std::ranges::sort(file_.bad, {}, &BadLine::number);
        return std::move(file_);
    }

  private:
    void readLines(const std::vector<csv::Line>& lines) {
        std::optional<Places> places;
        attempt(lines.front().number, [&] { places = placesIn(lines.front()); });
        if (!places) return;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            attempt(lines[i].number, [&] { take(lines[i].number, changeIn(lines[i], *places, groups_)); });
        }
    }

    void take(std::size_t number, VisitorChange change) {
        const auto [first, isNew] = seen_.emplace(text::lower(change.username), number);
        if (!isNew) throw Bad{fmt::format("the user stands in line {} already", first->second)};
        file_.users.push_back({number, std::move(change)});
    }

    template <typename Work>
    void attempt(std::size_t number, Work work) {
        try {
            work();
        } catch (const Bad& bad) {
            refuse(number, bad.reason);
        }
    }

    void refuse(std::size_t number, std::string reason) { file_.bad.push_back({number, std::move(reason)}); }

    const GroupNames& groups_;
    UserFile file_;
    std::map<std::string, std::size_t> seen_;
};

}  // namespace

GroupNames::GroupNames(db::Connection& connection) {
    auto rows = connection.query(selectGroups);
    while (rows.next()) {
        const int number = static_cast<int>(rows.number("groupId"));
        const std::string name(text::trim(rows.text("name")));
        names_[number] = name;
        // The lowest of several comes last and stays.
        numbers_[text::lower(name)] = number;
    }
}

int GroupNames::numberOf(std::string_view name) const {
    const auto found = numbers_.find(text::lowerTrim(name));
    return found == numbers_.end() ? 0 : found->second;
}

std::string GroupNames::namesOf(const std::set<int>& groups) const {
    std::string names;
    for (const int group : groups) {
        const auto found = names_.find(group);
        if (found == names_.end()) continue;
        if (!names.empty()) names += groupDivider;
        names += found->second;
    }
    return names;
}

UserFile readUserFile(std::string_view text, const GroupNames& groups) {
    return Reader(groups).read(text);
}

std::string userFileHead(bool withPasswords) {
    std::vector<std::string> names;
    for (const std::string_view column : columns) {
        if (withPasswords || column != "password") names.emplace_back(column);
    }
    return csv::write(names);
}

std::string userFileLine(const VisitorAccount& account, const GroupNames& groups, bool withPasswords) {
    std::vector<std::string> cells{account.username};
    // Nobody can tell a password that is kept as a hash, and an empty cell leaves it what it is.
    if (withPasswords) cells.push_back(account.passwordHash.empty() ? account.password : "");
    const std::initializer_list<std::string> others{account.firstname, account.lastname, account.validFrom,
                                                    account.validTo, groups.namesOf(account.groups)};
    cells.insert(cells.end(), others);
    return csv::write(cells);
}

}  // namespace torvex
