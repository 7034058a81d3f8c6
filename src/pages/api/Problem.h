#pragma once

#include <boost/json/object.hpp>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Response.h"

namespace torvex::api {

/// What can be wrong with a request whatever operation it asks for: the address of the problem, its title in
/// English, and the label of its sentence.
struct ProblemKind {
    int status;
    std::string_view name;
    std::string_view title;
    int label;
};

namespace kind {
inline constexpr ProblemKind notUnderstood{400, "not-understood", "The request is no such JSON", 5000};
inline constexpr ProblemKind notLoggedIn{401, "not-logged-in", "Nobody is logged in", 44};
inline constexpr ProblemKind loginLost{401, "login-lost", "The session has lost its login", 5001};
inline constexpr ProblemKind badToken{401, "bad-token", "The access token isn't valid", 5018};
inline constexpr ProblemKind notCovered{403, "not-covered", "The access token doesn't allow it", 5019};
inline constexpr ProblemKind notEnrolled{403, "second-factor-demanded",
                                         "A second factor has to be set up first", 5830};
inline constexpr ProblemKind noRight{403, "no-right", "The login hasn't got the right", 45};
inline constexpr ProblemKind withheld{403, "withheld", "An argument can't be given over the network", 5004};
inline constexpr ProblemKind foreign{403, "foreign", "The request doesn't come from this site's own pages",
                                     5005};
inline constexpr ProblemKind notThere{404, "not-there", "There is nothing of this name", 5003};
inline constexpr ProblemKind otherMethod{405, "other-method", "The address doesn't take this method", 5007};
inline constexpr ProblemKind refused{409, "refused", "It was refused", 5008};
inline constexpr ProblemKind changed{412, "changed", "It isn't what was expected", 5009};
inline constexpr ProblemKind tooLarge{413, "too-large", "The request is too large", 5010};
inline constexpr ProblemKind otherType{415, "other-type", "The body is of another type", 5011};
inline constexpr ProblemKind notFitting{422, "not-fitting", "An argument doesn't fit", 5006};
inline constexpr ProblemKind tooManyCalls{422, "too-many-calls", "The batch has too many calls", 5017};
inline constexpr ProblemKind tooFast{429, "too-fast", "Too many requests", 5012};
inline constexpr ProblemKind lockedOut{429, "locked-out", "Too many failed logins", 5013};
inline constexpr ProblemKind failed{500, "failed", "It failed", 5014};
inline constexpr ProblemKind busy{503, "busy", "The server is too busy", 5015};
}  // namespace kind

/// Why a request came to nothing, for programs and, in `detail`, for people. Texts that are empty are left
/// out.
struct Problem {
    int status = 500;
    std::string name;  ///< the last part of its type's address
    std::string title;
    std::string detail{};
    std::string operation{};     ///< "cManager.checkOut"
    boost::json::object more{};  ///< code, holder, argument, reference, call, results, now
    std::optional<std::chrono::seconds> wait{};
    std::string allowed{};  ///< methods, for 405

    static Problem of(const ProblemKind& kind);
};

boost::json::object toJson(const Problem& problem);

/// The answer; it replaces what stands in the response.
void answer(Response& response, const Problem& problem);

/// What every answer of the interface for programs carries.
void addFields(Response& response);

/// The same for what went well.
void answer(Response& response, const boost::json::value& content);

}  // namespace torvex::api
