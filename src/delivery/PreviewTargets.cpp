#include "delivery/PreviewTargets.h"

#include <algorithm>
#include <optional>
#include <set>

#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view columnsLive =
    "select pageId, nodeId, parent, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where ";
constexpr std::string_view columnsDesign =
    "select pageId, nodeId, parent, type, 1 as online, '' as onlineFrom, '' as onlineTo "
    "from TORVEX_PAGES_DESIGN where ";
constexpr std::string_view inOrder = " order by parent, orderId, nodeId";

std::string withList(std::string_view columns, std::string_view key, std::string_view order = "") {
    return db::withList(std::string(columns).append(key)).append(order);
}

/// Of one of the twin tables: pages by number, by node, and the children of nodes.
struct Statements {
    explicit Statements(std::string_view columns)
        : byNumber(withList(columns, "pageId")),
          byNode(withList(columns, "nodeId")),
          byParent(withList(columns, "parent", inOrder)) {}

    const std::string byNumber;
    const std::string byNode;
    const std::string byParent;
};

const Statements& statementsOf(Twin twin) {
    static const Statements live(columnsLive);
    static const Statements design(columnsDesign);
    return twin == Twin::Design ? design : live;
}

}  // namespace

struct PreviewTargets::Row {
    Row(const db::Rows& rows, std::string_view today)
        : pageId(rows.number("pageId")),
          nodeId(text::lower(rows.text("nodeId"))),
          parent(text::lower(rows.text("parent"))),
          isFolder(torvex::isFolder(rows.view("type"))),
          isOnline(isOnlineOn(today, rows.number("online"), rows.text("onlineFrom"), rows.text("onlineTo"))) {
    }

    PageId pageId;
    std::string nodeId;
    std::string parent;
    bool isFolder;
    bool isOnline;
};

void PreviewTargets::take(PreviewTarget& target, const Row& row, Folders& folders) const {
    target.pageId = row.pageId;
    target.nodeId = row.nodeId;
    if (row.isFolder) {
        folders.emplace(row.nodeId, &target);
    } else {
        target.state = row.isOnline ? PreviewTarget::State::Good : PreviewTarget::State::Offline;
    }
}

void PreviewTargets::learn(const std::vector<std::string>& identifiers) {
    std::vector<std::string> wanted;
    for (const auto& identifier : identifiers) {
        if (!targets_.try_emplace(identifier).second) continue;
        if (!identifier.empty() && identifier.size() <= PageIdentity::longestNode)
            wanted.push_back(identifier);
    }
    Folders folders;
    learnPages(wanted, folders);
    // Rows that lead in a circle would open folders for ever; no tree is that deep.
    constexpr std::size_t deepest = PageIdentity::longestNode / PageIdentity::levelLength;
    for (std::size_t level = 0; level < deepest && !folders.empty(); ++level) openFolders(folders);
}

void PreviewTargets::learnPages(const std::vector<std::string>& identifiers, Folders& folders) {
    std::multimap<PageId, PreviewTarget*> byNumber;
    std::vector<db::Parameter> numbers;
    std::vector<db::Parameter> nodes;
    for (const auto& identifier : identifiers) {
        if (text::isNumeric(identifier)) {
            const PageId number = text::toNumber(identifier);
            byNumber.emplace(number, &targets_[identifier]);
            numbers.emplace_back(number);
        } else {
            nodes.emplace_back(std::string_view(identifier));
        }
    }
    db::forEachRow(connection_, statementsOf(twin_).byNumber, numbers, [&](const db::Rows& rows) {
        const Row row(rows, today_);
        const auto [first, last] = byNumber.equal_range(row.pageId);
        for (auto entry = first; entry != last; ++entry) {
            if (entry->second->pageId != row.pageId) take(*entry->second, row, folders);
        }
    });
    db::forEachRow(connection_, statementsOf(twin_).byNode, nodes, [&](const db::Rows& rows) {
        const Row row(rows, today_);
        const auto target = targets_.find(row.nodeId);
        if (target != targets_.end() && target->second.pageId != row.pageId)
            take(target->second, row, folders);
    });
}

/// Goes one level down. What a folder holds decides at its end, as a page on line may stand behind others.
void PreviewTargets::openFolders(Folders& folders) {
    struct Found {
        std::optional<Row> page;
        std::optional<Row> folder;
    };
    std::map<std::string, Found> found;
    for (const auto& [nodeId, target] : folders) found.try_emplace(nodeId);
    std::vector<db::Parameter> nodes;
    for (const auto& [nodeId, children] : found) nodes.emplace_back(std::string_view(nodeId));
    db::forEachRow(connection_, statementsOf(twin_).byParent, nodes, [&](const db::Rows& rows) {
        const Row row(rows, today_);
        const auto children = found.find(row.parent);
        if (children == found.end()) return;
        auto& [page, folder] = children->second;
        if (row.isFolder) {
            if (!folder) folder = row;
        } else if (!page || (!page->isOnline && row.isOnline)) {
            page = row;
        }
    });
    Folders below;
    for (const auto& [nodeId, target] : folders) {
        const auto& [page, folder] = found[nodeId];
        if (page || folder) take(*target, page ? *page : *folder, below);
    }
    folders = std::move(below);
}

const PreviewTarget& PreviewTargets::of(const std::string& identifier) {
    if (const auto known = targets_.find(identifier); known != targets_.end()) return known->second;
    learn({identifier});
    return targets_[identifier];
}

}  // namespace torvex
