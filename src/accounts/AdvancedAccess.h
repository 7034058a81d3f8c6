#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Rows;
class Connection;
}  // namespace db

/// What a login, or a role, may do with the entries of the administration menu in one site and language: all
/// of it at once, for lists. Rows for all sites or languages count as well; an entry that isn't by site, or
/// not by language, is opened by those alone.
class AdvancedAccess {
  public:
    /// Of an entry. What several rows give adds up.
    struct Given {
        bool view = false;
        bool edit = false;
    };

    static AdvancedAccess ofLogin(db::Connection& connection, int loginId, std::string_view site,
                                  std::string_view lang);
    static AdvancedAccess ofRole(db::Connection& connection, int roleId, std::string_view site,
                                 std::string_view lang);

    /// `level`: 0 an entry for the installation, 1 for a site, 2 for a site and language.
    Given of(int advId, int level) const;

  private:
    struct Row {
        int advId;
        int narrowest;  ///< the lowest level that the row counts for
        Given given;
    };

    explicit AdvancedAccess(db::Rows rows);

    std::vector<Row> rows_;
};

}  // namespace torvex
