#pragma once

#include <string>
#include <string_view>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {
struct HostContext;

/// Writes the records of the registers, with their checks, locks and lines of the audit trail, and lists what
/// a screen needs to do so. An object is made for one request, in the name of the login that the visitor's
/// session holds, and is used by one thread.
///
/// A change answers "0" or a code; a refused one and one that failed have changed nothing. An `advId` is the
/// entry of the administration menu that called, for the audit line; 0 writes none.
class registers {
  public:
    explicit registers(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // ---- Media (desk/Media.cpp, desk/MediaChanges.cpp, desk/MediaMove.cpp) ----
    // `folderType` is "images" or "documents"; a `path` is a file's as the register has it: "001/rose.gif".

    /// Every folder of a site: id, name, parent, level, how many files lie in it; by id.
    Value getFolders(const std::string& site, const std::string& folderType);
    /// The files of a folder and those below it, by folder and title, of which 500 from the row `from` on:
    /// folder, path, title, type, size, width, height, alternative text. `words` stand in title, path or
    /// alternative text.
    Value getMedia(const std::string& site, const std::string& folderType, const std::string& folder = "",
                   const std::string& words = "", int from = 0);
    /// Whether a file may come into the folder under this name: "0", "-1" no such folder, "exists".
    std::string checkUpload(const std::string& site, const std::string& folderType, const std::string& folder,
                            const std::string& filename);

    /// "-1" gone, "-2" a folder beside it has the name, "-3" no name.
    std::string renameFolder(const std::string& site, const std::string& folderType,
                             const std::string& folder, const std::string& name, int advId = 0);
    /// "-1" gone, "-2" another file of the folder has the title, "-3" no title. An `alt` of "-1" stays, an
    /// empty one says that the picture is decoration.
    std::string saveMedia(const std::string& site, const std::string& folderType, const std::string& path,
                          const std::string& title, const std::string& alt = "-1", int advId = 0);
    /// The file `by` takes the place of the one at `path` under its name, title and alternative text, and is
    /// itself gone. Without it, notes size and measures of what lies at `path` now. "-1" one of them isn't
    /// there, "-2" the two are not of one type.
    std::string replaceMedia(const std::string& site, const std::string& folderType, const std::string& path,
                             const std::string& by = "", int advId = 0);
    /// Brings the file into another folder of the site; the pages that show it or lead to it follow, in design
    /// and live. "-1" file or folder are gone, "-2" a file there has its title, "exists" one has its name.
    std::string moveMedia(const std::string& site, const std::string& folderType, const std::string& path,
                          const std::string& folder, int advId = 0);
    /// "-1" gone.
    std::string deleteMedia(const std::string& site, const std::string& folderType, const std::string& path,
                            int advId = 0);

    // ---- Logins (desk/LoginList.cpp) ----

    /// All logins, by name: number, username, name, job, when each logged in last, whether it is online, its
    /// first and last day, whether it is a program's, whether its password is kept strongly, and how many roles
    /// it has.
    Value getLogins();

    // ---- Roles (desk/Roles.cpp, desk/RoleRights.cpp, desk/RightsImpact.cpp) ----
    // `rights` are five flags: onOff, move, publish, approve, edit. A `scope` is nodes divided by commas, "" for
    // the whole tree. An `entry` is one of the administration menu; an empty site or language means all of them.
    // Nobody gives what she hasn't got, and nobody but "sa" takes the last right to administer from all others.
    // A change is refused while another session has the record, and leaves its lock as it is.

    /// Number, name, description and how many logins have it; by name.
    Value getRoles();
    /// All logins, by name: number, username, name, and 1 where the login has the role.
    Value getRoleLogins(int roleId);
    /// All that a role gives to pages: site, language, five flags, scope.
    Value getEditRights(int roleId);
    /// All that a role opens: entry, site, language, view, edit.
    Value getAdvancedRights(int roleId);

    /// The number of the role, a new one for 0, and lets it go. "-1" gone, "-2" another role has the name, "-3"
    /// no name, "-4" another session has it open.
    std::string saveRole(int roleId, const std::string& name, const std::string& description, int advId = 0);
    /// In place of what the role had in the site and language. "-1" gone, "-2" no such site or language, "-3"
    /// flags that are none, or a page of the scope that isn't there, "-4" open elsewhere, "-5" more than the
    /// caller has.
    std::string setEditRights(int roleId, const std::string& site, const std::string& lang,
                              const std::string& rights, const std::string& scope = "", int advId = 0);
    /// In place of what the role had of the entry there. "-1" gone, "-2" no such entry, "-3" nothing that the
    /// entry offers, or not for such a place, "-4" open elsewhere, "-5" more than the caller has, "-6" nobody
    /// would be left to administer.
    std::string setAdvancedRight(int roleId, int entry, const std::string& site, const std::string& lang,
                                 bool view, bool edit, int advId = 0);
    /// "-1" the login or the role is gone, "-4" the login is open elsewhere, "-5" the role gives more than the
    /// caller has, "-6" nobody would be left to administer.
    std::string setLoginRole(int loginId, int roleId, bool has, int advId = 0);

    /// Whom `setEditRights` would hit: login, name, task, how many pages she may do it to now, and afterwards; by
    /// name. Those for whom it comes to the same aren't listed.
    Value weighEditRights(int roleId, const std::string& site, const std::string& lang,
                          const std::string& rights, const std::string& scope = "");
    /// Whom `setAdvancedRight` would hit: login, name, "view" or "edit", whether she has it now, and afterwards.
    Value weighAdvancedRight(int roleId, int entry, const std::string& site, const std::string& lang,
                             bool view, bool edit);

    // ---- Any record (desk/OpenRecord.cpp) ----

    /// Takes a record's lock for this session where the login may change the record. One row: "held" now,
    /// "other" has it, "noRight" or "gone"; number and name of who has it. `item` and `id` are those of
    /// `lockItem`; for the settings ("config") the id doesn't count.
    Value open(const std::string& item, const std::string& id);

  private:
    db::Connection& connection() { return connection_.use(host_); }
    bool isLoggedIn() const;
    /// A line of the trail, when `advId` is above 0. That it can't be written is told to operators: the change
    /// is made.
    void recordChange(std::string_view operation, int advId, std::string_view action,
                      const std::string& description);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
