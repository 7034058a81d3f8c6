#include "installation/NewFiles.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>

#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& path, int code) {
    throw Error(fmt::format("{} can't be made: {}", path.string(), std::generic_category().message(code)));
}

/// A new file that is open for writing; closed at the end.
class NewFile {
  public:
    NewFile(const fs::path& path, mode_t mode)
        : path_(path), file_(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode)) {
        if (file_ < 0) fail(path_, errno);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() { ::close(file_); }

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) fail(path_, errno);
            if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

  private:
    const fs::path& path_;
    int file_;
};

}  // namespace

void makeFolder(const fs::path& folder, Readers readers) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && readers == Readers::Owner) fs::permissions(folder, fs::perms::owner_all, error);
    if (error) fail(folder, error.value());
}

void writeNewFile(const fs::path& file, std::string_view bytes, Readers readers) {
    makeFolder(file.parent_path());
    NewFile(file, readers == Readers::Owner ? 0600 : 0666).write(bytes);
}

std::string withWords(std::string_view text, const Words& words) {
    std::string result;
    while (!text.empty()) {
        const std::size_t open = text.find("{{");
        result += text.substr(0, open);
        if (open == std::string_view::npos) break;
        text.remove_prefix(open);
        const std::size_t close = text.find("}}");
        const std::string_view name = close == std::string_view::npos ? "" : text.substr(2, close - 2);
        std::size_t used = 0;
        for (const auto& [word, value] : words) {
            if (word != name) continue;
            result += value;
            used = close + 2;
        }
        if (used == 0)
            throw Error(fmt::format("a file of the program holds an unknown word {{{{{}}}}}", name));
        text.remove_prefix(used);
    }
    return result;
}

Words wordsOfLines(std::string_view lines) {
    Words words;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            throw Error(fmt::format("a file of the program holds a line without a word: {}", line));
        words.emplace_back(line.substr(0, colon), text::trim(line.substr(colon + 1)));
    }
    return words;
}

void layDown(std::string_view prefix, const fs::path& folder) {
    for (const InstallFile& file : installFiles(prefix)) {
        const std::string_view name = file.name().substr(prefix.size());
        if (name.starts_with("rows/") || name.starts_with("shared/") || name == "README.md") continue;
        writeNewFile(folder / name, file.bytes());
    }
}

}  // namespace torvex
