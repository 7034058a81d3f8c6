#include "host/http/RequestConversion.h"

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

NamedValues serverVariables(const Exchange& exchange) {
    const RequestHead& head = exchange.head();
    NamedValues variables;
    variables.reserve(head.fields.size() + 12);
    for (const auto& [field, value] : head.fields)
        if (!ascii::equals(field, "Host")) addField(variables, field, value);
    variables.emplace_back("http_host", exchange.host);
    variables.emplace_back("https", exchange.isTls ? "on" : "off");
    variables.emplace_back("script_name", exchange.target.path);
    variables.emplace_back("remote_addr", exchange.remoteAddress);
    variables.emplace_back("request_method", head.methodText);
    variables.emplace_back("query_string", exchange.target.query);
    variables.emplace_back("server_name", hostName(exchange.host));
    variables.emplace_back("server_port", std::to_string(exchange.localPort));
    variables.emplace_back("server_protocol", head.protocol());
    variables.emplace_back("content_type", head.field("Content-Type"));
    variables.emplace_back("content_length", std::to_string(exchange.body().size()));
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
