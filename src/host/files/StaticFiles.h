#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

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

/// Answers from a folder and keeps small files in memory. A kept file is compared with the file on disk at
/// each request, so that an answer is never older than the file's last change. One event loop uses it.
class StaticFiles {
  public:
    /// `root` must outlive this.
    StaticFiles(const RootFolder& root, StaticFileOptions options);
    ~StaticFiles();

    /// Throws `OutOfDescriptors`.
    Answer answer(std::string_view path, const RequestHead& head);

    std::size_t cachedBytes() const { return cachedBytes_; }

  private:
    struct Kept;
    using Order = std::list<Kept>;

    const Kept* findCurrent(std::string_view path);
    bool isStillReached(Kept& kept) const;
    void drop(Order::iterator place);
    void keep(Kept file);

    const RootFolder& root_;
    StaticFileOptions options_;
    Descriptor folder_;
    Order order_;  ///< the most recently used first
    std::unordered_map<std::string_view, Order::iterator> byPath_;
    std::size_t cachedBytes_ = 0;
};

}  // namespace torvex
