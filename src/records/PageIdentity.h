#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// A page's two names: its permanent number and its place in the tree ("site.lang.NN.NN").
struct PageIdentity {
    PageId pageId = -1;
    std::string nodeId;

    /// Whether both are there: a number above 0 and a node of at least a root's length.
    bool isValid() const { return pageId > 0 && nodeId.size() >= rootLength; }

    static constexpr std::size_t rootLength = 5;   ///< "ss.ll"
    static constexpr std::size_t levelLength = 3;  ///< ".NN"
    /// No tree is that deep. A longer text is no page: walking up it level by level would take minutes.
    static constexpr std::size_t longestNode = 1000;
};

/// Both names convert by the design tables, so that they do so before a page is published.
/// "" when there is no such page.
std::string nodeIdOf(db::Connection& connection, PageId pageId);
/// -1 when there is no such page, or the text is blank.
PageId pageIdOf(db::Connection& connection, std::string_view nodeId);

// Texts that name a page are read here, where a public operation is given one. Further inside a page is a
// number, a node or both.

/// Both names for a text that holds either one, in any case and with blanks around it. A lookup that fails
/// has its own line in front ("getNodeId !", "getPageId !"), as one level of the operation that asked.
PageIdentity identify(db::Connection& connection, std::string_view pageIdent);
/// The half of it that an operation needs.
std::string nodeIdFrom(db::Connection& connection, std::string_view pageIdent);
PageId pageIdFrom(db::Connection& connection, std::string_view pageIdent);

// The same for a page that is known by its number, with the same lines.
PageIdentity identify(db::Connection& connection, PageId pageId);
std::string nodeIdFrom(db::Connection& connection, PageId pageId);

/// The parts of a node. Views into it; "" where it is too short.
std::string_view siteOf(std::string_view nodeId);
std::string_view langOf(std::string_view nodeId);
/// The node without its last level: all code walks up the tree by this cut.
std::string_view parentOf(std::string_view nodeId);
/// Whether two nodes lie in the tree of one site and language.
bool inSameTree(std::string_view oneNode, std::string_view otherNode);
/// Levels of a node, its root being the first.
std::size_t levelsOf(std::string_view nodeId);

/// The texts that begin with `prefix` are those from it on that come before this one: a range that an index
/// serves, where a `like` would read the whole table. `prefix` must not be empty.
std::string endOfPrefix(std::string_view prefix);

/// Which of the twin tables an operation works on.
enum class Twin { Live, Design };

/// "D" in either case is the design, anything else the live tables.
Twin twinOf(std::string_view mode);
/// Where a body is named, "L" is the live tables and anything else the design: its authors rarely want what
/// is live.
Twin twinOfBody(std::string_view mode);

}  // namespace torvex
