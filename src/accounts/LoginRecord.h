#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// What is to be written into the row of an author's login, in the form in which it is kept. A text that is
/// empty leaves what is there.
struct LoginChange {
    std::string username;
    std::string password;
    std::string name;
    std::string job;
    std::string email;
    int emailNotification = -1;            ///< below 0 leaves what is there
    std::optional<std::string> validFrom;  ///< "yyyymmdd", or "" for no bound; none leaves what is there
    std::optional<std::string> validTo;
};

/// What an author of the administration typed, trimmed and cut. A bound that is neither empty nor a day that
/// exists leaves what is there.
LoginChange loginChange(std::string_view username, std::string_view password, std::string_view name,
                        std::string_view job, std::string_view email, int emailNotification,
                        std::string_view validFrom, std::string_view validTo);

/// Why a login can't be saved.
namespace loginCode {
inline constexpr std::string_view notThere = "-1";
inline constexpr std::string_view nameTaken = "-2";
inline constexpr std::string_view noUsername = "-3";
inline constexpr std::string_view noPassword = "-4";
inline constexpr std::string_view noName = "-5";
}  // namespace loginCode

/// What became of a login that was to be saved.
struct SavedLogin {
    std::string_view code;  ///< "" when it was
    int loginId = 0;
};

// Both work within a transaction of the caller, and let the record go.

/// The system administrator's name and dates stay what they must be, whatever is given.
SavedLogin changeLogin(db::Connection& transaction, int loginId, const LoginChange& change);
/// With a copy of the settings of login 1. Of two who add one of the same name at once, one does.
SavedLogin addLogin(db::Connection& transaction, const LoginChange& change);

/// A login as its row has it, all texts trimmed.
struct LoginDetails {
    int loginId = 0;  ///< -1 for a row that isn't there; all else is then empty
    std::string username;
    std::string fullname;
    std::string job;
    std::string email;
    int emailNotification = 0;
    std::string validFrom;
    std::string validTo;
};

LoginDetails readLogin(db::Connection& connection, int loginId);

}  // namespace torvex
