#include "media/UploadTree.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view neverNamed = "new folder";
constexpr std::string_view root = "root";

constexpr std::string_view countFiles = "select count(*) as total from {files} where {prefix}_site = ?";
constexpr std::string_view selectFolders =
    "select fld_id, fld_name, fld_parent from {folders} where fld_site = ? order by fld_level, fld_name, "
    "fld_id";
constexpr std::string_view countByFolder =
    "select {prefix}_fldId as fld_id, count(*) as total from {files} where {prefix}_site = ? "
    "group by {prefix}_fldId";

struct Folder {
    std::string id;
    std::string name;
    std::string parent;
};

std::vector<Folder> readFolders(db::Connection& connection, const UploadTree& tree) {
    std::vector<Folder> folders;
    auto rows = connection.query(statementFor(tree.kind, selectFolders), {tree.site});
    while (rows.next())
        folders.push_back({rows.text("fld_id"), rows.text("fld_name"), rows.text("fld_parent")});
    return folders;
}

/// Numbers by folder, each counted for the folders above it too.
class BranchTotals {
  public:
    void add(std::string_view folderId, double number) {
        for (std::size_t length = folderLevelLength; length <= folderId.size(); length += folderLevelLength) {
            totals_[std::string(folderId.substr(0, length))] += number;
        }
    }
    double of(const std::string& folderId) const {
        const auto found = totals_.find(folderId);
        return found == totals_.end() ? 0 : found->second;
    }

  private:
    std::unordered_map<std::string, double> totals_;
};

BranchTotals countFilesByBranch(db::Connection& connection, const UploadTree& tree) {
    BranchTotals totals;
    auto rows = connection.query(statementFor(tree.kind, countByFolder), {tree.site});
    while (rows.next()) totals.add(rows.text("fld_id"), rows.number("total"));
    return totals;
}

/// What no script's text can hold becomes a blank.
std::string plain(std::string_view name) {
    std::string line(text::trim(name));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

std::string encoded(std::string_view name) {
    return text::htmlEncode(scriptText(plain(name)));
}

std::string titleOf(const Folder& folder, const UploadTree& tree) {
    if (text::equals(text::trim(folder.name), neverNamed)) return "<i>" + encoded(tree.newFolder) + "</i>";
    return text::replaceAll(encoded(folder.name), " ", "&nbsp;");
}

std::string parentNode(std::string_view parentId) {
    return parentId.empty() ? std::string(root) : "F" + std::string(parentId);
}

/// The parent of the active folder, as its node is called in the script.
std::string activeParent(std::string_view activeFolder) {
    if (activeFolder.size() <= folderLevelLength) return std::string(root);
    return std::string(activeFolder.substr(0, activeFolder.size() - folderLevelLength));
}

std::string filled(HostContext& host, std::string block, const Folder& folder, const UploadTree& tree,
                   double total) {
    HTMLTemplate line(host);
    line.setStrVal(std::move(block));
    line.replaceTag("node", "F" + folder.id);
    line.replaceTag("parent", parentNode(folder.parent));
    line.replaceTag("title", titleOf(folder, tree));
    line.replaceTag("folderId", folder.id);
    line.replaceTag("total", text::fromNumber(total));
    return line.takeStrVal();
}

/// The lines of all folders, and the clicks that open the way to the active one.
struct Lines {
    std::string folders;
    std::string clicks;
};

Lines linesOf(HostContext& host, db::Connection& connection, const HTMLTemplate& page,
              const UploadTree& tree) {
    const auto folders = readFolders(connection, tree);
    const BranchTotals files = countFilesByBranch(connection, tree);
    BranchTotals branches;
    for (const Folder& folder : folders) branches.add(folder.id, 1);
    const std::string folderBlock = page.extractBlock("folder");
    const std::string itemBlock = page.extractBlock("item");
    Lines lines;
    for (const Folder& folder : folders) {
        const bool hasSubfolders = branches.of(folder.id) > 1;
        lines.folders +=
            filled(host, hasSubfolders ? folderBlock : itemBlock, folder, tree, files.of(folder.id));
        if (hasSubfolders && text::startsWith(tree.activeFolder, folder.id)) {
            lines.clicks += "clickOnNode(F" + folder.id + ".id);";
        }
    }
    return lines;
}

double totalOf(db::Rows rows) {
    return rows.next() ? rows.number("total") : 0;
}

}  // namespace

std::string uploadTreeScript(HostContext& host, db::Connection& connection, const UploadTree& tree) {
    HTMLTemplate page(host);
    page.setStrVal(std::string(uploadTreeTemplate));
    const double all = totalOf(connection.query(statementFor(tree.kind, countFiles), {tree.site}));
    page.replaceTag("bigTotal", text::fromNumber(all));
    const Lines lines = linesOf(host, connection, page, tree);
    page.replaceTag("parent", activeParent(tree.activeFolder));
    page.replaceTag("activeFolder", tree.activeFolder);
    page.replaceTag("torvex_site", encoded(tree.site));
    page.replaceTag("tvMode", encoded(tree.mode));
    page.replaceTag("flag", encoded(tree.mode));
    page.replaceTag("siteName", encoded(tree.siteName));
    page.replaceTag("clickStr", lines.clicks);
    page.replaceBlock("folder", "");
    page.replaceBlock("item", lines.folders);
    return page.takeStrVal();
}

}  // namespace torvex
