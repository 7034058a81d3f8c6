#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>

#include "host/files/EncodedFiles.h"
#include "host/files/PublicFile.h"
#include "host/http/Answer.h"
#include "host/http/RequestHead.h"
#include "installation/StaticFileOptions.h"
#include "platform/files/RootFolder.h"

namespace torvex {

/// Whether a decoded path may name a public file at all: of a known media type or one of `more`, no part of
/// it hidden, and in its plain form (no empty, "." or ".." part).
bool isPublicPath(std::string_view path, const MediaTypes& more = {});

/// The answer for the file at `path` below `root`: the whole, a part, or "not modified", as the request asks;
/// 404 when there is none that may be seen. Throws `OutOfDescriptors`. Keeps nothing; safe from any thread.
Answer fileAnswer(const RootFolder& root, std::string_view path, const RequestHead& head,
                  const StaticFileOptions& options);

/// A public file whose answer takes a worker's time.
struct FileToEncode {
    PublicFile file;
    Coding coding;

    /// The whole file in that form, or as it is when it has changed meanwhile. On a worker.
    Answer answer(EncodedFiles& encoded) const;
};

using FileReply = std::variant<Answer, FileToEncode>;

/// Answers from a folder and keeps small files in memory. A kept file is compared with the file on disk at
/// each request, so that an answer is never older than the file's last change. One event loop uses it.
class StaticFiles {
  public:
    /// `root` and `encoded`, which all loops share, must outlive this.
    StaticFiles(const RootFolder& root, EncodedFiles& encoded, StaticFileOptions options);
    ~StaticFiles();

    /// Throws `OutOfDescriptors`.
    FileReply answer(std::string_view path, const RequestHead& head);

    std::size_t cachedBytes() const { return cachedBytes_; }

  private:
    struct Kept;
    using Order = std::list<Kept>;

    FileReply reply(const PublicFile& file, const RequestHead& head) const;
    const Kept* findCurrent(std::string_view path);
    bool isStillReached(Kept& kept) const;
    void drop(Order::iterator place);
    void keep(Kept file);

    const RootFolder& root_;
    EncodedFiles& encoded_;
    StaticFileOptions options_;
    Descriptor folder_;
    Order order_;  ///< the most recently used first
    std::unordered_map<std::string_view, Order::iterator> byPath_;
    std::size_t cachedBytes_ = 0;
};

}  // namespace torvex
