#pragma once

#include <boost/json/value.hpp>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "operations/register/PublicObject.h"
#include "operations/register/Register.h"
#include "platform/Value.h"

/// JSON as programs send and get it. Pure; safe from any thread.
namespace torvex::api {

/// How deep lists and objects may lie in each other.
inline constexpr std::size_t deepest = 64;

/// Why a text isn't taken.
enum class JsonFault {
    NotJson,   ///< not JSON, too deep, not UTF-8, half a surrogate pair, or a key twice in one object
    NotFinite  ///< JSON, but for a number that no double holds
};

/// Stricter than JSON asks for where two readers could take one text for two things. A byte order mark ahead
/// of the text is passed over.
std::variant<boost::json::value, JsonFault> readJson(std::string_view text);

/// The same for a text that has to be an object; any other JSON is `NotJson`.
std::variant<boost::json::object, JsonFault> readJsonObject(std::string_view text);

/// Null, true or false, a number or a text as the value of an argument or a property, whose name is for the
/// message. Throws `operations::ArgumentError` for a list, an object, and a text with a NUL in it.
Value argumentOf(const boost::json::value& given, const std::string& name);

/// The members of an object as values by their names. Throws as above.
operations::GivenValues argumentsOf(const boost::json::object& members);

/// A moment is "2026-06-15T12:00:00"; what isn't UTF-8 in a text becomes U+FFFD.
boost::json::value jsonOf(const Value& value);

/// What an operation gave. A grid has its named columns with their types, also without rows.
boost::json::value jsonOf(const Value& value, const operations::Operation& operation);

}  // namespace torvex::api
