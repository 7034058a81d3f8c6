#include "pages/api/OpenApi.h"

#include <array>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "pages/api/BatchRequest.h"
#include "pages/api/Json.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::Argument;
using operations::ArgumentType;
using operations::ClassEntry;
using operations::ColumnType;
using operations::Effect;
using operations::Operation;
using operations::Right;

json::string text(std::string_view content) {
    return json::string(content);
}

json::object reference(std::string_view section, std::string_view name) {
    return {{"$ref", text("#/components/" + std::string(section) + '/' + std::string(name))}};
}

json::object jsonContent(json::object schema, std::string_view type = "application/json") {
    return json::object{{text(type), json::object{{"schema", std::move(schema)}}}};
}

/// What is converted to the argument's type; see Conversion.h. Null stands for "", 0 and false.
json::object schemaOf(ArgumentType type) {
    switch (type) {
        case ArgumentType::Text:
            return {{"type", json::array{"string", "number", "boolean", "null"}}};
        case ArgumentType::Integer:
            return {{"type", json::array{"integer", "string", "boolean", "null"}},
                    {"minimum", -32768},
                    {"maximum", 32767}};
        case ArgumentType::Boolean:
            return {{"type", json::array{"boolean", "number", "string", "null"}}};
        case ArgumentType::Date:
            return {{"type", "string"}, {"examples", json::array{"2026-06-15T12:00:00"}}};
        case ArgumentType::TextFormat:
            return {{"enum", json::array{-2, -1, 0}}};
        default:
            return {{"type", json::array{"number", "string", "boolean", "null"}}};
    }
}

json::object schemaOf(const Argument& argument) {
    json::object schema = schemaOf(argument.type);
    if (argument.defaultValue && !argument.defaultValue->isGrid())
        schema["default"] = jsonOf(*argument.defaultValue);
    return schema;
}

/// Whether callers may give it.
bool isGiven(const Operation& operation, const Argument& argument) {
    return !argument.withheld && !operation.isFilledByGate(argument);
}

json::object requestOf(const Operation& operation) {
    json::object properties;
    json::array required;
    for (const auto& argument : operation.arguments) {
        if (!isGiven(operation, argument)) continue;
        properties[argument.name] = schemaOf(argument);
        if (!argument.defaultValue) required.emplace_back(text(argument.name));
    }
    json::object schema{{"type", "object"}, {"properties", std::move(properties)}};
    if (!required.empty()) schema["required"] = std::move(required);
    return schema;
}

std::string_view cellType(ColumnType type) {
    switch (type) {
        case ColumnType::Number:
            return "number";
        case ColumnType::Boolean:
            return "boolean";
        default:
            return "string";
    }
}

json::object gridOf(const Operation& operation) {
    json::array cells;
    for (const auto& column : operation.columns)
        cells.push_back(json::object{{"title", text(column.name)},
                                     {"type", json::array{text(cellType(column.type)), "null"}}});
    const auto width = cells.size();
    json::object row{
        {"type", "array"}, {"prefixItems", std::move(cells)}, {"minItems", width}, {"maxItems", width}};
    return {
        {"allOf", json::array{reference("schemas", "Grid")}},
        {"properties", json::object{{"rows", json::object{{"type", "array"}, {"items", std::move(row)}}}}}};
}

json::object resultOf(const Operation& operation) {
    if (!operation.columns.empty()) return gridOf(operation);
    const std::string& kind = operation.result;
    if (kind == "text") return {{"type", "string"}};
    if (kind == "number" || kind == "integer") return {{"type", "number"}};
    if (kind == "boolean") return {{"type", "boolean"}};
    if (kind == "empty") return {{"type", "null"}};
    return {};
}

std::string codesOf(const Operation& operation) {
    std::string lines;
    for (const auto& code : operation.codes) {
        lines += "\n- `" + json::serialize(jsonOf(code.code)) + "` " + (code.isRefusal ? "(409) " : "") +
                 code.meaning;
    }
    return lines.empty() ? lines : "\n\nCodes:" + lines;
}

