// cManager: files and folders, here and on the other servers.

#include "authoring/cManager.h"
#include "replication/SharedFiles.h"

namespace torvex {

bool cManager::createDirectory(const std::string& dir) {
    SharedFiles files(host_);
    const bool done = files.createFolder(dir);
    files.replicate();
    return done;
}

bool cManager::deleteDirectory(const std::string& dir) {
    SharedFiles files(host_);
    const bool done = files.deleteFolder(dir);
    files.replicate();
    return done;
}

bool cManager::deleteFile(const std::string& file) {
    SharedFiles files(host_);
    files.deleteFile(file);
    files.replicate();
    return true;
}

}  // namespace torvex
