#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

/// Where a link leads an author.
struct PreviewTarget {
    enum class State { Missing, Offline, Good };

    State state = State::Missing;
    PageId pageId = -1;  ///< the page to go to; of a folder its first child
    std::string nodeId;  ///< of that page
};

/// The pages that the links of one page lead to, in one of the modes. A folder is the first of its children
/// that is a page and on line; one that holds nothing but folders is what the first of these is. In the
/// design every page is on line.
///
/// What is learned beforehand costs a statement or two for all of them, and one more for each level of
/// folders; the answers equal asking one by one. Lives for one page.
class PreviewTargets {
  public:
    /// `today` is yyyymmdd.
    PreviewTargets(db::Connection& connection, Twin twin, std::string today)
        : connection_(connection), twin_(twin), today_(std::move(today)) {}

    /// Identifiers are pageIds or nodeIds, in lower case and without blanks around them.
    void learn(const std::vector<std::string>& identifiers);

    const PreviewTarget& of(const std::string& identifier);

  private:
    struct Row;
    using Folders = std::multimap<std::string, PreviewTarget*>;

    void learnPages(const std::vector<std::string>& identifiers, Folders& folders);
    void openFolders(Folders& folders);
    void take(PreviewTarget& target, const Row& row, Folders& folders) const;

    db::Connection& connection_;
    const Twin twin_;
    const std::string today_;
    std::map<std::string, PreviewTarget, std::less<>> targets_;
};

}  // namespace torvex
