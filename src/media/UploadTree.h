#pragma once

#include <string>
#include <string_view>

#include "media/MediaFolders.h"

namespace torvex {

/// What the script of the folder tree beside a list of files is made of.
struct UploadTree {
    MediaKind kind;
    std::string site;
    std::string siteName;
    std::string mode;          ///< handed on to the pages around: what has just been done
    std::string activeFolder;  ///< the folder that is shown open, "" for none
    std::string newFolder;     ///< the word for a folder that was never named
};

/// The script: the folders of a site with the number of files in each and below it, parents before children.
/// Names are encoded for the script and for HTML.
std::string uploadTreeScript(HostContext& host, db::Connection& connection, const UploadTree& tree);

/// The script as a template: blocks "folder" and "item", one of which each folder fills.
extern const std::string_view uploadTreeTemplate;

}  // namespace torvex
