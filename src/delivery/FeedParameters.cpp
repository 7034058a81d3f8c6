#include "delivery/FeedParameters.h"

#include <algorithm>
#include <unordered_map>

#include "platform/text/Text.h"

namespace torvex::feeds {

namespace {

NamedValues joinedByName(const NamedValues& query) {
    NamedValues joined;
    std::unordered_map<std::string, std::size_t> places;
    for (const auto& [name, value] : query) {
        const auto [place, isNew] = places.try_emplace(text::lower(name), joined.size());
        if (isNew) {
            joined.emplace_back(name, value);
        } else {
            joined[place->second].second.append(", ").append(value);
        }
    }
    for (auto& entry : joined) entry.second = text::trim(entry.second);
    return joined;
}

void addItem(NamedValues& parameters, std::string_view item) {
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos) return;
    parameters.emplace_back(text::trim(item.substr(0, equals)), text::trim(item.substr(equals + 1)));
}

NamedValues itemsOf(std::string_view column) {
    NamedValues items;
    while (!column.empty()) {
        const std::size_t end = std::min(column.find(','), column.size());
        addItem(items, column.substr(0, end));
        column.remove_prefix(std::min(end + 1, column.size()));
    }
    return items;
}

bool isSpecial(char c) {
    return (c >= 33 && c <= 47) || (c >= 58 && c <= 63) || (c >= 123 && c <= 126);
}

/// What would end a name, begin another parameter, or be read as something encoded.
bool endsName(char c) {
    return std::string_view("&=;#+%").find(c) != std::string_view::npos;
}

std::string encoded(std::string_view text, bool (*mustBe)(char)) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (mustBe(c)) {
            result.append({'%', digits[code / 16], digits[code % 16]});
        } else {
            result += c;
        }
    }
    return result;
}

void addParameter(std::string& query, std::string_view name, std::string_view value) {
    if (name.empty()) return;
    if (!query.empty()) query += '&';
    query.append(name).append("=").append(convertSpecial(value));
}

}  // namespace

NamedValues parameters(const NamedValues& visitorQuery, std::string_view column) {
    NamedValues all = joinedByName(visitorQuery);
    const NamedValues own = itemsOf(column);
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

std::string convertSpecial(std::string_view value) {
    return encoded(value, isSpecial);
}

std::string queryText(const NamedValues& visitorQuery, std::string_view column) {
    std::string query;
    for (const auto& [name, value] : joinedByName(visitorQuery)) {
        addParameter(query, encoded(name, endsName), value);
    }
    for (const auto& [name, value] : itemsOf(column)) addParameter(query, name, value);
    std::replace(query.begin(), query.end(), ' ', '+');
    return query;
}

std::string withQuery(std::string address, std::string_view queryText) {
    if (queryText.empty()) return address;
    if (address.find('?') == std::string::npos) {
        address += '?';
    } else if (address.back() != '?') {
        address += '&';
    }
    return address.append(queryText);
}

}  // namespace torvex::feeds
