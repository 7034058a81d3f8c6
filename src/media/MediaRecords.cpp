#include "media/MediaRecords.h"

#include "media/Image.h"
#include "media/MediaFiles.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/db/Grid.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::string_view imageColumns =
    "select imgId as id, img_fldId as folder, img_filename as path, img_title as title, img_size as size, "
    "img_width as width, img_height as height, img_alt as alt from TORVEX_IMAGES where img_site = ?";
constexpr std::string_view documentColumns =
    "select docId as id, doc_fldId as folder, doc_filename as path, doc_title as title, doc_size as size, "
    "0 as width, 0 as height, doc_alt as alt from TORVEX_DOCUMENTS where doc_site = ?";

constexpr std::string_view ofFile = " and {prefix}_filename = ? order by {prefix}Id";
constexpr std::string_view ofBranch = " and {prefix}_fldId >= ? and {prefix}_fldId < ?";
constexpr std::string_view byTitle = " order by {prefix}_fldId, {prefix}_title, {prefix}Id";

constexpr std::string_view selectOfTitle =
    "select {prefix}Id from {files} where {prefix}_site = ? and {prefix}_fldId = ? and {prefix}_title = ? "
    "and {prefix}Id <> ?";
constexpr std::string_view selectTitleThere =
    "select a.{prefix}Id from {files} a inner join {files} b on b.{prefix}_title = a.{prefix}_title "
    "where a.{prefix}_site = ? and a.{prefix}_filename = ? and b.{prefix}_site = a.{prefix}_site "
    "and b.{prefix}_fldId = ?";
constexpr std::string_view updateTitle = "update {files} set {prefix}_title = ? where {prefix}Id = ?";
constexpr std::string_view updateAlt =
    "update {files} set {prefix}_alt = ? where {prefix}_site = ? and {prefix}_filename = ?";
constexpr std::string_view updateImageFacts =
    "update TORVEX_IMAGES set img_size = ?, img_width = ?, img_height = ? "
    "where img_site = ? and img_filename = ?";
constexpr std::string_view updateDocumentFacts =
    "update TORVEX_DOCUMENTS set doc_size = ? where doc_site = ? and doc_filename = ?";
constexpr std::string_view updateFolder =
    "update {files} set {prefix}_filename = ?, {prefix}_fldId = ? where {prefix}_site = ? and "
    "{prefix}_filename = ?";
constexpr std::string_view deleteFile =
    "delete from {files} where {prefix}_site = ? and {prefix}_filename = ?";

constexpr std::string_view selectFolders =
    "select f.fld_id as folder, f.fld_name as name, f.fld_parent as parent, f.fld_level as level, "
    "(select count(*) from {files} c where c.{prefix}_site = f.fld_site and c.{prefix}_fldId = f.fld_id) "
    "as files from {folders} f where f.fld_site = ? order by f.fld_id";
constexpr std::string_view updateFolderName =
    "update {folders} set fld_name = ? where fld_site = ? and fld_id = ?";

std::string columnsOf(MediaKind kind) {
    return std::string(kind == MediaKind::Images ? imageColumns : documentColumns);
}

MediaRecord recordOf(const db::Rows& rows) {
    MediaRecord record{rows.number("id"),
                       rows.text("folder"),
                       rows.text("path"),
                       rows.text("title"),
                       {rows.number("size"), rows.number("width"), rows.number("height")},
                       {}};
    if (const Value alt = rows.value("alt"); !alt.isEmpty()) record.alt = alt.toText();
    return record;
}

}  // namespace

std::optional<MediaPath> mediaPathOf(MediaKind kind, std::string_view site, std::string_view relative) {
    MediaPath file{{kind, text::lowerTrim(site), {}}, {}};
    relative = text::trim(relative);
    while (relative.size() > folderLevelLength && relative[folderLevelLength] == '/') {
        file.folder.id.append(relative.substr(0, folderLevelLength));
        relative.remove_prefix(folderLevelLength + 1);
    }
    file.name = relative;
    const bool isSite = !file.folder.site.empty() && isSafeCode(file.folder.site);
    if (!isSite || !isFolderId(file.folder.id) || !isMediaFileName(file.name)) return std::nullopt;
    return file;
}

