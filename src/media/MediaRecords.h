#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "media/MediaFolders.h"

namespace torvex {

/// A file of a folder, by its name there.
struct MediaPath {
    MediaFolder folder;
    std::string name;

    /// As the register names it: "001/002/rose.gif".
    std::string relative() const { return relativePathOf(folder.id) + name; }
    std::string absolute(const HostContext& host) const { return directoryOf(host, folder) + "/" + name; }
};

/// Nothing for a text that isn't a site, folders and a name: it could lead to other directories.
std::optional<MediaPath> mediaPathOf(MediaKind kind, std::string_view site, std::string_view relative);
/// "jpg" of "rose.JPG"; "" without an end.
std::string mediaSuffix(std::string_view name);

/// What a file itself tells; all 0 when there is none. Width and height are 0 for what is no picture.
struct MediaFacts {
    double size = 0;
    double width = 0;
    double height = 0;
};
MediaFacts readMediaFacts(HostContext& host, const MediaPath& file);

/// What the register knows of a file, whichever kind it is.
struct MediaRecord {
    double id = 0;
    std::string folder;
    std::string path;
    std::string title;
    MediaFacts facts;
    std::optional<std::string> alt;  ///< nothing until somebody has said it, "" for decoration
};

/// Nothing when the register doesn't have the file; of a file that is registered twice, the first entry.
std::optional<MediaRecord> findMedia(db::Connection& connection, const MediaPath& file);
/// Those of the folder and all below it, by folder and title.
std::vector<MediaRecord> listMedia(db::Connection& connection, const MediaFolder& folder);
/// Number, folder, path and so on, in the order of the grid's columns.
std::vector<Value> cellsOf(const MediaRecord& record);

/// Whether another file of the folder has the title.
bool isMediaTitleTaken(db::Connection& connection, const MediaFolder& folder, std::string_view title,
                       double exceptId);
/// Whether one of the file's titles is that of a file of another folder.
bool isMediaTitleTakenIn(db::Connection& connection, const MediaPath& file, const MediaFolder& folder);
/// The title is of one entry; the alternative text, where one is given, of the file. For a transaction.
void writeMediaTexts(db::Connection& transaction, const MediaPath& file, double id, std::string_view title,
                     std::optional<std::string_view> alt);
void writeMediaFacts(db::Connection& transaction, const MediaPath& file, const MediaFacts& facts);
/// All entries of the file come into another folder of its site. For a transaction.
void moveMediaRows(db::Connection& transaction, const MediaPath& file, const MediaFolder& into);
/// All entries of the file; false when there is none. For a transaction.
bool removeMediaRows(db::Connection& transaction, const MediaPath& file);

/// Every folder of a site: id, name, parent, level, and how many files lie in it; by id.
Value listMediaFolders(db::Connection& connection, MediaKind kind, std::string_view site);
/// For a transaction.
void writeFolderName(db::Connection& transaction, const MediaFolder& folder, std::string_view name);

}  // namespace torvex
