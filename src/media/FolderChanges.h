#pragma once

#include <string>
#include <string_view>

#include "media/MediaFolders.h"

namespace torvex {
class SharedFiles;

/// What became of a wish for a folder.
struct AddedFolder {
    std::string id;  ///< "" when there is none: no parent, no free number, or something failed
    bool isNew = false;
};

/// Adds a folder below `parent` in the register and on the disk, and on the other servers. A folder of this
/// name that is there already is taken instead; its directories are made if they are missing. A failure
/// changes nothing and is told to operators. Two who add at once get two numbers.
AddedFolder addMediaFolder(HostContext& host, const MediaFolder& parent, std::string_view name);

/// Removes a folder with all in it and below it; false when that failed, which changes nothing and is told to
/// operators. A directory that stays behind is told too and does no harm.
bool removeMediaFolder(HostContext& host, const MediaFolder& folder);

/// Lets a visitor group reach a folder, or no longer. Groups of a folder that is gone are removed instead. A
/// failure changes nothing and is told to operators.
void setMediaFolderGroup(HostContext& host, const MediaFolder& folder, int groupId, bool access);

/// Makes those of a folder's directories that are missing, from the site's own down.
void makeMediaDirectories(HostContext& host, SharedFiles& files, const MediaFolder& folder);

}  // namespace torvex
