#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "accounts/AdminEntries.h"
#include "operations/register/Conversion.h"
#include "operations/register/Reference.h"

namespace torvex::operations {

namespace {

namespace json = boost::json;

json::string textJson(std::string_view content) {
    return json::string(content);
}

json::value valueJson(const Value& value) {
    if (value.isBoolean()) return value.boolean();
    if (!value.isNumber()) return textJson(value.toText());
    const auto whole = static_cast<std::int64_t>(value.number());
    return static_cast<double>(whole) == value.number() ? json::value(whole) : json::value(value.number());
}

std::string_view kindName(Right::Kind kind) {
    switch (kind) {
        case Right::Kind::Nobody:
            return "nobody";
        case Right::Kind::Visitor:
            return "visitor";
        case Right::Kind::AnyLogin:
            return "any login";
        case Right::Kind::EditRight:
            return "edit right";
        case Right::Kind::AdvancedRight:
            return "access";
        case Right::Kind::OneselfOrAdvancedRight:
            return "oneself or access";
        case Right::Kind::OnlySa:
            return "sa";
    }
    return "";
}

void addUnlessEmpty(json::object& out, std::string_view key, const std::string& content) {
    if (!content.empty()) out[key] = textJson(content);
}

json::object designJson(const Right::Design& design) {
    json::object out;
    addUnlessEmpty(out, "page", design.page);
    addUnlessEmpty(out, "site", design.site);
    addUnlessEmpty(out, "lang", design.lang);
    addUnlessEmpty(out, "mode", design.mode);
    if (design.isOfRecord) out["record"] = true;
    if (design.isOfAllTrees) out["allTrees"] = true;
    return out;
}

json::object rightJson(const Right& right) {
    json::object out{{"kind", textJson(kindName(right.kind))}};
    addUnlessEmpty(out, right.kind == Right::Kind::EditRight ? "action" : "access", right.detail);
    if (right.advId != 0) out["entry"] = right.advId;
    addUnlessEmpty(out, "page", right.page);
    addUnlessEmpty(out, "otherPage", right.otherPage);
    addUnlessEmpty(out, "site", right.site);
    addUnlessEmpty(out, "lang", right.lang);
    addUnlessEmpty(out, "login", right.login);
    addUnlessEmpty(out, "media", right.media);
    addUnlessEmpty(out, "forum", right.forum);
    if (!right.media.empty()) out["documentsEntry"] = adminEntry::documents;
    addUnlessEmpty(out, "orAccess", right.orAccess);
    if (right.design) out["design"] = designJson(*right.design);
    return out;
}

json::object argumentJson(const Operation& operation, const Argument& argument) {
    json::object out{{"name", textJson(argument.name)}, {"type", textJson(typeName(argument.type))}};
    if (argument.defaultValue) out["default"] = valueJson(*argument.defaultValue);
    if (argument.withheld) out["withheld"] = true;
    if (operation.isFilledByGate(argument)) out["filled"] = true;
    return out;
}

json::object resultJson(const Operation& operation) {
    json::object out{{"type", textJson(operation.result)}};
    if (operation.columns.empty()) return out;
    json::array columns;
    for (const auto& column : operation.columns) {
        columns.push_back(
            json::object{{"name", textJson(column.name)}, {"type", textJson(typeName(column.type))}});
    }
    out["columns"] = std::move(columns);
    return out;
}

json::array codesJson(const Operation& operation) {
    json::array codes;
    for (const auto& one : operation.codes) {
        json::object code{
            {"code", valueJson(one.code)}, {"meaning", textJson(one.meaning)}, {"refusal", one.isRefusal}};
        if (one.label.number > 0) {
            code["label"] = one.label.number;
            code["kind"] = textJson(one.label.kind);
        }
        codes.push_back(std::move(code));
    }
    return codes;
}

json::object rowJson(const Operation& operation) {
    json::array arguments;
    for (const auto& argument : operation.arguments) arguments.push_back(argumentJson(operation, argument));
    json::object out{{"name", textJson(operation.name)},
                     {"summary", textJson(operation.summary)},
                     {"effect", textJson(effectName(operation.effect))},
                     {"right", rightJson(operation.right)},
                     {"arguments", std::move(arguments)},
                     {"result", resultJson(operation)}};
    if (!operation.codes.empty()) out["codes"] = codesJson(operation);
    if (operation.passwordTest) out["throttled"] = true;
    return out;
}

json::object rowJson(const Property& property) {
    return {{"name", textJson(property.name)},
            {"summary", textJson(property.summary)},
            {"type", textJson(typeName(property.type))},
            {"settable", static_cast<bool>(property.set)},
            {"right", rightJson(property.right)}};
}

template <typename Row>
std::string linesOf(const std::vector<Row>& rows) {
    std::string lines;
    for (const auto& row : rows) lines += (lines.empty() ? "\n" : ",\n") + json::serialize(rowJson(row));
    return lines;
}

std::string classText(const ClassEntry& entry) {
    return "{\"name\": " + json::serialize(textJson(entry.name)) +
           ", \"summary\": " + json::serialize(textJson(entry.summary)) + ",\n\"operations\": [" +
           linesOf(entry.operations) + "],\n\"properties\": [" + linesOf(entry.properties) + "]}";
}

}  // namespace

std::string referenceJson(const Register& classes) {
    std::string all;
    for (const auto& entry : classes.classes()) all += (all.empty() ? "\n" : ",\n") + classText(entry);
    return "{\"classes\": [" + all + "]}\n";
}

}  // namespace torvex::operations
