#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/files/AtomicFile.h"
#include "platform/files/Descriptor.h"

namespace torvex {

/// Files that come to be together: each of them whole or not at all, and all of them on the disk when
/// `commit` returns, in a fraction of the time that they would take one by one. Each holds two descriptors
/// until then. Without `commit` they leave no trace. Failures throw `std::system_error`; one in `commit`
/// leaves some of them in place.
class FileBatch {
  public:
    /// `folder` is open for reading.
    void add(Descriptor folder, const std::string& name, std::optional<mode_t> mode, std::string_view bytes);
    void commit();

  private:
    struct Member {
        Member(Descriptor open, const std::string& name, std::optional<mode_t> mode);

        Descriptor folder;
        dev_t device;
        ino_t folderNumber;
        AtomicFile file;
    };

    std::deque<Member> members_;  ///< in places of their own: an `AtomicFile` can't move
};

}  // namespace torvex
