#pragma once

#include <string>
#include <string_view>

namespace torvex {
class ApplicationValues;

/// Every site has a tree of images and one of documents. They are kept alike, in tables of their own.
enum class MediaKind { Images, Documents };

/// "images" and "pictures" mean images, anything else documents. Case and blanks around don't count.
MediaKind mediaKindOf(std::string_view word);

/// What differs between the two, in the words of the database and of the audit trail.
struct MediaNames {
    std::string_view prefix;        ///< of the columns of files, and `fld_type` of the folders' groups
    std::string_view word;          ///< "Image": of the audit trail
    std::string_view files;         ///< the table of files
    std::string_view folders;       ///< the table of folders
    std::string_view directoryKey;  ///< the application value that holds the folder of all sites
};
const MediaNames& namesOf(MediaKind kind);

/// The statement for one kind: "{prefix}", "{files}" and "{folders}" in it are filled from its names.
std::string statementFor(MediaKind kind, std::string_view pattern);

/// The directory of a site's media, without a divider at its end.
std::string mediaDirectory(const ApplicationValues& application, MediaKind kind, std::string_view site);

}  // namespace torvex