json::object responsesOf(const Operation& operation) {
    json::object answer{{"type", "object"},
                        {"properties", json::object{{"result", resultOf(operation)}}},
                        {"required", json::array{"result"}}};
    return {
        {"200", json::object{{"description", "What it gives."}, {"content", jsonContent(std::move(answer))}}},
        {"default", reference("responses", "Problem")}};
}

json::object commonOf(const ClassEntry& entry, const Operation& operation, std::string_view way) {
    json::object made{{"operationId", text(entry.name + '.' + operation.name + std::string(way))},
                      {"tags", json::array{text(entry.name)}},
                      {"summary", text(operation.summary)},
                      {"description", text("Effect: " + std::string(effectName(operation.effect)) + '.' +
                                           codesOf(operation))},
                      {"responses", responsesOf(operation)}};
    if (operation.right.kind == Right::Kind::Visitor) made["security"] = json::array{json::object{}};
    return made;
}

json::object postOf(const ClassEntry& entry, const Operation& operation) {
    json::object made = commonOf(entry, operation, "");
    made["parameters"] = json::array{reference("parameters", "Token")};
    made["requestBody"] = json::object{{"required", true}, {"content", jsonContent(requestOf(operation))}};
    return made;
}

json::object getOf(const ClassEntry& entry, const Operation& operation) {
    json::object made = commonOf(entry, operation, ".get");
    json::array parameters;
    for (const auto& argument : operation.arguments) {
        if (!isGiven(operation, argument)) continue;
        parameters.push_back(json::object{{"name", text(argument.name)},
                                          {"in", "query"},
                                          {"required", !argument.defaultValue.has_value()},
                                          {"schema", schemaOf(argument)}});
    }
    if (!parameters.empty()) made["parameters"] = std::move(parameters);
    return made;
}

void addOperations(json::object& paths, const ClassEntry& entry) {
    for (const auto& operation : entry.operations) {
        if (operation.right.kind == Right::Kind::Nobody) continue;
        json::object path{{"post", postOf(entry, operation)}};
        if (operation.effect == Effect::Reads) path["get"] = getOf(entry, operation);
        paths["/" + entry.name + '/' + operation.name] = std::move(path);
    }
}

json::object answering(std::string_view description, json::object content) {
    return {{"200", json::object{{"description", text(description)}, {"content", std::move(content)}}},
            {"default", reference("responses", "Problem")}};
}

json::object callSchema() {
    const json::object anything;
    return {{"type", "object"},
            {"properties",
             json::object{
                 {"on", json::object{{"type", "string"}}},
                 {"do", json::object{{"type", "string"}}},
                 {"with", json::object{{"type", "object"}}},
                 {"get", json::object{{"type", json::array{"string", "array"}},
                                      {"items", json::object{{"type", "string"}}}}},
                 {"set", json::object{{"type", "string"}}},
                 {"to", anything},
                 {"expect",
                  json::object{{"type", "object"},
                               {"properties",
                                json::object{{"is", anything}, {"sha256", json::object{{"type", "string"}}}}},
                               {"minProperties", 1},
                               {"maxProperties", 1}}},
                 {"goOn", json::object{{"type", "boolean"}}}}},
            {"required", json::array{"on"}},
            {"additionalProperties", false}};
}

json::object batchPath() {
    json::object calls{{"type", "array"}, {"maxItems", mostCalls}, {"items", reference("schemas", "Call")}};
    json::object request{{"type", "object"},
                         {"properties", json::object{{"calls", std::move(calls)}}},
                         {"required", json::array{"calls"}},
                         {"additionalProperties", false}};
    json::object results{{"type", "object"},
                         {"properties", json::object{{"results", json::object{{"type", "array"}}}}},
                         {"required", json::array{"results"}}};
    return {{"post", json::object{
                         {"operationId", "batch"},
                         {"summary", "Several calls, one after the other; each is a change of its own."},
                         {"parameters", json::array{reference("parameters", "Token")}},
                         {"requestBody",
                          json::object{{"required", true}, {"content", jsonContent(std::move(request))}}},
                         {"responses", answering("What each call gave.", jsonContent(std::move(results)))}}}};
}

json::object sessionPath() {
    return {
        {"get", json::object{{"operationId", "session"},
                             {"summary", "Who asks, what she may do, and the limits."},
                             {"security", json::array{json::object{}}},
                             {"responses", answering("The session.", jsonContent({{"type", "object"}}))}}}};
}

