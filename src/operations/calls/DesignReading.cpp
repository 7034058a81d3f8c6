#include "operations/calls/DesignReading.h"

#include <algorithm>
#include <string>
#include <vector>

#include "accounts/DesignRights.h"
#include "operations/calls/CallValues.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex::operations {

namespace {

constexpr std::string_view recordNumber = "pgPageId";
constexpr std::string_view recordNode = "pgNodeId";

struct Tree {
    std::string site;
    std::string lang;
};
using Trees = std::vector<Tree>;

/// Operations don't agree on what a mode is that is neither "L" nor "D": what may be the design counts as it.
bool isLive(const CallValues& values, const std::string& mode) {
    if (mode.empty()) return false;
    const std::string given = text::lowerTrim(values.text(mode));
    return given == "l" || (given != "d" && values.isDefault(mode));
}

void addTreeOf(Trees& trees, std::string_view nodeId) {
    if (nodeId.size() < PageIdentity::rootLength) return;
    trees.push_back({text::lower(siteOf(nodeId)), text::lower(langOf(nodeId))});
}

/// The number and the node are two properties, which need not be of one page.
Trees treesOfRecord(db::Connection& connection, const std::function<Value(std::string_view name)>& property) {
    Trees trees;
    addTreeOf(trees, nodeIdFrom(connection, property(recordNumber).toText()));
    addTreeOf(trees, text::trim(property(recordNode).toText()));
    return trees;
}

Trees treesNamed(db::Connection& connection, const Right::Design& design, const CallValues& values) {
    Trees trees;
    addTreeOf(trees, nodeIdFrom(connection, values.text(design.page)));
    if (design.site.empty()) return trees;
    Tree named{text::lowerTrim(values.text(design.site)), text::lowerTrim(values.text(design.lang))};
    const bool isNamed = !named.site.empty() || !named.lang.empty();
    if (isNamed || trees.empty()) trees.push_back(std::move(named));
    return trees;
}

}  // namespace

bool mayReadDesigns(db::Connection& connection, const Actor& actor, const Right::Design& design,
                    const CallValues& values, const std::function<Value(std::string_view name)>& property) {
    if (isLive(values, design.mode)) return true;
    if (design.isOfAllTrees) return mayReadEachDesign(connection, actor);
    const Trees trees =
        design.isOfRecord ? treesOfRecord(connection, property) : treesNamed(connection, design, values);
    return std::ranges::all_of(
        trees, [&](const Tree& tree) { return mayReadDesign(connection, actor, tree.site, tree.lang); });
}

}  // namespace torvex::operations
