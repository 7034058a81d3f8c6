// registers: files that come into another folder.

#include <fmt/format.h>
#include <optional>

#include "authoring/StatusCodes.h"
#include "desk/MediaStatus.h"
#include "desk/registers.h"
#include "media/FileSwap.h"
#include "media/FolderChanges.h"
#include "media/MediaRecords.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/RegisterLock.h"
#include "replication/Replication.h"
#include "replication/SharedFiles.h"
#include "search/designs/MovedFiles.h"

namespace torvex {

namespace {

using Outcome = db::Outcome<std::string>;

bool isThere(db::Connection& connection, const MediaFolder& folder) {
    return folder.id.empty() ? siteExists(connection, folder.site) : folderExists(connection, folder);
}

/// One move of a file. What it did on the disk is taken back unless it was committed.
class FileMove {
  public:
    FileMove(HostContext& host, MediaPath from, MediaFolder into)
        : host_(host), from_(std::move(from)), to_{std::move(into), from_.name} {}

    Outcome make(db::Connection& own) {
        lockRegisters(own);
        if (!findMedia(own, from_) || !isThere(own, to_.folder)) return db::refuse(mediaStatus::gone);
        if (!host_.files.fileExists(from_.absolute(host_))) return db::refuse(mediaStatus::gone);
        if (isTaken(own)) return db::refuse(mediaStatus::exists);
        if (isMediaTitleTakenIn(own, from_, to_.folder)) return db::refuse(mediaStatus::taken);
        moveMediaRows(own, from_, to_.folder);
        pages_ = followMovedFile(own, filePrefixes(host_.application), asLinked());
        makeMediaDirectories(host_, files_, to_.folder);
        swap_.emplace(host_.files, from_.absolute(host_), to_.absolute(host_));
        return db::commit(status::done);
    }
    void keep() {
        swap_->keep();
        followUp(host_.log, "the file \"" + to_.relative() + "\" did not reach the other servers", [&] {
            files_.replicate();
            replicateFile(host_, to_.absolute(host_), FileChange::Replace);
            replicateFile(host_, from_.absolute(host_), FileChange::Remove);
        });
    }
    void takeBack() {
        swap_.reset();
        files_.takeBack();
    }
    std::string description() const {
        return fmt::format("{} \"{}\" is now \"{}\", in {} pages too", namesOf(from_.folder.kind).word,
                           from_.relative(), to_.relative(), pages_);
    }

  private:
    bool isTaken(db::Connection& own) {
        return host_.files.fileExists(to_.absolute(host_)) || findMedia(own, to_).has_value();
    }
    MovedFile asLinked() const {
        const bool isImage = from_.folder.kind == MediaKind::Images;
        return {isImage ? FoundLink::Kind::Image : FoundLink::Kind::Document, from_.folder.site, from_.name,
                relativePathOf(from_.folder.id), relativePathOf(to_.folder.id)};
    }

    HostContext& host_;
    const MediaPath from_;
    const MediaPath to_;
    SharedFiles files_{host_};
    std::optional<FileSwap> swap_;
    std::size_t pages_ = 0;
};

}  // namespace

std::string registers::moveMedia(const std::string& site, const std::string& folderType,
                                 const std::string& path, const std::string& folder, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const MediaKind kind = mediaKindOf(folderType);
    const auto file = mediaPathOf(kind, site, path);
    const MediaFolder into{kind, text::lowerTrim(site), std::string(text::trim(folder))};
    if (!file || !isFolderId(into.id)) return std::string(mediaStatus::gone);
    if (into.id == file->folder.id) return std::string(status::done);
    FileMove move(host_, *file, into);
    const auto outcome = db::tryInOwnTransaction(host_, "moveMedia of " + file->relative(), status::failed,
                                                 [&](db::Connection& own) { return move.make(own); });
    if (!outcome.isCommitted) {
        move.takeBack();
        return outcome.value;
    }
    move.keep();
    recordChange("moveMedia", advId, "save", move.description());
    return outcome.value;
}

}  // namespace torvex
