#include "pages/api/Json.h"

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/parse.hpp>
#include <cmath>

#include "operations/calls/ValueJson.h"
#include "operations/register/NeedLabels.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::textJson;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Looks for what the library's values can't show any more: a key that was there twice, a number too large.
struct Examination {
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
    using Code = json::error_code;
    using Part = json::string_view;

    bool on_document_begin(Code&) { return true; }
    bool on_document_end(Code&) { return true; }
    bool on_object_begin(Code&) {
        keys.emplace_back();
        return true;
    }
    bool on_object_end(std::size_t, Code& error) {
        auto& names = keys.back();
        std::sort(names.begin(), names.end());
        if (std::adjacent_find(names.begin(), names.end()) != names.end()) error = json::error::syntax;
        keys.pop_back();
        return !error;
    }
    bool on_array_begin(Code&) { return true; }
    bool on_array_end(std::size_t, Code&) { return true; }
    bool on_key_part(Part part, std::size_t, Code&) {
        key.append(part.data(), part.size());
        return true;
    }
    bool on_key(Part part, std::size_t, Code&) {
        key.append(part.data(), part.size());
        keys.back().push_back(std::move(key));
        key.clear();
        return true;
    }
    bool on_string_part(Part, std::size_t, Code&) { return true; }
    bool on_string(Part, std::size_t, Code&) { return true; }
    bool on_number_part(Part, Code&) { return true; }
    bool on_int64(std::int64_t, Part, Code&) { return true; }
    bool on_uint64(std::uint64_t, Part, Code&) { return true; }
    bool on_double(double number, Part, Code&) {
        isFinite = isFinite && std::isfinite(number);
        return true;
    }
    bool on_bool(bool, Code&) { return true; }
    bool on_null(Code&) { return true; }
    bool on_comment_part(Part, Code&) { return true; }
    bool on_comment(Part, Code&) { return true; }

    std::vector<std::vector<std::string>> keys;
    std::string key;
    bool isFinite = true;
};

json::parse_options options() {
    json::parse_options chosen;
    chosen.max_depth = deepest;
    return chosen;
}

/// Nothing for a text that may be read.
std::optional<JsonFault> faultOf(std::string_view text) {
    json::basic_parser<Examination> parser(options());
    json::error_code error;
    const std::size_t read = parser.write_some(false, text.data(), text.size(), error);
    if (error == json::error::exponent_overflow) return JsonFault::NotFinite;
    if (error || read != text.size()) return JsonFault::NotJson;
    if (!parser.handler().isFinite) return JsonFault::NotFinite;
    return std::nullopt;
}

json::array columnsJson(const std::vector<operations::Column>& columns) {
    json::array names;
    names.reserve(columns.size());
    for (const auto& column : columns)
        names.push_back(json::object{{"name", textJson(column.name)},
                                     {"type", textJson(operations::typeName(column.type))}});
    return names;
}

json::array rowsJson(const ResultGrid& grid, std::size_t filled) {
    json::array rows;
    rows.reserve(grid.rows());
    for (std::size_t row = 0; row < grid.rows(); ++row) {
        json::array cells;
        cells.reserve(filled);
        for (std::size_t column = 0; column < filled; ++column) cells.push_back(jsonOf(grid.at(column, row)));
        rows.push_back(std::move(cells));
    }
    return rows;
}

}  // namespace

std::variant<json::value, JsonFault> readJson(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (const auto fault = faultOf(text)) return *fault;
    json::error_code error;
    json::value value = json::parse({text.data(), text.size()}, error, {}, options());
    if (error) return JsonFault::NotJson;
    return value;
}

std::variant<json::object, JsonFault> readJsonObject(std::string_view text) {
    auto read = readJson(text);
    if (const auto* fault = std::get_if<JsonFault>(&read)) return *fault;
    auto* object = std::get<json::value>(read).if_object();
    if (!object) return JsonFault::NotJson;
    return std::move(*object);
}

Value argumentOf(const json::value& given, const std::string& name) {
    if (given.is_null()) return {};
    if (given.is_bool()) return given.get_bool();
    if (given.is_number()) return given.to_number<double>();
    if (!given.is_string())
        throw operations::ArgumentError('"' + name + "\" must be a text, a number, true, false or null", name,
                                        operations::need::singleValue);
    const auto& text = given.get_string();
    if (text.find('\0') != json::string::npos)
        throw operations::ArgumentError('"' + name + "\" must be a text without NUL", name,
                                        operations::need::cleanText);
    return std::string_view(text.data(), text.size());
}

operations::GivenValues argumentsOf(const json::object& members) {
    operations::GivenValues values;
    for (const auto& [name, value] : members) {
        const std::string key(name);
        values.emplace_back(key, argumentOf(value, key));
    }
    return values;
}

json::value jsonOf(const Value& value) {
    if (value.isGrid())
        return json::object{{"columns", json::array()},
                            {"rows", rowsJson(value.grid(), value.grid().columns())}};
    return operations::singleJson(value);
}

json::value jsonOf(const Value& value, const operations::Operation& operation) {
    if (operation.columns.empty() || !(value.isGrid() || value.isEmpty())) return jsonOf(value);
    const std::size_t filled =
        value.isGrid() ? std::min(operation.columns.size(), value.grid().columns()) : 0;
    return json::object{{"columns", columnsJson(operation.columns)},
                        {"rows", value.isGrid() ? rowsJson(value.grid(), filled) : json::array()}};
}

}  // namespace torvex::api
