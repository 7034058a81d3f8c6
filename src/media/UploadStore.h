#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "media/MediaRecords.h"
#include "platform/files/Descriptor.h"

namespace torvex {

/// What a file that comes in pieces is to become.
struct UploadPlan {
    int loginId = 0;  ///< whose it is
    MediaPath file;
    std::string title;
    bool replaces = false;  ///< takes the place of a file that is there
    std::uint64_t length = 0;
    std::string metadata;  ///< as it was sent
};

/// One that has begun.
struct Upload {
    std::string id;  ///< nobody can guess it
    UploadPlan plan;
    std::uint64_t offset = 0;  ///< so many bytes of it are kept for good
    std::chrono::sys_seconds changed{};

    bool isWhole() const { return offset == plan.length; }
};

/// The bytes of one piece on their way into an upload; they count when the store is told to keep them. Safe to
/// share between threads.
class UploadWriter {
  public:
    UploadWriter(Descriptor file, std::uint64_t begin, std::uint64_t end, std::string receipt)
        : file_(std::move(file)), at_(begin), begin_(begin), end_(end), receipt_(std::move(receipt)) {}

    /// False when the disk takes no more, the upload would be longer than it said, or another piece has taken
    /// this one's place.
    bool write(std::string_view bytes);
    const std::string& receipt() const { return receipt_; }

  private:
    friend class UploadStore;

    /// No byte is written any more when it returns.
    void giveUp();
    /// Returns when the disk has them; how many there are.
    std::uint64_t sync();

    std::mutex mutex_;
    Descriptor file_;
    std::uint64_t at_;
    const std::uint64_t begin_;
    const std::uint64_t end_;
    const std::string receipt_;
    bool isOver_ = false;
};

struct UploadLimits {
    /// Of all unfinished ones of a login together, as they have announced themselves.
    std::uint64_t bytesOfLogin = 0;
    std::size_t ofLogin = 100;
    /// Since its last piece; then it is removed.
    std::chrono::seconds life = std::chrono::hours(24);
};

/// Files on their way in: each has its bytes and what it is to become in a folder that nobody reads from
/// outside, and outlives the server. Safe to share between threads; a disk that fails throws
/// `std::system_error`.
class UploadStore {
  public:
    /// Goes on with what an earlier server has left in the folder, which is made when it is needed.
    UploadStore(std::string folder, const UploadLimits& limits);

    /// Nothing when the login has as many or as much under way as it may.
    std::optional<Upload> begin(const UploadPlan& plan, std::chrono::sys_seconds now);
    std::optional<Upload> find(const std::string& id) const;

    /// How a piece is let in. `writer` is null unless it is.
    struct Entrance {
        enum class Kind { Open, Gone, OtherOffset };

        Kind kind = Kind::Gone;
        std::shared_ptr<UploadWriter> writer{};
        std::uint64_t room = 0;  ///< bytes that are still missing
    };
    /// The piece that is let in last is the one that counts: a visitor who has lost her line sends the same
    /// again, while this end still waits for the first.
    Entrance enter(const std::string& id, std::uint64_t offset);
    /// Keeps what was written under the receipt. Nothing when the upload is gone, or another piece has taken
    /// its place.
    std::optional<Upload> keep(const std::string& id, std::string_view receipt, std::chrono::sys_seconds now);

    /// At most `length` of its bytes from `offset` on, of those that are kept.
    std::string read(const Upload& upload, std::uint64_t offset, std::size_t length) const;
    std::string pathOf(const Upload& upload) const;

    void remove(const std::string& id);
    void removeExpired(std::chrono::sys_seconds now);

    /// While it is held nobody else finishes or removes an upload in this way.
    std::unique_lock<std::mutex> alone() { return std::unique_lock(finishing_); }

  private:
    struct Entry {
        Upload upload;
        std::weak_ptr<UploadWriter> writer{};
        bool isBusy = false;  ///< its note is being written: nobody is let in
    };

    void load();
    /// Nobody finds it any more; its files are still there.
    void forget(const std::string& id);
    void unlink(const std::string& id) const;
    void endWork(const std::string& id);
    bool hasRoom(const UploadPlan& plan) const;
    void write(const Upload& upload) const;
    std::string fileOf(const std::string& id, std::string_view suffix) const;

    const std::string folder_;
    const UploadLimits limits_;
    mutable std::mutex mutex_;
    std::mutex finishing_;
    std::unordered_map<std::string, Entry> entries_;
    std::uint64_t lastReceipt_ = 0;
};

}  // namespace torvex
