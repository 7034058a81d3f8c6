#include <algorithm>
#include <optional>

#include "operations/register/NeedLabels.h"
#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/Json.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::ArgumentError;
using operations::Effect;
using operations::GivenValues;
using operations::Operation;

struct Asked {
    std::string className;
    std::string operation;
};

/// "CLASS/OPERATION" of the address; nothing for any other form.
std::optional<Asked> askedBy(const Request& request) {
    const std::string path = request.serverVariable("script_name");
    const std::string_view rest = std::string_view(path).substr(std::min(folder.size(), path.size()));
    const std::size_t slash = rest.find('/');
    if (slash == std::string_view::npos || rest.find('/', slash + 1) != std::string_view::npos) return {};
    return Asked{std::string(rest.substr(0, slash)), std::string(rest.substr(slash + 1))};
}

bool isReading(const Request& request) {
    const std::string method = request.serverVariable("request_method");
    return method == "GET" || method == "HEAD";
}

std::string_view methodsOf(const Operation& operation) {
    return operation.effect == Effect::Reads ? "GET, HEAD, POST" : "POST";
}

bool takes(const Operation& operation, const Request& request) {
    if (isReading(request)) return operation.effect == Effect::Reads;
    return request.serverVariable("request_method") == "POST";
}

GivenValues valuesOf(const NamedValues& items) {
    GivenValues values;
    for (const auto& [name, value] : items) values.emplace_back(name, argumentOf(json::string(value), name));
    return values;
}

bool hasTwice(const NamedValues& items) {
    std::vector<std::string_view> names;
    for (const auto& [name, value] : items) names.push_back(name);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

/// Whether what was sent is text in which each name stands once.
bool canBeRead(const Request& request) {
    return text::isValidUtf8(text::urlDecode(request.queryString())) && !hasTwice(request.queryItems());
}

/// `read` gives the arguments.
template <typename Read>
Reply run(Calls& calls, const Asked& asked, const Operation& operation, Read&& read) {
    GivenValues values;
    try {
        values = read();
    } catch (const ArgumentError& error) {
        return calls.notFitting(operation, error);
    }
    return calls.call(asked.className, asked.operation, values);
}

Reply replyToQuery(const HostContext& host, Calls& calls, const Asked& asked, const Operation& operation) {
    if (!canBeRead(host.request)) return calls.problem(kind::notUnderstood);
    return run(calls, asked, operation, [&host] { return valuesOf(host.request.queryItems()); });
}

Reply replyToBody(const HostContext& host, Calls& calls, const Asked& asked, const Operation& operation) {
    const auto read = readJsonObject(host.request.body());
    const auto* fault = std::get_if<JsonFault>(&read);
    if (fault && *fault == JsonFault::NotJson) return calls.problem(kind::notUnderstood);
    if (!isFromOwnDocument(host)) return calls.foreign(operation);
    if (fault)
        return calls.notFitting(operation,
                                ArgumentError("a number is too large", "", operations::need::smallerNumber));
    return run(calls, asked, operation, [&read] { return argumentsOf(std::get<json::object>(read)); });
}

void answerReply(Response& response, const Calls& calls, const Asked& asked, Reply reply) {
    if (auto* problem = std::get_if<Problem>(&reply)) {
        problem->operation = calls.nameOf(asked.className, asked.operation);
        return answer(response, *problem);
    }
    answer(response, json::object{{"result", std::move(std::get<json::value>(reply))}});
}

}  // namespace

void answerCall(HostContext& host, Api& api) {
    const Shared shared = api.shared();
    Calls calls(shared, host, languageOf(host, api.words));
    const auto asked = askedBy(host.request);
    const Operation* operation = asked ? calls.find(asked->className, asked->operation) : nullptr;
    if (!operation) return answer(host.response, calls.problem(kind::notThere));
    if (!takes(*operation, host.request)) {
        Problem problem = calls.problem(kind::otherMethod);
        problem.allowed = methodsOf(*operation);
        return answer(host.response, problem);
    }
    const auto reply = isReading(host.request) ? replyToQuery : replyToBody;
    answerReply(host.response, calls, *asked, reply(host, calls, *asked, *operation));
}

}  // namespace torvex::api
