#include "pages/api/Problem.h"

#include <boost/json/serialize.hpp>

#include "platform/text/Text.h"

namespace torvex::api {

namespace {

namespace json = boost::json;

constexpr std::string_view version = "1";

void addUnlessEmpty(json::object& out, std::string_view key, const std::string& content) {
    if (!content.empty()) out[key] = json::string(text::toValidUtf8(content));
}

void write(Response& response, std::string type, const json::value& content) {
    response.contentType = std::move(type);
    response.cacheControl = "no-store";
    response.binaryWrite(json::serialize(content));
    addFields(response);
}

}  // namespace

Problem Problem::of(const ProblemKind& kind) {
    return {.status = kind.status, .name = std::string(kind.name), .title = std::string(kind.title)};
}

json::object toJson(const Problem& problem) {
    json::object out{{"type", "/torvex/api/problems/" + problem.name}};
    addUnlessEmpty(out, "title", problem.title);
    out["status"] = problem.status;
    addUnlessEmpty(out, "detail", problem.detail);
    addUnlessEmpty(out, "operation", problem.operation);
    for (const auto& [key, value] : problem.more) out[key] = value;
    return out;
}

void answer(Response& response, const Problem& problem) {
    response.status = problem.status;
    write(response, "application/problem+json", toJson(problem));
    if (problem.wait) response.addHeader("Retry-After", std::to_string(problem.wait->count()));
    if (!problem.allowed.empty()) response.addHeader("Allow", problem.allowed);
}

void answer(Response& response, const json::value& content) {
    write(response, "application/json", content);
}

void addFields(Response& response) {
    response.addHeader("Torvex-Api", std::string(version));
}

}  // namespace torvex::api
