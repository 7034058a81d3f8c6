#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/files/Descriptor.h"

namespace torvex {

/// A file that comes to be, or replaces the one of its name, whole: what is written goes to a temporary file
/// beside it, which takes the name in `commit`. Without that it leaves no trace. Failures throw
/// `std::system_error`.
class AtomicFile {
  public:
    /// `folder` is open for reading and outlives the object. Without a `mode` a new file gets the usual one.
    AtomicFile(int folder, std::string name, std::optional<mode_t> mode);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    void write(std::string_view bytes);
    /// Returns when the disk holds the file under its name.
    void commit();

    // The steps of `commit`, for files that are written together and wait for the disk but once: all that the
    // file system has to write, then the names, then the folder.
    void syncFileSystem() const;
    void takeName();
    void syncFolder() const;

    /// Whether a name is one of a temporary file: one that is being written, or that a crash left behind.
    static bool isTemporary(std::string_view name);
    /// Removes a temporary file if its writer, in whichever process, is gone.
    static void removeLeftover(int folder, const std::string& temporaryName);

  private:
    bool isOurs() const;

    int folder_;
    std::string name_;
    std::string temporaryName_;
    Descriptor file_;
    bool committed_ = false;
};

}  // namespace torvex
