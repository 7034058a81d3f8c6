#include "replication/SharedFiles.h"

#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/files/FileSystem.h"
#include "platform/files/WildCards.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

std::string folderPath(std::string_view dir) {
    dir = text::trim(dir);
    if (dir.ends_with('/')) dir.remove_suffix(1);
    return std::string(dir);
}

struct FilePath {
    std::string folder;  ///< with its divider
    std::string name;

    explicit FilePath(std::string_view given) : name(text::replaceAll(given, "\\", "/")) {
        const std::size_t divider = name.rfind('/');
        if (divider == std::string::npos) return;
        folder = name.substr(0, divider + 1);
        name.erase(0, divider + 1);
    }
    std::string whole() const { return folder + name; }
};

}  // namespace

bool SharedFiles::createFolder(std::string_view dir) try {
    const std::string folder = folderPath(dir);
    if (folder.empty()) return false;
    if (!host_.files.folderExists(folder)) {
        host_.files.createFolder(folder);
        madeFolders_.push_back(folder);
    }
    addFolder(folder, FolderChange::Make);
    return true;
} catch (...) {
    raiseFrom("createDirectory !");
}

bool SharedFiles::deleteFolder(std::string_view dir) try {
    const std::string folder = folderPath(dir);
    if (folder.empty()) return false;
    if (host_.files.folderExists(folder)) host_.files.deleteFolder(folder);
    addFolder(folder, FolderChange::Remove);
    return true;
} catch (...) {
    raiseFrom("deleteDirectory !");
}

void SharedFiles::deleteFile(std::string_view path) try {
    const FilePath file(text::trim(path));
    if (file.name.empty()) return;
    if (hasWildCard(file.name)) {
        if (host_.files.folderExists(file.folder)) {
            deleteMatchingFiles(host_.files, file.folder, file.name);
        }
    } else if (host_.files.fileExists(file.whole())) {
        host_.files.deleteFile(file.whole());
    }
    addFile(file.whole(), FileChange::Remove);
} catch (...) {
    raiseFrom("deleteFile !");
}

/// A target that holds the same already isn't written again: a new language goes over every site.
void SharedFiles::copyFile(std::string_view source, std::string_view target) try {
    const FilePath from(source);
    const FilePath to(target);
    if (from.folder.empty() || from.name.empty()) return;
    const auto bytes = host_.files.readBytes(from.whole());
    if (!bytes) return;
    if (host_.files.readBytes(to.whole()) != bytes) host_.files.writeBytes(to.whole(), *bytes);
    addFile(to.whole(), FileChange::Replace);
} catch (...) {
    raiseFrom("copySystemFile !");
}

void SharedFiles::writeTexts(const std::vector<TextFile>& texts, TextFormat format) {
    host_.files.writeTexts(texts, format);
    for (const TextFile& text : texts) addFile(text.path, FileChange::Replace);
}

void SharedFiles::moveFile(const std::string& source, const std::string& target) {
    if (!host_.files.fileExists(source)) return;
    host_.files.moveFile(source, target);
    addFile(target, FileChange::Replace);
    addFile(source, FileChange::Remove);
}

void SharedFiles::takeBack() {
    for (; !madeFolders_.empty(); madeFolders_.pop_back()) {
        if (host_.files.folderExists(madeFolders_.back())) host_.files.deleteFolder(madeFolders_.back());
    }
}

void SharedFiles::addFile(const std::string& file, FileChange change) try {
    replication_.addFile(file, change);
} catch (...) {
    raiseFrom("replicateFile !");
}

void SharedFiles::addFolder(const std::string& folder, FolderChange change) try {
    replication_.addFolder(folder, change);
} catch (...) {
    raiseFrom("replicateFolder !");
}

}  // namespace torvex
