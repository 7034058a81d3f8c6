#include "pages/api/BatchRequest.h"

#include <algorithm>
#include <initializer_list>

#include "operations/register/NeedLabels.h"
#include "pages/api/Json.h"
#include "platform/text/Hexadecimal.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
namespace need = operations::need;

/// Reads one call; its faults name its place.
class CallReader {
  public:
    CallReader(const json::value& given, std::size_t index)
        : index_(index), given_(objectOf(given, "calls")) {}

    BatchCall read() const {
        BatchCall call{textAt("on"), what(), {}, false};
        if (const auto* expects = given_.if_contains("expect")) call.expects = expectation(*expects);
        if (const auto* goesOn = given_.if_contains("goOn")) call.goesOn = flagOf(*goesOn, "goOn");
        return call;
    }

  private:
    [[noreturn]] void refuse(const std::string& field, const std::string& needed, int label) const {
        throw BatchError('"' + field + "\" must be " + needed, field, label, index_);
    }

    const json::object& objectOf(const json::value& value, const std::string& field) const {
        if (!value.is_object()) refuse(field, "an object", need::object);
        return value.get_object();
    }

    std::string textOf(const json::value& value, const std::string& field) const {
        if (!value.is_string()) refuse(field, "a text", need::text);
        return std::string(value.get_string());
    }

    bool flagOf(const json::value& value, const std::string& field) const {
        if (!value.is_bool()) refuse(field, "true or false", need::boolean);
        return value.get_bool();
    }

    std::string textAt(const std::string& field) const {
        const auto* value = given_.if_contains(field);
        if (!value) throw BatchError('"' + field + "\" is missing", field, need::given, index_);
        return textOf(*value, field);
    }

    /// A misspelt field would otherwise be passed over in silence.
    void allowOnly(std::initializer_list<std::string_view> known) const {
        for (const auto& [name, value] : given_) {
            const std::string_view field(name.data(), name.size());
            if (std::find(known.begin(), known.end(), field) == known.end())
                throw BatchError("there is no field \"" + std::string(field) + '"', std::string(field),
                                 need::knownName, index_);
        }
    }

    decltype(BatchCall::what) what() const {
        if (given_.contains("do")) return operation();
        if (given_.contains("get")) return reading();
        if (!given_.contains("set"))
            throw BatchError(R"(one of "do", "get", "set" is missing)", "do", need::deed, index_);
        allowOnly({"on", "set", "to", "expect", "goOn"});
        const auto* value = given_.if_contains("to");
        if (!value) throw BatchError("\"to\" is missing", "to", need::given, index_);
        return Set{textAt("set"), *value};
    }

    Do operation() const {
        allowOnly({"on", "do", "with", "expect", "goOn"});
        Do made{textAt("do")};
        if (const auto* with = given_.if_contains("with")) made.with = objectOf(*with, "with");
        return made;
    }

    decltype(BatchCall::what) reading() const {
        allowOnly({"on", "get", "expect", "goOn"});
        const json::value& asked = given_.at("get");
        if (asked.is_string() && asked.get_string() == "*") return GetAll{};
        if (asked.is_string()) return Get{textOf(asked, "get")};
        if (!asked.is_array()) refuse("get", "a text or a list of texts", need::texts);
        GetSome some;
        for (const auto& one : asked.get_array()) some.properties.push_back(textOf(one, "get"));
        return some;
    }

    Expectation expectation(const json::value& value) const {
        const json::object& given = objectOf(value, "expect");
        if (given.size() == 1 && given.contains("is")) return {.value = given.at("is")};
        if (given.size() == 1 && given.contains("sha256"))
            return {.sha256 = textOf(given.at("sha256"), "sha256")};
        refuse("expect", R"({"is": value} or {"sha256": text})", need::expectation);
    }

    std::size_t index_;
    const json::object& given_;
};

bool isSame(const json::value& left, const json::value& right);

bool areSame(const json::array& left, const json::array& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
}

/// Whatever the order of the keys.
bool areSame(const json::object& left, const json::object& right) {
    return left.size() == right.size() && std::all_of(left.begin(), left.end(), [&](const auto& one) {
               const auto* other = right.if_contains(one.key());
               return other && isSame(one.value(), *other);
           });
}

/// 1 and 1.0 are one number.
bool isSame(const json::value& left, const json::value& right) {
    if (left.is_number() && right.is_number()) return left.to_number<double>() == right.to_number<double>();
    if (left.is_array() && right.is_array()) return areSame(left.get_array(), right.get_array());
    if (left.is_object() && right.is_object()) return areSame(left.get_object(), right.get_object());
    return left == right;
}

}  // namespace

std::vector<BatchCall> callsOf(const json::object& batch) {
    for (const auto& [name, value] : batch) {
        if (name != "calls")
            throw BatchError("a batch has no field \"" + std::string(name) + '"', std::string(name),
                             need::knownName);
    }
    const auto* calls = batch.if_contains("calls");
    if (!calls) throw BatchError("\"calls\" is missing", "calls", need::given);
    if (!calls->is_array()) throw BatchError("\"calls\" must be a list", "calls", need::list);
    std::vector<BatchCall> read;
    for (const auto& one : calls->get_array()) read.push_back(CallReader(one, read.size()).read());
    return read;
}

bool isMet(const Expectation& expectation, const json::value& result) {
    if (expectation.value) return isSame(*expectation.value, result);
    return result.is_string() && sha256(result.get_string()) == expectation.sha256;
}

}  // namespace torvex::api
