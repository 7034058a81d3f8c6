// registers: folders and files of media, as the library shows them.

#include <algorithm>

#include "authoring/StatusCodes.h"
#include "desk/FirstRow.h"
#include "desk/MediaStatus.h"
#include "desk/registers.h"
#include "media/MediaRecords.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/Existence.h"

namespace torvex {

namespace {

constexpr std::size_t mostRows = 500;
constexpr std::size_t columns = 8;

bool holds(const MediaRecord& record, std::string_view words) {
    return words.empty() || text::contains(record.title, words) || text::contains(record.path, words) ||
           (record.alt && text::contains(*record.alt, words));
}

Value gridOf(const std::vector<MediaRecord>& records, std::string_view words, std::size_t from) {
    ResultGrid grid(columns);
    for (const MediaRecord& record : records) {
        if (!holds(record, words)) continue;
        if (from > 0) {
            --from;
        } else if (grid.rows() < mostRows) {
            grid.add(cellsOf(record));
        }
    }
    return gridOrEmpty(std::move(grid));
}

}  // namespace

Value registers::getFolders(const std::string& site, const std::string& folderType) try {
    return listMediaFolders(connection(), mediaKindOf(folderType), text::lowerTrim(site));
} catch (...) {
    raiseFrom("getFolders !");
}

Value registers::getMedia(const std::string& site, const std::string& folderType, const std::string& folder,
                          const std::string& words, double from) try {
    const MediaFolder asked{mediaKindOf(folderType), text::lowerTrim(site), std::string(text::trim(folder))};
    return gridOf(listMedia(connection(), asked), text::trim(words),
                  static_cast<std::size_t>(firstRow(from).value_or(0)));
} catch (...) {
    raiseFrom("getMedia !");
}

std::string registers::checkUpload(const std::string& site, const std::string& folderType,
                                   const std::string& folder, const std::string& filename) try {
    const MediaFolder into{mediaKindOf(folderType), text::lowerTrim(site), std::string(text::trim(folder))};
    const auto file =
        mediaPathOf(into.kind, into.site, relativePathOf(into.id) + std::string(text::trim(filename)));
    // A name that leads elsewhere would be taken apart into other folders.
    if (!file || file->folder.id != into.id) return std::string(mediaStatus::gone);
    const bool isFolder =
        into.id.empty() ? siteExists(connection(), into.site) : folderExists(connection(), into);
    if (!isFolder) return std::string(mediaStatus::gone);
    const bool isThere =
        host_.files.fileExists(file->absolute(host_)) || findMedia(connection(), *file).has_value();
    return std::string(isThere ? mediaStatus::exists : status::done);
} catch (...) {
    raiseFrom("checkUpload !");
}

}  // namespace torvex
