#include "host/http/RequestAnswers.h"

#include <algorithm>

#include "host/http/Exchange.h"
#include "host/http/RequestConversion.h"
#include "platform/text/Text.h"

namespace torvex {

std::string RequestAnswers::to(const RequestQuestion& question) {
    using Kind = RequestQuestion::Kind;
    switch (question.kind) {
        case Kind::Item:
            return isInQuery(question.name) ? "?" + query().queryString(question.name)
                                            : variable(question.name);
        case Kind::Query:
            return query().queryString(question.name);
        case Kind::WholeQuery:
            return std::string(exchange_.target.query);
        case Kind::Variable:
            return question.reduction ? question.reduction(variable(question.name)) : variable(question.name);
        case Kind::Other:
            return {};
    }
    return {};
}

const Request& RequestAnswers::query() {
    if (!query_) query_.emplace(std::string(exchange_.target.query), NamedValues(), NamedValues());
    return *query_;
}

bool RequestAnswers::isInQuery(std::string_view name) {
    return std::ranges::any_of(query().queryItems(),
                               [&](const auto& item) { return text::equals(item.first, name); });
}

std::string RequestAnswers::variable(std::string_view name) const {
    return serverVariable(exchange_, name);
}

}  // namespace torvex
