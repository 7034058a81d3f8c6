#include "host/http/RequestConversion.h"

#include <algorithm>
#include <array>

#include "host/http/Exchange.h"
#include "pages/PageRoute.h"

namespace torvex {

namespace {

std::string variableName(std::string_view field) {
    std::string name = "http_";
    for (const char c : field) name += c == '-' ? '_' : ascii::lower(c);
    return name;
}

void addField(NamedValues& variables, std::string_view field, std::string_view value) {
    if (field.find('_') != std::string_view::npos) return;
    std::string name = variableName(field);
    for (auto& [known, text] : variables) {
        if (known != name) continue;
        text.append(name == "http_cookie" ? "; " : ", ").append(value);
        return;
    }
    variables.emplace_back(std::move(name), value);
}

using Give = std::string (*)(const Exchange&);
struct OwnVariable {
    std::string_view name;
    Give give;
};

/// Those that are no header fields; the host is one that is read in its own way.
constexpr std::array<OwnVariable, 11> ownVariables{{
    {"http_host", [](const Exchange& one) { return std::string(one.host); }},
    {"https", [](const Exchange& one) { return std::string(one.isTls ? "on" : "off"); }},
    {"script_name", [](const Exchange& one) { return std::string(one.target.path); }},
    {"remote_addr", [](const Exchange& one) { return one.remoteAddress; }},
    {"request_method", [](const Exchange& one) { return std::string(one.head().methodText); }},
    {"query_string", [](const Exchange& one) { return std::string(one.target.query); }},
    {"server_name", [](const Exchange& one) { return std::string(hostName(one.host)); }},
    {"server_port", [](const Exchange& one) { return std::to_string(one.localPort); }},
    {"server_protocol", [](const Exchange& one) { return std::string(one.head().protocol()); }},
    {"content_type", [](const Exchange& one) { return std::string(one.head().field("Content-Type")); }},
    {"content_length", [](const Exchange& one) { return std::to_string(one.body().size()); }},
}};

/// The fields but for the host's, as variables.
void addFields(NamedValues& variables, const RequestHead& head, std::string_view only = {}) {
    for (const auto& [field, value] : head.fields) {
        if (ascii::equals(field, "Host")) continue;
        if (only.empty() || variableName(field) == only) addField(variables, field, value);
    }
}

NamedValues serverVariables(const Exchange& exchange) {
    NamedValues variables;
    variables.reserve(exchange.head().fields.size() + ownVariables.size() + 1);
    addFields(variables, exchange.head());
    for (const OwnVariable& own : ownVariables) variables.emplace_back(own.name, own.give(exchange));
    if (exchange.sink) variables.emplace_back("body_receipt", exchange.sink->receipt());
    return variables;
}

bool takesForms(const Exchange& exchange) {
    return !exchange.page || exchange.page->bodyTypes.empty();
}

NamedValues formOf(const Exchange& exchange) {
    return hasForm(exchange) ? parseQuery(exchange.body()) : NamedValues();
}

}  // namespace

bool isMediaType(std::string_view contentType, std::string_view type) {
    return ascii::equals(ascii::trimmed(contentType.substr(0, contentType.find(';'))), type);
}

bool hasForm(const Exchange& exchange) {
    return takesForms(exchange) && isFormType(exchange.head().field("Content-Type"));
}

bool isBodyType(const Exchange& exchange) {
    const std::string_view type = exchange.head().field("Content-Type");
    if (takesForms(exchange)) return isFormType(type);
    const auto& known = exchange.page->bodyTypes;
    return std::any_of(known.begin(), known.end(),
                       [type](const std::string& one) { return isMediaType(type, one); });
}

bool isFormType(std::string_view contentType) {
    return isMediaType(contentType, "application/x-www-form-urlencoded");
}

std::size_t formFields(std::string_view body) {
    if (body.ends_with('&')) body.remove_suffix(1);
    if (body.empty()) return 0;
    return 1 + static_cast<std::size_t>(std::count(body.begin(), body.end(), '&'));
}

Request toRequest(const Exchange& exchange) {
    return Request(std::string(exchange.target.query), formOf(exchange), serverVariables(exchange),
                   takesForms(exchange) ? std::string() : exchange.body());
}

std::string serverVariable(const Exchange& exchange, std::string_view name) {
    const auto own = std::ranges::find_if(
        ownVariables, [&](const OwnVariable& one) { return ascii::equals(one.name, name); });
    if (own != ownVariables.end()) return own->give(exchange);
    NamedValues variables;
    addFields(variables, exchange.head(), ascii::lowered(name));
    return variables.empty() ? std::string() : std::move(variables.front().second);
}

std::string_view cookie(std::string_view cookieField, std::string_view name) {
    while (!cookieField.empty()) {
        const std::size_t end = std::min(cookieField.find(';'), cookieField.size());
        const std::string_view pair = ascii::trimmed(cookieField.substr(0, end));
        cookieField.remove_prefix(std::min(end + 1, cookieField.size()));
        if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=')
            return pair.substr(name.size() + 1);
    }
    return {};
}

}  // namespace torvex
