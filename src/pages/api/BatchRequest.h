#pragma once

#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "operations/register/PublicObject.h"

namespace torvex::api {

inline constexpr std::size_t mostCalls = 100;

/// Calls an operation. The arguments are read when it is its turn.
struct Do {
    std::string operation;
    boost::json::object with{};
};
struct Get {
    std::string property;
};
/// Several properties, by the names as they are given.
struct GetSome {
    std::vector<std::string> properties;
};
struct GetAll {};
struct Set {
    std::string property;
    boost::json::value to;
};

/// What a call must give for the batch to go on: a value itself, or the SHA-256 of its text.
struct Expectation {
    std::optional<boost::json::value> value{};
    std::string sha256{};
};

struct BatchCall {
    std::string on;  ///< the class
    std::variant<Do, Get, GetSome, GetAll, Set> what;
    std::optional<Expectation> expects{};
    bool goesOn = false;  ///< when it is refused
};

/// A batch that isn't of its form.
class BatchError : public operations::ArgumentError {
  public:
    BatchError(const std::string& description, std::string field, int need,
               std::optional<std::size_t> at = {})
        : ArgumentError(description, std::move(field), need), call(at) {}

    std::optional<std::size_t> call;  ///< in which it is wrong
};

/// The calls of `{"calls": [...]}`. Throws `BatchError` for unknown fields and fields of another kind; how many calls
/// there are is the caller's to judge.
std::vector<BatchCall> callsOf(const boost::json::object& batch);

/// Whether the result of a call is what was expected.
bool isMet(const Expectation& expectation, const boost::json::value& result);

}  // namespace torvex::api
