#include "media/MediaFiles.h"

#include <vector>

#include "media/Image.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/db/Grid.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::size_t longestTitle = 50;
/// Leaves room for the brackets around a number.
constexpr std::size_t longestNumberedTitle = 48;
constexpr std::size_t longestPath = 500;

constexpr std::string_view selectTitle =
    "select {prefix}_title from {files} where {prefix}_site = ? and {prefix}_fldId = ? and {prefix}_title = "
    "?";
constexpr std::string_view insertImage =
    "insert into TORVEX_IMAGES (img_site, img_title, img_filename, img_size, img_width, img_height, "
    "img_fldId) "
    "values (?, ?, ?, ?, ?, ?, ?)";
constexpr std::string_view insertDocument =
    "insert into TORVEX_DOCUMENTS (doc_site, doc_title, doc_filename, doc_size, doc_type, doc_fldId) "
    "values (?, ?, ?, ?, ?, ?)";

constexpr std::string_view selectImages =
    "select img_fldId, img_title, img_filename, img_size, img_width, img_height from TORVEX_IMAGES "
    "where img_site = ?";
constexpr std::string_view selectDocuments =
    "select doc_fldId, doc_title, doc_filename, doc_type from TORVEX_DOCUMENTS where doc_site = ?";

bool isTitleTaken(db::Connection& connection, const MediaFolder& folder, const std::string& title) {
    return connection.query(statementFor(folder.kind, selectTitle), {folder.site, folder.id, title}).next();
}

/// "Report", "Report(1)", "Report(2)" and so on.
std::string uniqueTitle(db::Connection& connection, const MediaFolder& folder, std::string_view wanted) {
    std::string title(text::first(wanted, longestTitle));
    for (int number = 1; isTitleTaken(connection, folder, title); ++number) {
        const std::string digits = std::to_string(number);
        title = std::string(text::first(wanted, longestNumberedTitle - digits.size())) + "(" + digits + ")";
    }
    return title;
}

std::string typeOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : text::lower(name.substr(dot + 1));
}

/// A statement that is put together by what is asked for.
struct Selection {
    explicit Selection(std::string_view begin, std::string_view site) : statement(begin), values{site} {}

    void narrow(std::string_view condition, db::Parameter value) {
        statement.append(" and ").append(condition);
        values.push_back(value);
    }

    std::string statement;
    std::vector<db::Parameter> values;
};

Value listOf(db::Connection& connection, Selection selection, std::string_view order) {
    selection.statement.append(order);
    return db::gridOf(connection.query(selection.statement, selection.values), 1);
}

}  // namespace

bool isMediaFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

void registerMediaFile(HostContext& host, db::Connection& connection, const MediaFolder& folder,
                       const std::string& name, std::string_view title) {
    const std::string file = directoryOf(host, folder) + "/" + name;
    const double size = static_cast<double>(host.files.fileSize(file).value_or(0));
    const std::string relative = relativePathOf(folder.id) + name;
    const std::string path(text::first(relative, longestPath));
    const std::string unique = uniqueTitle(connection, folder, title);
    if (folder.kind == MediaKind::Images) {
        Image image(host);
        image.setFilename(file);
        connection.execute(insertImage,
                           {folder.site, unique, path, size, image.width(), image.height(), folder.id});
    } else {
        connection.execute(insertDocument, {folder.site, unique, path, size, typeOf(name), folder.id});
    }
}

Value listImages(db::Connection& connection, const ImageFilter& filter) {
    Selection selection(selectImages, filter.site);
    const std::string end = filter.folderId.empty() ? std::string() : endOfPrefix(filter.folderId);
    if (!filter.folderId.empty()) {
        selection.narrow("img_fldId >= ?", std::string_view(filter.folderId));
        selection.narrow("img_fldId < ?", std::string_view(end));
    }
    if (filter.width >= 0) selection.narrow("img_width = ?", filter.width);
    if (filter.height >= 0) selection.narrow("img_height = ?", filter.height);
    return listOf(connection, std::move(selection), " order by img_fldId, img_title, imgId");
}

Value listDocuments(db::Connection& connection, const DocumentFilter& filter) {
    Selection selection(selectDocuments, filter.site);
    const std::string end = filter.folderId.empty() ? std::string() : endOfPrefix(filter.folderId);
    if (!filter.folderId.empty()) {
        selection.narrow("doc_fldId >= ?", std::string_view(filter.folderId));
        selection.narrow("doc_fldId < ?", std::string_view(end));
    }
    if (!filter.type.empty()) selection.narrow("doc_type = ?", std::string_view(filter.type));
    return listOf(connection, std::move(selection), " order by doc_fldId, doc_title, docId");
}

}  // namespace torvex
