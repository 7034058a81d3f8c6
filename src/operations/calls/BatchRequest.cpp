#include "operations/calls/BatchRequest.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "platform/Errors.h"

namespace torvex::operations {

namespace {

namespace json = boost::json;

std::string quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

[[noreturn]] void refuse(const std::string& where, const std::string& needed) {
    throw Error(where + " must be " + needed);
}

std::string textOf(const json::value& given, const std::string& where) {
    if (!given.is_string()) refuse(where, "a text");
    return std::string(given.get_string());
}

const json::object& objectOf(const json::value& given, const std::string& where) {
    if (!given.is_object()) refuse(where, "an object");
    return given.get_object();
}

Value valueOf(const json::value& given, const std::string& where) {
    if (given.is_null()) return {};
    if (given.is_bool()) return given.get_bool();
    if (given.is_number()) return given.to_number<double>();
    if (given.is_string()) return std::string_view(given.get_string());
    refuse(where, "null, true, false, a number or a text");
}

GivenValues valuesOf(const json::value& given, const std::string& where) {
    GivenValues values;
    for (const auto& [name, value] : objectOf(given, where)) {
        values.emplace_back(name, valueOf(value, where + ": " + quoted(name)));
    }
    return values;
}

/// Form fields and server variables are texts; a list stands for a field that is sent several times.
NamedValues textsOf(const json::value& given, const std::string& where) {
    NamedValues texts;
    for (const auto& [name, value] : objectOf(given, where)) {
        const std::string place = where + ": " + quoted(name);
        if (!value.is_array()) {
            texts.emplace_back(name, valueOf(value, place).toText());
            continue;
        }
        for (const auto& item : value.get_array()) texts.emplace_back(name, valueOf(item, place).toText());
    }
    return texts;
}

/// A misspelt field would otherwise be passed over in silence.
void allowOnly(const json::object& given, std::initializer_list<std::string_view> known,
               const std::string& where) {
    for (const auto& [name, value] : given) {
        if (std::find(known.begin(), known.end(), std::string_view(name)) != known.end()) continue;
        std::string names;
        for (const auto one : known) names.append(names.empty() ? "" : ", ").append(one);
        throw Error(where + " has no field " + quoted(name) + "; the fields are " + names);
    }
}

std::string fieldOf(const json::object& given, std::string_view name, const std::string& where) {
    const auto* value = given.if_contains(name);
    if (!value) throw Error(where + " has no field " + quoted(name));
    return textOf(*value, where + ": " + quoted(name));
}

Step operationStep(const json::object& given, const std::string& where) {
    allowOnly(given, {"on", "do", "with"}, where);
    Call step{fieldOf(given, "on", where), fieldOf(given, "do", where), {}};
    if (const auto* with = given.if_contains("with")) step.arguments = valuesOf(*with, where + ": \"with\"");
    return step;
}

Step setStep(const json::object& given, const std::string& where) {
    allowOnly(given, {"on", "set", "to"}, where);
    const auto* value = given.if_contains("to");
    if (!value) throw Error(where + " has no field \"to\"");
    return PropertyWrite{fieldOf(given, "on", where), fieldOf(given, "set", where),
                         valueOf(*value, where + ": \"to\"")};
}

Step stepOf(const json::value& value, const std::string& where) {
    const auto& given = objectOf(value, where);
    if (given.contains("do")) return operationStep(given, where);
    if (given.contains("set")) return setStep(given, where);
    if (given.contains("get")) {
        allowOnly(given, {"on", "get"}, where);
        return PropertyRead{fieldOf(given, "on", where), fieldOf(given, "get", where)};
    }
    if (given.contains("session")) {
        allowOnly(given, {"session"}, where);
        return SessionRead{fieldOf(given, "session", where)};
    }
    if (given.contains("application")) {
        allowOnly(given, {"application"}, where);
        return ApplicationRead{fieldOf(given, "application", where)};
    }
    throw Error(where + R"( must have one of "do", "get", "set", "session", "application")");
}

std::vector<Step> stepsOf(const json::value& given) {
    if (!given.is_array()) refuse("\"calls\"", "a list");
    std::vector<Step> steps;
    for (const auto& one : given.get_array())
        steps.push_back(stepOf(one, "call " + std::to_string(steps.size())));
    return steps;
}

/// A number serves as a name too.
std::string nameOf(const json::value& given, const std::string& where) {
    if (!given.is_string() && !given.is_number()) refuse(where, "a text");
    return valueOf(given, where).toText();
}

DateTime momentOf(const json::value& given) {
    DateTime moment;
    if (!parseIso(textOf(given, "\"now\""), moment)) refuse("\"now\"", "a moment like 2026-06-15T12:00:00");
    return moment;
}

void readVisit(const json::value& value, BatchRequest& request) {
    const auto& given = objectOf(value, "\"request\"");
    allowOnly(given, {"query", "form", "server"}, "\"request\"");
    if (const auto* query = given.if_contains("query")) request.query = textOf(*query, "\"query\"");
    if (const auto* form = given.if_contains("form")) request.form = textsOf(*form, "\"form\"");
    if (const auto* server = given.if_contains("server"))
        request.serverVariables = textsOf(*server, "\"server\"");
}

json::value parsed(std::string_view line) {
    json::error_code failure;
    auto value = json::parse(line, failure);
    if (failure) throw Error("the line is not JSON: " + failure.message());
    return value;
}

}  // namespace

BatchRequest parseBatchRequest(std::string_view line) {
    const auto whole = parsed(line);
    const auto& given = objectOf(whole, "the line");
    allowOnly(given, {"now", "visitor", "login", "session", "application", "request", "calls"}, "the line");
    BatchRequest request;
    if (const auto* now = given.if_contains("now")) request.now = momentOf(*now);
    if (const auto* visitor = given.if_contains("visitor")) request.visitor = nameOf(*visitor, "\"visitor\"");
    if (const auto* login = given.if_contains("login")) request.login = textOf(*login, "\"login\"");
    if (const auto* values = given.if_contains("session")) request.session = valuesOf(*values, "\"session\"");
    if (const auto* values = given.if_contains("application")) {
        request.application = valuesOf(*values, "\"application\"");
    }
    if (const auto* visit = given.if_contains("request")) readVisit(*visit, request);
    if (const auto* calls = given.if_contains("calls")) request.steps = stepsOf(*calls);
    return request;
}

}  // namespace torvex::operations
