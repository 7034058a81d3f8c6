#pragma once

#include <chrono>
#include <string_view>

namespace torvex {

/// How long an answer may be handed to others, from the moment when it came.
struct Freshness {
    std::chrono::seconds fresh{0};
    std::chrono::seconds staleIfError{0};  ///< and then so long in place of a failure
};

/// The fields of an answer's header that say so.
struct FreshnessFields {
    std::string_view cacheControl;
    std::string_view expires;
    std::string_view date;
    std::string_view age;
    std::string_view vary;
    bool setsCookie = false;
};

/// Nothing is guessed: without a word of the source an answer is nobody's but the one's who asked. One that
/// is "private" or sets a cookie is meant for one visitor. A day is the most.
Freshness freshnessOf(const FreshnessFields& fields, std::chrono::system_clock::time_point now);

}  // namespace torvex
