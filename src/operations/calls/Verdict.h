#pragma once

#include <chrono>
#include <string>

namespace torvex::operations {

/// What the gate says to a caller.
struct Verdict {
    enum class Kind {
        Allowed,
        OutOfReach,   ///< nobody may do this over the network, or there is no such thing
        NotLoggedIn,  ///< nobody is, or the session has lost its login
        NoRight,      ///< the login hasn't got the right for what the arguments name
        Withheld,     ///< an argument was given that nobody may give over the network
        Wait,         ///< too many wrong passwords from this address or for this name
        NotEnrolled   ///< a role of the login demands a second factor, and it hasn't set one up yet
    };

    Kind kind = Kind::Allowed;
    std::string message;           ///< says why not, for people; "" when it is allowed
    std::chrono::seconds wait{0};  ///< for `Wait`: when to come back
    std::string argument{};        ///< for `Withheld`: which

    bool isAllowed() const { return kind == Kind::Allowed; }
};

/// To a caller from outside, what isn't there and what is out of reach look the same.
Verdict outOfReach(const std::string& name);

Verdict withheld(const std::string& argument);

}  // namespace torvex::operations
