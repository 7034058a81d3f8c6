// registers: names of folders; titles, contents and the end of files.

#include <optional>

#include "authoring/StatusCodes.h"
#include "desk/MediaStatus.h"
#include "desk/registers.h"
#include "media/FileSwap.h"
#include "media/MediaRecords.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "replication/Replication.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

constexpr std::size_t longestName = 50;
constexpr std::size_t longestTitle = 50;
constexpr std::size_t longestAlt = 500;

using Outcome = db::Outcome<std::string>;

/// "Image" or "Document", and a name: as lines of the trail begin.
std::string called(MediaKind kind, std::string_view what, std::string_view name) {
    return std::string(namesOf(kind).word) + std::string(what) + " \"" + std::string(name) + "\"";
}

/// Pictures of one format have two suffixes.
std::string formatOf(std::string_view name) {
    std::string suffix = mediaSuffix(name);
    return suffix == "jpeg" ? "jpg" : suffix;
}

Outcome writeTexts(db::Connection& own, const MediaPath& file, std::string_view title,
                   std::optional<std::string_view> alt) {
    lockRegisters(own);
    const auto record = findMedia(own, file);
    if (!record) return db::refuse(mediaStatus::gone);
    if (title.empty()) return db::refuse(mediaStatus::missing);
    if (isMediaTitleTaken(own, file.folder, title, record->id)) return db::refuse(mediaStatus::taken);
    writeMediaTexts(own, file, record->id, title, alt);
    return db::commit(status::done);
}

Outcome writeName(db::Connection& own, const MediaFolder& folder, std::string_view name) {
    lockRegisters(own);
    if (!folderExists(own, folder)) return db::refuse(mediaStatus::gone);
    if (name.empty()) return db::refuse(mediaStatus::missing);
    const MediaFolder parent{folder.kind, folder.site,
                             folder.id.substr(0, folder.id.size() - folderLevelLength)};
    const std::string present = namesake(own, parent, name);
    if (!present.empty() && present != folder.id) return db::refuse(mediaStatus::taken);
    writeFolderName(own, folder, name);
    return db::commit(status::done);
}

/// A file that stays behind is told and does no harm: nothing leads to it any more.
void removeFile(HostContext& host, const MediaPath& file) {
    followUp(host.log, "the file \"" + file.relative() + "\" stayed behind", [&] {
        SharedFiles files(host);
        files.deleteFile(file.absolute(host));
        files.replicate();
    });
}

Outcome renewFacts(HostContext& host, db::Connection& own, const MediaPath& file) {
    const bool isThere = findMedia(own, file) && host.files.fileExists(file.absolute(host));
    if (!isThere) return db::refuse(mediaStatus::gone);
    writeMediaFacts(own, file, readMediaFacts(host, file));
    return db::commit(status::done);
}

Outcome moveOver(HostContext& host, std::optional<FileSwap>& swap, db::Connection& own, const MediaPath& by,
                 const MediaPath& file) {
    const bool areThere =
        findMedia(own, file) && findMedia(own, by) && host.files.fileExists(by.absolute(host));
    if (!areThere || by.relative() == file.relative()) return db::refuse(mediaStatus::gone);
    if (formatOf(by.name) != formatOf(file.name)) return db::refuse(mediaStatus::otherType);
    writeMediaFacts(own, file, readMediaFacts(host, by));
    removeMediaRows(own, by);
    swap.emplace(host.files, by.absolute(host), file.absolute(host));
    return db::commit(status::done);
}

/// What lies at the path, and what doesn't any more, on the other servers too.
void shareReplaced(HostContext& host, const MediaPath& file, const MediaPath& by) {
    followUp(host.log, "the file \"" + file.relative() + "\" did not reach the other servers", [&] {
        replicateFile(host, file.absolute(host), FileChange::Replace);
        if (by.relative() != file.relative()) replicateFile(host, by.absolute(host), FileChange::Remove);
    });
}

}  // namespace

std::string registers::renameFolder(const std::string& site, const std::string& folderType,
                                    const std::string& folder, const std::string& name, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const MediaFolder renamed{mediaKindOf(folderType), text::lowerTrim(site),
                              std::string(text::trim(folder))};
    if (renamed.id.empty() || !isFolderId(renamed.id)) return std::string(mediaStatus::gone);
    const std::string given(text::first(text::trim(name), longestName));
    std::string old;
    const auto outcome =
        db::tryInOwnTransaction(host_, "renameFolder of " + renamed.id, status::failed, [&](auto& own) {
            old = folderName(own, renamed);
            return writeName(own, renamed, given);
        });
    if (outcome.isCommitted)
        recordChange("renameFolder", advId, "edit",
                     called(renamed.kind, " folder", old) + " is now called \"" + given + "\"");
    return outcome.value;
}

std::string registers::saveMedia(const std::string& site, const std::string& folderType,
                                 const std::string& path, const std::string& title, const std::string& alt,
                                 int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const auto file = mediaPathOf(mediaKindOf(folderType), site, path);
    if (!file) return std::string(mediaStatus::gone);
    const std::string_view given = text::first(text::trim(title), longestTitle);
    const auto newAlt = alt == mediaStatus::keptAlt ? std::optional<std::string_view>()
                                                    : std::optional(text::first(text::trim(alt), longestAlt));
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveMedia of " + file->relative(), status::failed,
                                [&](auto& own) { return writeTexts(own, *file, given, newAlt); });
    if (outcome.isCommitted)
        recordChange("saveMedia", advId, "save",
                     called(file->folder.kind, "", file->relative()) + " has been updated");
    return outcome.value;
}

std::string registers::replaceMedia(const std::string& site, const std::string& folderType,
                                    const std::string& path, const std::string& by, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const MediaKind kind = mediaKindOf(folderType);
    const auto file = mediaPathOf(kind, site, path);
    const auto source = by.empty() ? file : mediaPathOf(kind, site, by);
    if (!file || !source) return std::string(mediaStatus::gone);
    std::optional<FileSwap> swap;
    const auto outcome =
        db::tryInOwnTransaction(host_, "replaceMedia of " + file->relative(), status::failed, [&](auto& own) {
            return by.empty() ? renewFacts(host_, own, *file) : moveOver(host_, swap, own, *source, *file);
        });
    if (!outcome.isCommitted) return outcome.value;
    if (swap) swap->keep();
    shareReplaced(host_, *file, *source);
    recordChange("replaceMedia", advId, "save", called(kind, "", file->relative()) + " has a new content");
    return outcome.value;
}

std::string registers::deleteMedia(const std::string& site, const std::string& folderType,
                                   const std::string& path, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const auto file = mediaPathOf(mediaKindOf(folderType), site, path);
    if (!file) return std::string(mediaStatus::gone);
    const auto outcome = db::tryInOwnTransaction(
        host_, "deleteMedia of " + file->relative(), status::failed, [&](auto& own) -> Outcome {
            return removeMediaRows(own, *file) ? db::commit(status::done) : db::refuse(mediaStatus::gone);
        });
    if (!outcome.isCommitted) return outcome.value;
    removeFile(host_, *file);
    recordChange("deleteMedia", advId, "delete",
                 called(file->folder.kind, "", file->relative()) + " has been removed");
    return outcome.value;
}

}  // namespace torvex
