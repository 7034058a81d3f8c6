#include "media/MediaFolders.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Groups.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectName = "select fld_name from {folders} where fld_site = ? and fld_id = ?";
constexpr std::string_view selectChildren =
    "select fld_id from {folders} where fld_site = ? and fld_parent = ? order by fld_id";
constexpr std::string_view selectNamesake =
    "select fld_id from {folders} where fld_site = ? and fld_parent = ? and fld_name = ? order by fld_id";
constexpr std::string_view insertFolder =
    "insert into {folders} (fld_site, fld_id, fld_name, fld_level, fld_parent) values (?, ?, 'New folder', "
    "?, ?) "
    "on conflict do nothing";

// The branch of a folder is the range from its id to what follows its last digit.
constexpr std::string_view deleteFiles =
    "delete from {files} where {prefix}_site = ? and {prefix}_fldId >= ? and {prefix}_fldId < ?";
constexpr std::string_view deleteFolders =
    "delete from {folders} where fld_site = ? and fld_id >= ? and fld_id < ?";
constexpr std::string_view deleteBranchGroups =
    "delete from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id >= ? and fld_id < ?";

constexpr std::string_view selectGroups = "select groupId, name from TORVEX_USERGROUPS order by name";
constexpr std::string_view selectFolderGroups =
    "select groupId from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ?";
constexpr std::string_view deleteAllGroups =
    "delete from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ?";
constexpr std::string_view deleteGeneralGroups =
    "delete from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ? "
    "and (groupId = 0 or groupId = 1)";
constexpr std::string_view deleteGroup =
    "delete from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ? and groupId = ?";
constexpr std::string_view selectGroup =
    "select groupId from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ? and "
    "groupId = ?";
constexpr std::string_view insertGroup =
    "insert into TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId) values (?, ?, ?, ?)";

constexpr int lastNumber = 999;

std::string_view prefixOf(const MediaFolder& folder) {
    return namesOf(folder.kind).prefix;
}

std::string_view parentId(std::string_view id) {
    return id.substr(0, id.size() - folderLevelLength);
}

}  // namespace

bool isFolderId(std::string_view id) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return id.size() % folderLevelLength == 0 && id.size() <= longestFolderId &&
           std::all_of(id.begin(), id.end(), isDigit);
}

std::string relativePathOf(std::string_view folderId) {
    std::string path;
    for (; !folderId.empty(); folderId.remove_prefix(std::min(folderLevelLength, folderId.size()))) {
        path.append(folderId.substr(0, folderLevelLength)).append("/");
    }
    return path;
}

std::string directoryOf(const HostContext& host, const MediaFolder& folder) {
    std::string directory =
        mediaDirectory(host.application, folder.kind, folder.site) + "/" + relativePathOf(folder.id);
    directory.pop_back();
    return directory;
}

bool folderExists(db::Connection& connection, const MediaFolder& folder) {
    return connection.query(statementFor(folder.kind, selectName), {folder.site, folder.id}).next();
}

std::string folderName(db::Connection& connection, const MediaFolder& folder) {
    auto rows = connection.query(statementFor(folder.kind, selectName), {folder.site, folder.id});
    return rows.next() ? rows.text("fld_name") : std::string();
}

std::string freeFolderId(db::Connection& connection, const MediaFolder& parent) {
    int number = 1;
    auto rows = connection.query(statementFor(parent.kind, selectChildren), {parent.site, parent.id});
    while (rows.next() && rows.text("fld_id") == fmt::format("{}{:03}", parent.id, number)) ++number;
    std::string id = fmt::format("{}{:03}", parent.id, number);
    return number > lastNumber || id.size() > longestFolderId ? std::string() : id;
}

std::string namesake(db::Connection& connection, const MediaFolder& parent, std::string_view name) {
    auto rows = connection.query(statementFor(parent.kind, selectNamesake), {parent.site, parent.id, name});
    return rows.next() ? rows.text("fld_id") : std::string();
}

bool enterFolder(db::Connection& transaction, const MediaFolder& folder) {
    const int level = static_cast<int>(folder.id.size() / folderLevelLength);
    const auto added = transaction.execute(statementFor(folder.kind, insertFolder),
                                           {folder.site, folder.id, level, parentId(folder.id)});
    if (added == 0) return false;
    // A former folder of this number may have left some.
    removeFolderGroups(transaction, folder);
    transaction.execute(insertGroup, {prefixOf(folder), folder.site, folder.id, inheritedGroup});
    return true;
}

void removeFolderRows(db::Connection& transaction, const MediaFolder& folder) {
    const std::string end = endOfPrefix(folder.id);
    transaction.execute(statementFor(folder.kind, deleteFiles), {folder.site, folder.id, end});
    transaction.execute(statementFor(folder.kind, deleteFolders), {folder.site, folder.id, end});
    removeFolderGroups(transaction, folder);
}

Value folderGroups(db::Connection& connection, const MediaFolder& folder) {
    std::vector<double> own;
    auto marks = connection.query(selectFolderGroups, {prefixOf(folder), folder.site, folder.id});
    while (marks.next()) own.push_back(marks.number("groupId"));
    constexpr std::size_t columns = 4;
    ResultGrid grid(columns);
    auto rows = connection.query(selectGroups);
    while (rows.next()) {
        const bool has = std::find(own.begin(), own.end(), rows.number("groupId")) != own.end();
        grid.add({rows.value("groupId"), rows.value("name"), has ? 1 : 0});
    }
    return gridOrEmpty(std::move(grid));
}

void removeFolderGroups(db::Connection& transaction, const MediaFolder& folder) {
    transaction.execute(deleteBranchGroups,
                        {prefixOf(folder), folder.site, folder.id, endOfPrefix(folder.id)});
}

void admitGroup(db::Connection& transaction, const MediaFolder& folder, int groupId) {
    const bool isGeneral = groupId == inheritedGroup || groupId == everybodyGroup;
    transaction.execute(isGeneral ? deleteAllGroups : deleteGeneralGroups,
                        {prefixOf(folder), folder.site, folder.id});
    if (transaction.query(selectGroup, {prefixOf(folder), folder.site, folder.id, groupId}).next()) return;
    transaction.execute(insertGroup, {prefixOf(folder), folder.site, folder.id, groupId});
}

void dismissGroup(db::Connection& transaction, const MediaFolder& folder, int groupId) {
    transaction.execute(deleteGroup, {prefixOf(folder), folder.site, folder.id, groupId});
}

}  // namespace torvex
