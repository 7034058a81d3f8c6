#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "host/files/PublicFile.h"
#include "host/http/ContentCoding.h"

namespace torvex {

/// Public files in the forms that browsers take, made once for all event loops; the least used go first. All
/// operations are safe from any thread.
class EncodedFiles {
  public:
    using Bytes = std::shared_ptr<const std::string>;

    /// Keeps at most so many bytes; with 0, nothing.
    explicit EncodedFiles(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    /// Null when this version of the file isn't kept in that form.
    Bytes find(const FileStamp& stamp, Coding coding);

    /// Makes the form, which takes milliseconds, and keeps it if the stamp tells this version from the next.
    /// Null when the file has changed since it was opened.
    Bytes make(const PublicFile& file, Coding coding);

    std::size_t bytes() const;

  private:
    using Key = std::pair<FileStamp, Coding>;
    struct Kept {
        Key key;
        Bytes bytes;
    };
    using Order = std::list<Kept>;

    void keep(const Key& key, const Bytes& bytes);
    static std::size_t cost(const Kept& kept);

    const std::size_t mostBytes_;
    mutable std::mutex mutex_;
    Order order_;  ///< the most recently used first
    std::map<Key, Order::iterator> byKey_;
    std::size_t bytes_ = 0;
};

}  // namespace torvex
