#include "platform/files/WatchedFileSystem.h"

namespace torvex {

namespace {

/// Tells at the end of the work, however it ends.
template <typename Tell>
class AtEnd {
  public:
    explicit AtEnd(Tell tell) : tell_(std::move(tell)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() { tell_(); }

  private:
    Tell tell_;
};

}  // namespace

void WatchedFileSystem::writeText(const std::string& path, std::string_view text, TextFormat format) {
    const AtEnd tell([&] { onChange_(path); });
    files_.writeText(path, text, format);
}

void WatchedFileSystem::writeBytes(const std::string& path, std::string_view bytes) {
    const AtEnd tell([&] { onChange_(path); });
    files_.writeBytes(path, bytes);
}

void WatchedFileSystem::writeTexts(const std::vector<TextFile>& texts, TextFormat format) {
    const AtEnd tell([&] {
        for (const TextFile& text : texts) onChange_(text.path);
    });
    files_.writeTexts(texts, format);
}

void WatchedFileSystem::copyFile(const std::string& from, const std::string& to) {
    const AtEnd tell([&] { onChange_(to); });
    files_.copyFile(from, to);
}

void WatchedFileSystem::deleteFile(const std::string& path) {
    const AtEnd tell([&] { onChange_(path); });
    files_.deleteFile(path);
}

void WatchedFileSystem::moveFile(const std::string& from, const std::string& to) {
    const AtEnd tell([&] {
        onChange_(from);
        onChange_(to);
    });
    files_.moveFile(from, to);
}

void WatchedFileSystem::deleteFolder(const std::string& path) {
    const AtEnd tell([&] { onChange_(path.ends_with('/') ? path : path + '/'); });
    files_.deleteFolder(path);
}

}  // namespace torvex
