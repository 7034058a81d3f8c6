#include "platform/Request.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

namespace {

std::string decoded(std::string_view part) {
    return text::toValidUtf8(text::urlDecode(part));
}

bool has(const NamedValues& values, std::string_view name) {
    return std::any_of(values.begin(), values.end(),
                       [name](const auto& entry) { return text::equals(entry.first, name); });
}

/// A name that was sent several times reads as one list.
std::string joined(const NamedValues& values, std::string_view name) {
    std::string result;
    bool found = false;
    for (const auto& [key, value] : values) {
        if (!text::equals(key, name)) continue;
        if (found) result += ", ";
        result += value;
        found = true;
    }
    return result;
}

}  // namespace

NamedValues parseQuery(std::string_view queryString) {
    NamedValues items;
    while (!queryString.empty()) {
        const std::size_t end = std::min(queryString.find('&'), queryString.size());
        const std::string_view item = queryString.substr(0, end);
        queryString.remove_prefix(std::min(end + 1, queryString.size()));
        if (item.empty()) continue;
        const std::size_t equals = std::min(item.find('='), item.size());
        items.emplace_back(decoded(item.substr(0, equals)),
                           decoded(item.substr(std::min(equals + 1, item.size()))));
    }
    return items;
}

Request::Request(std::string queryString, NamedValues form, NamedValues serverVariables, std::string body)
    : queryString_(std::move(queryString)),
      query_(parseQuery(queryString_)),
      form_(std::move(form)),
      serverVariables_(std::move(serverVariables)),
      body_(std::move(body)) {}

std::string Request::item(std::string_view name) const {
    note(RequestQuestion::Kind::Item, name);
    if (has(query_, name)) return joined(query_, name);
    if (has(form_, name)) return joined(form_, name);
    return variable(name);
}

std::string Request::queryString(std::string_view name) const {
    note(RequestQuestion::Kind::Query, name);
    return joined(query_, name);
}

std::string Request::formField(std::string_view name) const {
    note(RequestQuestion::Kind::Other);
    return joined(form_, name);
}

bool Request::hasFormField(std::string_view name) const {
    note(RequestQuestion::Kind::Other);
    return has(form_, name);
}

std::string Request::serverVariable(std::string_view name) const {
    note(RequestQuestion::Kind::Variable, name);
    return variable(name);
}

std::string Request::reduced(std::string_view name, RequestQuestion::Reduction reduction) const {
    note(RequestQuestion::Kind::Variable, name, reduction);
    return reduction(variable(name));
}

std::string Request::variable(std::string_view name) const {
    const auto found = std::find_if(serverVariables_.begin(), serverVariables_.end(),
                                    [name](const auto& entry) { return text::equals(entry.first, name); });
    return found == serverVariables_.end() ? std::string() : found->second;
}

void Request::note(RequestQuestion::Kind kind, std::string_view name,
                   RequestQuestion::Reduction reduction) const {
    if (!questions_) return;
    RequestQuestion question{kind, text::lower(name), reduction};
    if (std::ranges::find(*questions_, question) == questions_->end())
        questions_->push_back(std::move(question));
}

void Request::setServerVariable(std::string_view name, std::string value) {
    for (auto& entry : serverVariables_) {
        if (!text::equals(entry.first, name)) continue;
        entry.second = std::move(value);
        return;
    }
    serverVariables_.emplace_back(name, std::move(value));
}

}  // namespace torvex
