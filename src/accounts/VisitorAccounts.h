#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}

/// The account of a visitor, with the groups by their numbers.
struct VisitorAccount {
    double userId = 0;  ///< 0 for one that isn't there yet
    std::string username;
    std::string password;      ///< the mark of the hash, where there is one
    std::string passwordHash;  ///< "" unless the password is kept strongly
    std::string firstname;
    std::string lastname;
    std::string validFrom;
    std::string validTo;
    std::set<int> groups;
};

/// What is to be written; nothing leaves what is there.
struct VisitorChange {
    std::string username;
    std::optional<std::string> password;  ///< as typed; it takes the place of a hash
    std::optional<std::string> firstname;
    std::optional<std::string> lastname;
    std::optional<std::string> validFrom;  ///< "yyyymmdd", or "" for no bound
    std::optional<std::string> validTo;
    std::optional<std::set<int>> groups;  ///< all that it is to be in
};

/// All accounts in the order of their usernames.
void visitVisitors(db::Connection& connection, const std::function<void(const VisitorAccount&)>& visit);
/// How many there are.
std::size_t countVisitors(db::Connection& connection);

/// The account of a username; nothing when there is none. Of several, the oldest.
std::optional<VisitorAccount> findVisitor(db::Connection& connection, std::string_view username);

/// The names of what a change makes different: "password", "groups". All that it gives, for a new account. A
/// password differs from any hash; see `leaveOutSamePassword`.
std::vector<std::string> differences(const std::optional<VisitorAccount>& account,
                                     const VisitorChange& change);

/// Takes the password out of the change if it is the one that the account keeps strongly, which costs a hash.
void leaveOutSamePassword(const VisitorAccount& account, VisitorChange& change);

/// Adds the account or changes the one that is there, with its memberships. Within a transaction of the
/// caller.
void saveVisitor(db::Connection& transaction, const std::optional<VisitorAccount>& account,
                 const VisitorChange& change);

}  // namespace torvex
