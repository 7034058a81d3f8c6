#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvex {

/// Names and values in the order in which they came. Names compare ignoring case.
using NamedValues = std::vector<std::pair<std::string, std::string>>;

/// What was asked of a request. Two requests of which all that was asked gives the same are the same to whoever asked.
struct RequestQuestion {
    enum class Kind { Item, Query, WholeQuery, Variable, Other };
    /// What is asked of a value, where the value itself says more than anybody wants to know.
    using Reduction = std::string (*)(const std::string& value);

    Kind kind = Kind::Other;
    std::string name{};
    Reduction reduction = nullptr;

    bool operator==(const RequestQuestion&) const = default;
};
using RequestQuestions = std::vector<RequestQuestion>;

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
    const std::string& queryString() const {
        note(RequestQuestion::Kind::WholeQuery);
        return queryString_;
    }
    /// A query value, decoded; one that is given several times is joined with ", ". "" when it isn't there.
    std::string queryString(std::string_view name) const;
    /// All query items, decoded.
    const NamedValues& queryItems() const {
        note(RequestQuestion::Kind::WholeQuery);
        return query_;
    }
    std::string formField(std::string_view name) const;
    bool hasFormField(std::string_view name) const;
    /// What was sent as it stands, where the address takes something else than forms; "" for forms.
    const std::string& body() const {
        note(RequestQuestion::Kind::Other);
        return body_;
    }
    /// "http_host", "remote_addr", "https" ("on" or "off"), ...; "" when it isn't there.
    std::string serverVariable(std::string_view name) const;
    /// What a server variable comes down to.
    std::string reduced(std::string_view variable, RequestQuestion::Reduction reduction) const;
    void setServerVariable(std::string_view name, std::string value);

    /// From now on all that is asked is noted, each question once; they must live as long as the request is asked.
    void noteQuestions(RequestQuestions& questions) { questions_ = &questions; }

  private:
    void note(RequestQuestion::Kind kind, std::string_view name = {},
              RequestQuestion::Reduction reduction = nullptr) const;
    std::string variable(std::string_view name) const;

    RequestQuestions* questions_ = nullptr;  ///< null: nobody wants to know
    std::string queryString_;
    NamedValues query_;
    NamedValues form_;
    NamedValues serverVariables_;
    std::string body_;
};

/// Splits and decodes "a=1&b=2". Broken escapes stay as they stand; malformed UTF-8 becomes U+FFFD.
NamedValues parseQuery(std::string_view queryString);

}  // namespace torvex
