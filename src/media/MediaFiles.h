#pragma once

#include <string>
#include <string_view>

#include "media/MediaFolders.h"

namespace torvex {

/// Whether a text can be the name of a file in a folder: it leads to no other directory.
bool isMediaFileName(std::string_view name);

/// Registers a file of a folder's directory under a title, which is made unique within the folder and cut to
/// 50 characters. Size, width and height are 0 for a file that isn't there. `name` is in small letters.
/// Throws `DatabaseError` and what reading the file throws.
void registerMediaFile(HostContext& host, db::Connection& connection, const MediaFolder& folder,
                       const std::string& name, std::string_view title);

/// Which images or documents a list holds. A folder's list holds those of the folders below it too.
struct ImageFilter {
    std::string site;
    std::string folderId;  ///< "" for all
    int width = -1;        ///< negative for any
    int height = -1;
};
struct DocumentFilter {
    std::string site;
    std::string folderId;  ///< "" for all
    std::string type;      ///< "" for all
};
/// Folder, title, file, size, width and height, by folder and title.
Value listImages(db::Connection& connection, const ImageFilter& filter);
/// Folder, title, file and type, by folder and title.
Value listDocuments(db::Connection& connection, const DocumentFilter& filter);

}  // namespace torvex
