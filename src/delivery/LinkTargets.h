#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "records/PageIdentity.h"

namespace torvex {

namespace db {
class Connection;
class Rows;
}  // namespace db

/// The pages that the links of one page lead to. What is learned beforehand costs a statement or two for all
/// of them; the answers equal asking one by one. Lives for one page.
class LinkTargets {
  public:
    /// `today` is yyyymmdd.
    LinkTargets(db::Connection& connection, std::string today)
        : connection_(connection), today_(std::move(today)) {}

    /// Identifiers are pageIds or nodeIds, in lower case and without blanks around them.
    void learn(const std::vector<std::string>& identifiers);

    /// Whether the page shows today; a folder is followed to its first child.
    bool isOnline(const std::string& identifier);
    /// Both names of the page, as far as there is one.
    const PageIdentity& identityOf(const std::string& identifier);

  private:
    enum class State { Offline, Online, Folder };

    struct Target {
        PageIdentity identity;
        State state = State::Offline;
    };

    Target& targetOf(const std::string& identifier);
    void learnNumbers(const std::vector<std::string_view>& identifiers);
    void askForNumbers(const std::vector<Target*>& wanted);
    static std::string written(const std::vector<Target*>& targets);
    static void read(std::string_view known, const std::vector<Target*>& targets);
    void learnNodes(const std::vector<std::string_view>& identifiers);
    void learnStates(const std::vector<Target*>& targets);
    void takeState(Target& target, const db::Rows& rows) const;
    bool doesFolderShow(const std::string& nodeId) const;

    db::Connection& connection_;
    const std::string today_;
    std::map<std::string, Target, std::less<>> targets_;
};

}  // namespace torvex