json::object labelsPath() {
    json::object language{{"name", "lang"}, {"in", "query"}, {"schema", json::object{{"type", "string"}}}};
    json::object words{{"type", "object"}, {"additionalProperties", json::object{{"type", "string"}}}};
    json::object responses = answering("The words by their numbers.", jsonContent(std::move(words)));
    responses["304"] = json::object{{"description", "They are as they were."}};
    return {{"get", json::object{{"operationId", "labels"},
                                 {"summary", "The words of the interface in a language."},
                                 {"security", json::array{json::object{}}},
                                 {"parameters", json::array{std::move(language)}},
                                 {"responses", std::move(responses)}}}};
}

json::object descriptionPath() {
    return {
        {"get", json::object{{"operationId", "openapi"},
                             {"summary", "This description."},
                             {"security", json::array{json::object{}}},
                             {"responses", answering("OpenAPI 3.1.", jsonContent({{"type", "object"}}))}}}};
}

json::object pathsOf(const operations::Register& classes) {
    json::object paths{{"/batch", batchPath()},
                       {"/session", sessionPath()},
                       {"/labels", labelsPath()},
                       {"/openapi.json", descriptionPath()}};
    for (const auto& entry : classes.classes()) addOperations(paths, entry);
    return paths;
}

json::object problemSchema() {
    const json::object string{{"type", "string"}};
    const json::object number{{"type", "integer"}};
    return {{"type", "object"},
            {"properties", json::object{{"type", string},
                                        {"title", string},
                                        {"status", number},
                                        {"detail", string},
                                        {"operation", string},
                                        {"code", json::object{}},
                                        {"holder", string},
                                        {"argument", string},
                                        {"reference", string},
                                        {"call", number},
                                        {"results", json::object{{"type", "array"}}},
                                        {"now", json::object{}}}},
            {"required", json::array{"type", "title", "status"}}};
}

json::object gridSchema() {
    json::object column{
        {"type", "object"},
        {"properties",
         json::object{{"name", json::object{{"type", "string"}}},
                      {"type", json::object{{"enum", json::array{"text", "number", "boolean", "date"}}}}}},
        {"required", json::array{"name", "type"}}};
    return {
        {"type", "object"},
        {"properties",
         json::object{{"columns", json::object{{"type", "array"}, {"items", std::move(column)}}},
                      {"rows", json::object{{"type", "array"}, {"items", json::object{{"type", "array"}}}}}}},
        {"required", json::array{"columns", "rows"}}};
}

json::object components() {
    return {{"schemas",
             json::object{{"Problem", problemSchema()}, {"Grid", gridSchema()}, {"Call", callSchema()}}},
            {"responses",
             json::object{{"Problem", json::object{{"description", "Why it came to nothing."},
                                                   {"content", jsonContent(reference("schemas", "Problem"),
                                                                           "application/problem+json")}}}}},
            {"parameters",
             json::object{{"Token", json::object{{"name", "X-Torvex-Token"},
                                                 {"in", "header"},
                                                 {"description", "From the document; browsers only."},
                                                 {"schema", json::object{{"type", "string"}}}}}}},
            {"securitySchemes",
             json::object{{"token", json::object{{"type", "http"}, {"scheme", "bearer"}}},
                          {"session",
                           json::object{{"type", "apiKey"}, {"in", "cookie"}, {"name", "torvex_session"}}}}}};
}

}  // namespace

std::string openApi(const operations::Register& classes) {
    return json::serialize(json::object{
        {"openapi", "3.1.0"},
        {"info", json::object{{"title", "Torvex"},
                              {"version", text(TORVEX_VERSION)},
                              {"description",
                               "The interface for programs. Names ignore case; moments are "
                               "\"2026-06-15T12:00:00\"."}}},
        {"servers", json::array{json::object{{"url", "/torvex/api"}}}},
        {"security",
         json::array{json::object{{"token", json::array{}}}, json::object{{"session", json::array{}}}}},
        {"paths", pathsOf(classes)},
        {"components", components()}});
}

}  // namespace torvex::api
