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

bool isSpecial(char c) {
    return (c >= 33 && c <= 47) || (c >= 58 && c <= 63) || (c >= 123 && c <= 126);
}

}  // namespace

NamedValues parameters(const NamedValues& visitorQuery, std::string_view column) {
    NamedValues all = joinedByName(visitorQuery);
    while (!column.empty()) {
        const std::size_t end = std::min(column.find(','), column.size());
        addItem(all, column.substr(0, end));
        column.remove_prefix(std::min(end + 1, column.size()));
    }
    return all;
}

std::string convertSpecial(std::string_view value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string converted;
    converted.reserve(value.size());
    for (const char c : value) {
        if (!isSpecial(c)) {
            converted += c;
            continue;
        }
        const auto code = static_cast<unsigned char>(c);
        converted.append({'%', digits[code / 16], digits[code % 16]});
    }
    return converted;
}

std::string queryText(const NamedValues& parameters) {
    std::string query;
    for (const auto& [name, value] : parameters) {
        if (name.empty()) continue;
        if (!query.empty()) query += '&';
        query.append(name).append("=").append(convertSpecial(value));
    }
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
