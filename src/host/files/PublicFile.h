#pragma once

#include <compare>
#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

#include "host/files/FileStamp.h"
#include "host/http/Answer.h"
#include "host/http/ByteRange.h"
#include "host/http/ContentCoding.h"
#include "installation/StaticFileOptions.h"
#include "platform/Errors.h"
#include "platform/files/RootFolder.h"

namespace torvex {

/// The file may be there, but nothing more can be opened just now.
class OutOfDescriptors : public Error {
  public:
    OutOfDescriptors() : Error("no file descriptor is left") {}
};

/// Whether that is why something could not be opened.
bool isOutOfDescriptors(int errorNumber);

/// A file ready to be answered: its bytes when it is small, else the open file.
struct PublicFile {
    FileStamp stamp;
    std::string etag;
    std::string fields;  ///< of an answer with the whole file
    std::shared_ptr<const std::string> bytes;
    std::shared_ptr<const Descriptor> file;
    bool isText = false;  ///< worth sending in a form that is smaller

    std::time_t modified() const { return static_cast<std::time_t>(stamp.modified / 1'000'000'000); }

    /// Opens the regular file at a path relative to the root, which passes no link; nothing when there is
    /// none. Small files are read. Throws `OutOfDescriptors`.
    static std::optional<PublicFile> open(const RootFolder& root, const std::string& relativePath,
                                          const StaticFileOptions& options);

    /// The whole, a part, "not modified" or a refusal.
    Answer answer(const FileConditions& conditions) const;

    /// All bytes, also of a large file; null when they aren't those of the stamp any more.
    std::shared_ptr<const std::string> read() const;

    // The file in another form is another version: it has a tag of its own.

    /// Whether the conditions say that the form is known to whoever asks.
    bool isKnown(const FileConditions& conditions, Coding coding) const;
    Answer notModified(Coding coding) const;
    Answer encoded(Coding coding, std::shared_ptr<const std::string> form) const;

  private:
    std::string etagOf(Coding coding) const;
    std::string fieldsOf(Coding coding) const;
    Answer whole() const;
    Answer part(const FilePart& part) const;
    Answer notModified() const;
    Answer unsatisfiable() const;
};

}  // namespace torvex
