#pragma once

#include <boost/json/value.hpp>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "media/UploadStore.h"
#include "operations/register/PublicObject.h"
#include "pages/api/Api.h"
#include "pages/api/Uploads.h"

/// What the addresses of uploads share.
namespace torvex::api {

inline constexpr std::string_view uploadFolder = "/torvex/api/uploads/";
/// Of the protocol.
inline constexpr std::string_view uploadVersion = "1.0.0";
inline constexpr std::string_view pieceType = "application/offset+octet-stream";
/// So many times the largest file may be under way for one login.
inline constexpr std::uint64_t filesUnderWay = 4;

namespace kind {
inline constexpr ProblemKind otherVersion{412, "other-version",
                                          "The protocol of uploads is asked for in another version", 5380};
inline constexpr ProblemKind otherOffset{409, "other-offset", "The upload goes on elsewhere", 5381};
inline constexpr ProblemKind fileTooLarge{413, "file-too-large", "The file is too large", 5382};
inline constexpr ProblemKind otherKind{415, "other-kind", "The file isn't of a kind that is kept here", 5383};
inline constexpr ProblemKind muchUnderWay{413, "much-under-way", "Too much is under way for this login",
                                          5384};
}  // namespace kind

/// A whole number in digits alone.
std::optional<std::uint64_t> numberIn(std::string_view text);
/// The upload that an address names; "" for one that names none.
std::string uploadIn(const std::string& path);
std::string megabytes(std::uint64_t bytes);

/// The files that arrived last: who lost the line before she got the answer asks again. Safe to share between
/// threads.
class FinishedUploads {
  public:
    struct Finished {
        UploadPlan plan;
        boost::json::value row;
    };

    void add(const std::string& id, Finished finished);
    /// Nothing for one that isn't among them, or another login's.
    std::optional<Finished> find(const std::string& id, int loginId) const;

  private:
    static constexpr std::size_t most = 256;

    mutable std::mutex mutex_;
    std::deque<std::pair<std::string, Finished>> finished_;
};

/// Safe to share between threads.
struct UploadDesk {
    UploadDesk(std::shared_ptr<Api> shared, const UploadSettings& given)
        : api(std::move(shared)),
          settings(given),
          store(given.folder, {.bytesOfLogin = filesUnderWay * given.mostBytes}) {}

    const std::shared_ptr<Api> api;
    const UploadSettings settings;
    UploadStore store;
    FinishedUploads finished{};
};

/// Whether the file may be put where it is to go: by the gate, and by what is there.
Reply checkPlace(Calls& calls, const UploadPlan& plan);
/// Whether the reply says that somebody may not do this, whatever the place says.
bool isDenied(const Reply& reply);
/// Whether it says that a file of the name is there.
bool saysExists(const Reply& reply);

/// Puts a whole upload in its place and has it registered: its row, or why it stays where it is.
Reply finishUpload(HostContext& host, UploadDesk& desk, Calls& calls, const std::string& id);

/// Whether what has come of it so far can be of the kind that its name says; a picture that is whole must have
/// a size.
bool isOfItsKind(const UploadDesk& desk, const Upload& upload);

}  // namespace torvex::api