std::string mediaSuffix(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : text::lower(name.substr(dot + 1));
}

MediaFacts readMediaFacts(HostContext& host, const MediaPath& file) {
    const std::string path = file.absolute(host);
    MediaFacts facts{static_cast<double>(host.files.fileSize(path).value_or(0))};
    if (file.folder.kind != MediaKind::Images) return facts;
    Image image(host);
    image.setFilename(path);
    facts.width = image.width();
    facts.height = image.height();
    return facts;
}

std::optional<MediaRecord> findMedia(db::Connection& connection, const MediaPath& file) {
    const std::string statement = columnsOf(file.folder.kind) + statementFor(file.folder.kind, ofFile);
    auto rows = connection.query(statement, {file.folder.site, file.relative()});
    if (!rows.next()) return std::nullopt;
    return recordOf(rows);
}

std::vector<MediaRecord> listMedia(db::Connection& connection, const MediaFolder& folder) {
    std::string statement = columnsOf(folder.kind);
    std::vector<db::Parameter> values{folder.site};
    const std::string end = folder.id.empty() ? std::string() : endOfPrefix(folder.id);
    if (!folder.id.empty()) {
        statement += statementFor(folder.kind, ofBranch);
        values.insert(values.end(), {folder.id, end});
    }
    std::vector<MediaRecord> records;
    auto rows = connection.query(statement + statementFor(folder.kind, byTitle), values);
    while (rows.next()) records.push_back(recordOf(rows));
    return records;
}

std::vector<Value> cellsOf(const MediaRecord& record) {
    return {record.folder,       record.path,
            record.title,        mediaSuffix(record.path),
            record.facts.size,   record.facts.width,
            record.facts.height, record.alt ? Value(*record.alt) : Value()};
}

bool isMediaTitleTaken(db::Connection& connection, const MediaFolder& folder, std::string_view title,
                       double exceptId) {
    const std::string statement = statementFor(folder.kind, selectOfTitle);
    return connection.query(statement, {folder.site, folder.id, title, exceptId}).next();
}

bool isMediaTitleTakenIn(db::Connection& connection, const MediaPath& file, const MediaFolder& folder) {
    const std::string statement = statementFor(folder.kind, selectTitleThere);
    return connection.query(statement, {folder.site, file.relative(), folder.id}).next();
}

void writeMediaTexts(db::Connection& transaction, const MediaPath& file, double id, std::string_view title,
                     std::optional<std::string_view> alt) {
    transaction.execute(statementFor(file.folder.kind, updateTitle), {title, id});
    if (!alt) return;
    transaction.execute(statementFor(file.folder.kind, updateAlt), {*alt, file.folder.site, file.relative()});
}

void writeMediaFacts(db::Connection& transaction, const MediaPath& file, const MediaFacts& facts) {
    const std::string path = file.relative();
    if (file.folder.kind == MediaKind::Images) {
        transaction.execute(updateImageFacts,
                            {facts.size, facts.width, facts.height, file.folder.site, path});
    } else {
        transaction.execute(updateDocumentFacts, {facts.size, file.folder.site, path});
    }
}

void moveMediaRows(db::Connection& transaction, const MediaPath& file, const MediaFolder& into) {
    const std::string to = MediaPath{into, file.name}.relative();
    transaction.execute(statementFor(into.kind, updateFolder),
                        {to, into.id, file.folder.site, file.relative()});
}

bool removeMediaRows(db::Connection& transaction, const MediaPath& file) {
    const std::string statement = statementFor(file.folder.kind, deleteFile);
    return transaction.execute(statement, {file.folder.site, file.relative()}) > 0;
}

Value listMediaFolders(db::Connection& connection, MediaKind kind, std::string_view site) {
    return db::gridOf(connection.query(statementFor(kind, selectFolders), {site}), 0);
}

void writeFolderName(db::Connection& transaction, const MediaFolder& folder, std::string_view name) {
    transaction.execute(statementFor(folder.kind, updateFolderName), {name, folder.site, folder.id});
}

}  // namespace torvex
