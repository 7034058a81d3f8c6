#include "platform/files/FileBatch.h"

#include "platform/files/FileOperations.h"

namespace torvex {

FileBatch::Member::Member(Descriptor open, const std::string& name, std::optional<mode_t> mode)
    : folder(std::move(open)), file(folder.number(), name, mode) {
    const struct stat status = files::statusOf(folder);
    device = status.st_dev;
    folderNumber = status.st_ino;
}

void FileBatch::add(Descriptor folder, const std::string& name, std::optional<mode_t> mode,
                    std::string_view bytes) {
    members_.emplace_back(std::move(folder), name, mode).file.write(bytes);
}

/// Those of one folder mostly stand beside each other; one that doesn't costs a needless wait and no more.
void FileBatch::commit() {
    const Member* before = nullptr;
    for (const Member& member : members_) {
        if (before == nullptr || before->device != member.device) member.file.syncFileSystem();
        before = &member;
    }
    for (Member& member : members_) member.file.takeName();
    before = nullptr;
    for (const Member& member : members_) {
        const bool isSame = before != nullptr && before->device == member.device &&
                            before->folderNumber == member.folderNumber;
        if (!isSame) member.file.syncFolder();
        before = &member;
    }
    members_.clear();
}

}  // namespace torvex
