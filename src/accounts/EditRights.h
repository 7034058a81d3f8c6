#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// What may be allowed to be done to pages, in the order in which flags stand in a text.
enum class EditTask { OnOff, Move, Publish, Approve, Edit };
inline constexpr std::array editTasks{EditTask::OnOff, EditTask::Move, EditTask::Publish, EditTask::Approve,
                                      EditTask::Edit};

/// The word of a task, which is the name of its column.
std::string_view wordOf(EditTask task);
/// The task of a word in any case; nothing for any other word.
std::optional<EditTask> editTaskOf(std::string_view word);

/// Some of the tasks.
class EditRights {
  public:
    static EditRights all();

    bool has(EditTask task) const { return given_[static_cast<std::size_t>(task)]; }
    void give(EditTask task) { given_[static_cast<std::size_t>(task)] = true; }
    /// A "1" or "0" for each.
    std::string text() const;

  private:
    std::array<bool, editTasks.size()> given_{};
};

// By the rows of a login's roles: each gives rights in one site and language, to the whole tree or to the
// nodes of its scope and what lies under them, and the login has them all. The administrator has every right
// without a row: who asks for a login that may be his looks at that first, as the functions for an actor do.

/// The rights that reach a node. `site` and `lang` are those of the tree as the caller says it.
EditRights editRightsOf(db::Connection& connection, int loginId, std::string_view site, std::string_view lang,
                        std::string_view nodeId);
/// The nodes, divided by commas, under which the login may do the task: the root for the whole tree, "" for
/// none.
std::string editScopeOf(db::Connection& connection, int loginId, std::string_view site, std::string_view lang,
                        EditTask task);

/// Whether the actor may do it to the page of this node, in the site and language where the node is.
bool mayEditPage(db::Connection& connection, const Actor& actor, EditTask task, std::string_view nodeId);
/// Whether to the whole tree: what a scope gives is not enough.
bool mayEditTree(db::Connection& connection, const Actor& actor, EditTask task, std::string_view site,
                 std::string_view lang);
/// Whether anywhere in the tree; never where there is no such site or language.
bool mayEditSomewhere(db::Connection& connection, const Actor& actor, EditTask task, std::string_view site,
                      std::string_view lang);

}  // namespace torvex
