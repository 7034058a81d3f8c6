#pragma once

#include <string>

namespace torvex {

/// The login that an object works for, as its visitor session knows it. `loginId` 0: nobody is logged in.
struct Author {
    int loginId = 0;
    std::string username;
    std::string password;  ///< in its stored form
    std::string fullname;

    bool isLoggedIn() const { return loginId > 0; }
};

}  // namespace torvex
