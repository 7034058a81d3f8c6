#include "host/files/StaticFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <fcntl.h>

#include "host/http/ErrorPages.h"
#include "media/MediaTypes.h"

namespace torvex {

namespace {

FileConditions conditionsOf(const RequestHead& head) {
    FileConditions conditions;
    for (const auto& [name, value] : head.fields) {
        if (ascii::equals(name, "Range")) conditions.range = value;
        if (ascii::equals(name, "If-Range")) conditions.ifRange = value;
        if (ascii::equals(name, "If-None-Match")) conditions.ifNoneMatch = value;
        if (ascii::equals(name, "If-Modified-Since")) conditions.ifModifiedSince = value;
    }
    return conditions;
}

std::string relative(std::string_view path) {
    return std::string(path.substr(1));
}

}  // namespace

bool isPublicPath(std::string_view path, const MediaTypes& more) {
    if (!path.starts_with('/') || path.find_first_of(std::string_view("\\\0", 2)) != std::string_view::npos)
        return false;
    std::string_view name;
    while (!path.empty()) {
        path.remove_prefix(1);
        name = path.substr(0, path.find('/'));
        if (name.empty() || name.front() == '.') return false;
        path.remove_prefix(name.size());
    }
    return !mediaType(name, more).empty();
}

Answer fileAnswer(const RootFolder& root, std::string_view path, const RequestHead& head,
                  const StaticFileOptions& options) {
    if (!isPublicPath(path, options.types)) return errorPages::page(404);
    const auto file = PublicFile::open(root, relative(path), options);
    return file ? file->answer(conditionsOf(head)) : errorPages::page(404);
}

struct StaticFiles::Kept {
    std::string path;
    PublicFile file;
    std::time_t checked;  ///< when the way to it was last seen to pass no link

    std::size_t cost() const { return file.bytes->size() + path.size() + file.fields.size() + 512; }
};

Answer FileToEncode::answer(EncodedFiles& encoded) const {
    try {
        if (EncodedFiles::Bytes bytes = encoded.make(file, coding))
            return file.encoded(coding, std::move(bytes));
    } catch (const std::exception&) {
        // Without memory for it the bytes do as they are.
    }
    return file.answer({});
}

StaticFiles::StaticFiles(const RootFolder& root, EncodedFiles& encoded, StaticFileOptions options)
    : root_(root),
      encoded_(encoded),
      options_(std::move(options)),
      folder_(root.open(".", O_PATH | O_DIRECTORY)) {}

StaticFiles::~StaticFiles() = default;

/// A part of a file is a part of its bytes as they are.
FileReply StaticFiles::reply(const PublicFile& file, const RequestHead& head) const {
    const FileConditions conditions = conditionsOf(head);
    const Coding coding =
        file.isText && conditions.range.empty() ? preferredCoding(head, smallestFirst) : Coding::Identity;
    if (coding == Coding::Identity) return file.answer(conditions);
    if (file.isKnown(conditions, coding)) return file.notModified(coding);
    if (auto bytes = encoded_.find(file.stamp, coding)) return file.encoded(coding, std::move(bytes));
    return FileToEncode{file, coding};
}

FileReply StaticFiles::answer(std::string_view path, const RequestHead& head) {
    if (const Kept* kept = findCurrent(path)) return reply(kept->file, head);
    if (!isPublicPath(path, options_.types)) return errorPages::page(404);
    std::optional<PublicFile> file = PublicFile::open(root_, relative(path), options_);
    if (!file) return errorPages::page(404);
    FileReply answer = reply(*file, head);
    if (file->bytes && file->stamp.isSettled())
        keep({std::string(path), std::move(*file), std::time(nullptr)});
    return answer;
}

/// One look at the disk and no opening. That the look may follow a link to a folder does no harm: what it
/// finds must be the very file that was opened beneath the root, and once in a second it is found without
/// links.
const StaticFiles::Kept* StaticFiles::findCurrent(std::string_view path) {
    const auto found = byPath_.find(path);
    if (found == byPath_.end()) return nullptr;
    const Order::iterator place = found->second;
    struct stat status {};
    const bool exists =
        ::fstatat(folder_.number(), place->path.c_str() + 1, &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (!exists || FileStamp::of(status) != place->file.stamp || !isStillReached(*place)) {
        drop(place);
        return nullptr;
    }
    order_.splice(order_.begin(), order_, place);
    return &*place;
}

bool StaticFiles::isStillReached(Kept& kept) const {
    const std::time_t now = std::time(nullptr);
    if (now == kept.checked) return true;
    const Descriptor reached = root_.openWithoutLinks(relative(kept.path), O_PATH);
    if (!reached && !isOutOfDescriptors(errno)) return false;
    kept.checked = now;
    return true;
}

void StaticFiles::drop(Order::iterator place) {
    cachedBytes_ -= place->cost();
    byPath_.erase(place->path);
    order_.erase(place);
}

void StaticFiles::keep(Kept file) {
    if (file.cost() > options_.cacheBytes) return;
    cachedBytes_ += file.cost();
    order_.push_front(std::move(file));
    byPath_.emplace(order_.front().path, order_.begin());
    while (cachedBytes_ > options_.cacheBytes) drop(std::prev(order_.end()));
}

}  // namespace torvex
