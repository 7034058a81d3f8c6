#include "media/UploadStore.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "media/UploadNotes.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/FileOperations.h"
#include "platform/text/Hexadecimal.h"

namespace torvex {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view noteSuffix = ".json";
constexpr std::string_view bytesSuffix = ".part";
constexpr std::size_t idBytes = 16;
constexpr mode_t folderMode = 0700;
/// It becomes a public file.
constexpr mode_t fileMode = 0644;
constexpr std::uintmax_t longestNote = 64 * 1024;

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

Descriptor openFile(const std::string& path, int flags) {
    Descriptor file(::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, fileMode));
    if (!file) fail(path);
    return file;
}

bool isId(std::string_view text) {
    return text.size() == 2 * idBytes && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::optional<std::string> readNoteFile(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored) || fs::file_size(path, ignored) > longestNote)
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// The id of one of the store's files; "" for any other file.
std::string idOf(const fs::path& path, std::string_view suffix) {
    const std::string id = path.stem().string();
    return path.extension() == suffix && isId(id) ? id : std::string();
}

}  // namespace

bool UploadWriter::write(std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    if (isOver_ || bytes.size() > end_ - at_) return false;
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(file_.number(), bytes.data(), bytes.size(), static_cast<off_t>(at_));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        at_ += static_cast<std::uint64_t>(written);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void UploadWriter::giveUp() {
    const std::lock_guard lock(mutex_);
    isOver_ = true;
}

std::uint64_t UploadWriter::sync() {
    const std::lock_guard lock(mutex_);
    isOver_ = true;
    if (::fdatasync(file_.number()) != 0) fail("upload");
    return at_ - begin_;
}

UploadStore::UploadStore(std::string folder, const UploadLimits& limits)
    : folder_(std::move(folder)), limits_(limits) {
    load();
}

/// What has no note, or no bytes for it, is of no use to anybody.
void UploadStore::load() {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error))
        files.push_back(at->path());
    for (const fs::path& path : files) {
        const std::string id = idOf(path, noteSuffix);
        if (id.empty()) continue;
        const auto note = readNoteFile(path);
        auto upload = note ? readNote(*note) : std::nullopt;
        const auto size = fs::file_size(fileOf(id, bytesSuffix), error);
        if (!upload || error || size < upload->offset) continue;
        upload->id = id;
        entries_.emplace(id, Entry{std::move(*upload)});
    }
    for (const fs::path& path : files) {
        const std::string id = idOf(path, noteSuffix) + idOf(path, bytesSuffix);
        if (!id.empty() && !entries_.contains(id)) fs::remove(path, error);
    }
}

std::string UploadStore::fileOf(const std::string& id, std::string_view suffix) const {
    return folder_ + "/" + id + std::string(suffix);
}

std::string UploadStore::pathOf(const Upload& upload) const {
    return fileOf(upload.id, bytesSuffix);
}

bool UploadStore::hasRoom(const UploadPlan& plan) const {
    std::uint64_t bytes = plan.length;
    std::size_t count = 1;
    for (const auto& [id, entry] : entries_) {
        if (entry.upload.plan.loginId != plan.loginId) continue;
        bytes += entry.upload.plan.length;
        ++count;
    }
    return bytes <= limits_.bytesOfLogin && count <= limits_.ofLogin;
}

void UploadStore::write(const Upload& upload) const {
    const Descriptor folder = openFile(folder_, O_RDONLY | O_DIRECTORY);
    AtomicFile note(folder.number(), upload.id + std::string(noteSuffix), std::nullopt);
    note.write(noteOf(upload));
    note.commit();
}

std::optional<Upload> UploadStore::begin(const UploadPlan& plan, std::chrono::sys_seconds now) {
    const Upload upload{randomName(idBytes), plan, 0, now};
    {
        const std::lock_guard lock(mutex_);
        if (!hasRoom(plan)) return std::nullopt;
        entries_.emplace(upload.id, Entry{upload, {}, true});
    }
    try {
        if (::mkdir(folder_.c_str(), folderMode) != 0 && errno != EEXIST) fail(folder_);
        openFile(pathOf(upload), O_WRONLY | O_CREAT | O_EXCL);
        write(upload);
    } catch (...) {
        remove(upload.id);
        throw;
    }
    endWork(upload.id);
    return upload;
}

void UploadStore::endWork(const std::string& id) {
    const std::lock_guard lock(mutex_);
    if (const auto found = entries_.find(id); found != entries_.end()) found->second.isBusy = false;
}

std::optional<Upload> UploadStore::find(const std::string& id) const {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    if (found == entries_.end()) return std::nullopt;
    return found->second.upload;
}

UploadStore::Entrance UploadStore::enter(const std::string& id, std::uint64_t offset) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    if (found == entries_.end()) return {};
    Entry& entry = found->second;
    if (entry.isBusy || entry.upload.offset != offset) return {.kind = Entrance::Kind::OtherOffset};
    Descriptor file = openFile(pathOf(entry.upload), O_WRONLY);
    if (const auto former = entry.writer.lock()) former->giveUp();
    const std::uint64_t length = entry.upload.plan.length;
    auto writer =
        std::make_shared<UploadWriter>(std::move(file), offset, length, std::to_string(++lastReceipt_));
    entry.writer = writer;
    return {Entrance::Kind::Open, std::move(writer), length - offset};
}

std::optional<Upload> UploadStore::keep(const std::string& id, std::string_view receipt,
                                        std::chrono::sys_seconds now) {
    std::shared_ptr<UploadWriter> writer;
    Upload next;
    {
        const std::lock_guard lock(mutex_);
        const auto found = entries_.find(id);
        if (found == entries_.end() || found->second.isBusy) return std::nullopt;
        writer = found->second.writer.lock();
        if (!writer || writer->receipt() != receipt) return std::nullopt;
        found->second.writer.reset();
        found->second.isBusy = true;
        next = found->second.upload;
    }
    // Others needn't wait for the disk.
    try {
        next.offset += writer->sync();
        next.changed = now;
        write(next);
    } catch (...) {
        endWork(id);
        throw;
    }
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    if (found == entries_.end()) return std::nullopt;
    found->second.upload = next;
    found->second.isBusy = false;
    return next;
}

std::string UploadStore::read(const Upload& upload, std::uint64_t offset, std::size_t length) const {
    if (offset >= upload.offset) return {};
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length, upload.offset - offset));
    return files::readRange(openFile(pathOf(upload), O_RDONLY), offset, count);
}

void UploadStore::forget(const std::string& id) {
    const auto found = entries_.find(id);
    if (found == entries_.end()) return;
    if (const auto writer = found->second.writer.lock()) writer->giveUp();
    entries_.erase(found);
}

/// What is left of it when the server ends in between is cleared away by the next one.
void UploadStore::unlink(const std::string& id) const {
    ::unlink(fileOf(id, noteSuffix).c_str());
    ::unlink(fileOf(id, bytesSuffix).c_str());
}

void UploadStore::remove(const std::string& id) {
    {
        const std::lock_guard lock(mutex_);
        forget(id);
    }
    if (isId(id)) unlink(id);
}

void UploadStore::removeExpired(std::chrono::sys_seconds now) {
    std::vector<std::string> expired;
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [id, entry] : entries_) {
            const bool isInUse = entry.isBusy || !entry.writer.expired();
            if (!isInUse && entry.upload.changed + limits_.life <= now) expired.push_back(id);
        }
        for (const std::string& id : expired) forget(id);
    }
    for (const std::string& id : expired) unlink(id);
}

}  // namespace torvex
