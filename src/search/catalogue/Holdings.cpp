#include "search/catalogue/Holdings.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/files/AtomicFile.h"
#include "platform/text/Text.h"

namespace torvex::catalogue {

namespace {

namespace fs = std::filesystem;

bool isHidden(std::string_view name) {
    return name.empty() || name.front() == '.' || AtomicFile::isTemporary(name);
}

/// Of each part of a path; what an "/" at its end leaves empty counts for nothing.
bool hasHiddenPart(std::string_view path) {
    while (!path.empty()) {
        const std::size_t divider = std::min(path.find('/'), path.size());
        if (isHidden(path.substr(0, divider))) return true;
        path.remove_prefix(std::min(divider + 1, path.size()));
    }
    return false;
}

std::optional<FileStamp> stampAt(const std::string& file) {
    struct stat status {};
    if (::lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    constexpr std::int64_t second = 1'000'000'000;
    return FileStamp{static_cast<std::uint64_t>(status.st_size),
                     status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

std::string withDivider(std::string_view folder) {
    while (folder.ends_with('/')) folder.remove_suffix(1);
    return std::string(folder) + "/";
}

}  // namespace

Holdings::Holdings(std::string_view installPath, std::string_view documents)
    : root_(withDivider(installPath)),
      folders_{"search/html/", withDivider("wwwroot/" + std::string(documents))} {}

Holdings Holdings::of(const ApplicationValues& application) {
    return {application.text(applicationKey::installPath), application.text(applicationKey::documentsName)};
}

std::optional<std::string> Holdings::pathOf(std::string_view absolute) const {
    std::string path = text::replaceAll(absolute, "\\", "/");
    if (!path.starts_with(root_)) return std::nullopt;
    path.erase(0, root_.size());
    for (std::size_t twice = 0; (twice = path.find("//")) != std::string::npos;) path.erase(twice, 1);
    const bool isBelow = std::any_of(folders_.begin(), folders_.end(), [&](const std::string& folder) {
        return path.starts_with(folder) || (path.ends_with('/') && folder.starts_with(path));
    });
    if (!isBelow || hasHiddenPart(path)) return std::nullopt;
    return path;
}

bool Holdings::folderExists(std::string_view path) const {
    std::error_code error;
    return fs::is_directory(absolute(path), error);
}

std::optional<FileStamp> Holdings::stampOf(std::string_view path) const {
    return stampAt(absolute(path));
}

void Holdings::visit(const std::function<void(const std::string&, const FileStamp&)>& visitor) const {
    for (const std::string& folder : folders_) {
        std::error_code error;
        constexpr auto options = fs::directory_options::skip_permission_denied;
        for (auto at = fs::recursive_directory_iterator(absolute(folder), options, error);
             !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
            if (isHidden(at->path().filename().native())) {
                at.disable_recursion_pending();
                continue;
            }
            const std::string& file = at->path().native();
            if (const auto stamp = stampAt(file)) visitor(file.substr(root_.size()), *stamp);
        }
    }
}

}  // namespace torvex::catalogue
