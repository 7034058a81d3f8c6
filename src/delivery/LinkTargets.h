#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

class cServer;
namespace db {
class Connection;
}

/// The pages that the links of one page lead to. What is learned beforehand costs a few statements for all of
/// them; the answers equal asking one by one. Lives for one page.
class LinkTargets {
  public:
    /// `today` is yyyymmdd. `server` answers for folders, whose way has to be followed.
    LinkTargets(db::Connection& connection, cServer& server, std::string today)
        : connection_(connection), server_(server), today_(std::move(today)) {}

    /// Identifiers are pageIds or nodeIds, in lower case and without blanks around them.
    void learn(const std::vector<std::string>& identifiers);

    bool isOnline(const std::string& identifier);
    /// Both names of the page, as far as there is one.
    PageIdentity identityOf(const std::string& identifier);

  private:
    void learnIdentities(const std::vector<std::string>& identifiers);
    void learnState(const std::vector<std::string>& nodeIds);

    db::Connection& connection_;
    cServer& server_;
    const std::string today_;
    std::map<std::string, PageIdentity, std::less<>> identities_;
    std::map<std::string, bool, std::less<>> online_;  ///< by nodeId; folders are left out
};

}  // namespace torvex
