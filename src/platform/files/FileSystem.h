#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// How a text file is read or written: in the system's encoding (UTF-8), or in UTF-16. The numbers are those
/// that callers outside use.
enum class TextFormat { SystemDefault = -2, Unicode = -1, Ansi = 0 };

/// A text on its way into a file.
struct TextFile {
    std::string path;
    std::string text;
};

/// The files of the installation. Paths are absolute, "/" and "\" both divide. An implementation may be bound
/// to a folder; whatever lies outside, or is reached by a link out of it, then counts as not there.
/// Operations throw `Error` with the path and the reason; "not there" is an answer where a result can say so.
/// Implementations are safe to share between threads.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    virtual bool fileExists(const std::string& path) const = 0;
    virtual bool folderExists(const std::string& path) const = 0;

    /// The whole text, nothing when there is no such file. A byte order mark decides over `format`. Throws
    /// when the file can't be read or isn't in the encoding.
    virtual std::optional<std::string> readText(const std::string& path, TextFormat format) const = 0;
    /// The whole file, nothing when there is none.
    virtual std::optional<std::string> readBytes(const std::string& path) const = 0;
    /// At most `length` bytes from `offset` (counted from 0) on, fewer where the file ends; nothing when there
    /// is no such file.
    virtual std::optional<std::string> readRange(const std::string& path, std::uint64_t offset,
                                                 std::size_t length) const = 0;
    /// Bytes in the file, nothing when there is none.
    virtual std::optional<std::uint64_t> fileSize(const std::string& path) const = 0;

    /// Writes the file whole or not at all: a reader or a crash sees the old or the new text.
    virtual void writeText(const std::string& path, std::string_view text, TextFormat format) = 0;
    virtual void writeBytes(const std::string& path, std::string_view bytes) = 0;
    /// Writes many files, each whole or not at all, in less time than one by one. When it throws, any of them
    /// may be written.
    virtual void writeTexts(const std::vector<TextFile>& texts, TextFormat format) {
        for (const auto& [path, text] : texts) writeText(path, text, format);
    }
    /// Removes from a folder what writers that were killed have left in it. It is in nobody's way: `files`
    /// doesn't list it.
    virtual void removeLeftovers(const std::string& /*folder*/) {}

    /// The folder's parent must be there. A folder that is there already is no error.
    virtual void createFolder(const std::string& path) = 0;
    virtual void copyFile(const std::string& from, const std::string& to) = 0;
    virtual void deleteFile(const std::string& path) = 0;
    /// Gives a file another name, over what bears it.
    virtual void moveFile(const std::string& from, const std::string& to) {
        copyFile(from, to);
        deleteFile(from);
    }
    /// With all that is in it.
    virtual void deleteFolder(const std::string& path) = 0;

    /// Names, without the path, in no order.
    virtual std::vector<std::string> files(const std::string& folder) const = 0;
    virtual std::vector<std::string> subfolders(const std::string& folder) const = 0;
};

}  // namespace torvex
