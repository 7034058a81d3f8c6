#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/VisitorAccounts.h"

namespace torvex {

/// The groups that a visitor can be in.
class GroupNames {
  public:
    explicit GroupNames(db::Connection& connection);

    /// 0 when there is none of that name.
    int numberOf(std::string_view name) const;
    /// Divided by "|"; a group that is gone is left out.
    std::string namesOf(const std::set<int>& groups) const;

  private:
    std::map<int, std::string> names_;
    std::map<std::string, int> numbers_;  ///< by the names in small letters
};

/// A line of a file that can't be taken.
struct BadLine {
    std::size_t number;
    std::string reason;
};

/// What a file says of visitors' accounts.
struct UserFile {
    struct User {
        std::size_t line;
        VisitorChange change;
    };
    std::vector<User> users;
    std::vector<BadLine> bad;  ///< in the order of their numbers
};

/// The first line names the columns, in any order: "username" and any of "password", "firstname", "lastname",
/// "validFrom", "validTo", "groups". A column that is missing, and an empty password, leave what is there.
/// Groups are given by their names, divided by "|"; days as "yyyymmdd" or "yyyy-mm-dd".
UserFile readUserFile(std::string_view text, const GroupNames& groups);

/// The line that names the columns, and that of an account.
std::string userFileHead(bool withPasswords);
std::string userFileLine(const VisitorAccount& account, const GroupNames& groups, bool withPasswords);

}  // namespace torvex
