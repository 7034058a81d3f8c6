#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvex {

/// Names and values in the order in which they came. Names compare ignoring case.
using NamedValues = std::vector<std::pair<std::string, std::string>>;

/// What a visitor sent. Plain data, filled once and then read by one request.
class Request {
  public:
    Request() = default;
    /// `queryString` as it stood behind the "?", still encoded.
    /// `body` is what came in place of a form.
    Request(std::string queryString, NamedValues form, NamedValues serverVariables, std::string body = {});

    /// The first of query, form and server variables that has the name; "" when none has.
    std::string item(std::string_view name) const;
    /// The whole query, still encoded.
    const std::string& queryString() const { return queryString_; }
    /// A query value, decoded; one that is given several times is joined with ", ". "" when it isn't there.
    std::string queryString(std::string_view name) const;
    /// All query items, decoded.
    const NamedValues& queryItems() const { return query_; }
    std::string formField(std::string_view name) const;
    bool hasFormField(std::string_view name) const;
    /// What was sent as it stands, where the address takes something else than forms; "" for forms.
    const std::string& body() const { return body_; }
    /// "http_host", "remote_addr", "https" ("on" or "off"), ...; "" when it isn't there.
    std::string serverVariable(std::string_view name) const;
    void setServerVariable(std::string_view name, std::string value);

  private:
    std::string queryString_;
    NamedValues query_;
    NamedValues form_;
    NamedValues serverVariables_;
    std::string body_;
};

/// Splits and decodes "a=1&b=2". Broken escapes stay as they stand; malformed UTF-8 becomes U+FFFD.
NamedValues parseQuery(std::string_view queryString);

}  // namespace torvex
