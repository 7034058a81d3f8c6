#include "platform/db/PostgresStatement.h"

#include <fmt/format.h>
#include <iterator>

#include "platform/db/Binding.h"

namespace torvex::db {

namespace {

/// From the server's catalogue, where they are fixed.
constexpr Oid typeInt8 = 20;
constexpr Oid typeFloat8 = 701;
/// The server takes the type from where the value stands: so a text meets a `citext` column as one.
constexpr Oid typeOfPlace = 0;

constexpr std::size_t noText = static_cast<std::size_t>(-1);

/// Where a quoted text, a quoted name or a comment that begins at `at` ends; `at` when none begins there.
std::size_t skipQuoted(std::string_view statement, std::size_t at) {
    const char c = statement[at];
    const bool comment = statement.substr(at, 2) == "--";
    if (c != '\'' && c != '"' && !comment) return at;
    const std::size_t end = statement.find(comment ? '\n' : c, at + 1);
    return end == std::string_view::npos ? statement.size() : end + 1;
}

}  // namespace

bool isFine(const PGresult* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY;
}

NumberedStatement numberParameters(std::string_view statement) {
    NumberedStatement numbered;
    numbered.text.reserve(statement.size() + 16);
    for (std::size_t at = 0; at < statement.size();) {
        const std::size_t end = skipQuoted(statement, at);
        if (end != at) {
            numbered.text.append(statement.substr(at, end - at));
            at = end;
        } else if (statement[at++] == '?') {
            fmt::format_to(std::back_inserter(numbered.text), "${}", ++numbered.parameters);
        } else {
            numbered.text.push_back(statement[at - 1]);
        }
    }
    return numbered;
}

PostgresParameters::PostgresParameters(Parameters parameters) {
    for (const Parameter& parameter : parameters) add(parameter);
    for (const std::size_t position : positions_) {
        values_.push_back(position == noText ? nullptr : texts_.data() + position);
    }
}

void PostgresParameters::add(const Parameter& parameter) {
    positions_.push_back(texts_.size());
    if (const auto* text = std::get_if<std::string_view>(&parameter)) {
        appendText(texts_, *text);
        endValue(typeOfPlace, 't');
    } else if (const auto* moment = std::get_if<DateTime>(&parameter)) {
        appendMoment(texts_, *moment);
        endValue(typeOfPlace, 't');
    } else if (const auto whole = wholeNumber(parameter)) {
        fmt::format_to(std::back_inserter(texts_), "{}", *whole);
        endValue(typeInt8, 'i');
    } else if (const auto* number = std::get_if<double>(&parameter)) {
        fmt::format_to(std::back_inserter(texts_), "{}", *number);
        endValue(typeFloat8, 'f');
    } else {
        positions_.back() = noText;
        endValue(typeOfPlace, 't');
    }
}

void PostgresParameters::endValue(Oid type, char letter) {
    texts_.push_back('\0');
    types_.push_back(type);
    signature_.push_back(letter);
}

/// A text ends with its NUL; null is none.
std::string PostgresParameters::key() const {
    std::string key = signature_;
    for (const std::size_t position : positions_) key.push_back(position == noText ? '0' : '1');
    return key + texts_;
}

PostgresNames::Name PostgresNames::find(std::string_view statement, const std::string& signature) {
    const auto found = names_.find(statement);
    if (found != names_.end()) {
        for (const Variant& variant : found->second) {
            if (variant.signature == signature) return {variant.name, true};
        }
    }
    return {fmt::format("torvex_{}", ++lastNumber_), false};
}

void PostgresNames::keep(std::string_view statement, const std::string& signature, const std::string& name) {
    names_[std::string(statement)].push_back({signature, name});
    ++count_;
}

void PostgresNames::clear() {
    names_.clear();
    count_ = 0;
}

}  // namespace torvex::db
