#include "host/files/PublicFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "host/http/Ascii.h"
#include "host/http/ErrorPages.h"
#include "media/MediaTypes.h"
#include "platform/net/HttpDate.h"

namespace torvex {

namespace {

std::optional<FileStamp> stampOf(const Descriptor& file) {
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return FileStamp::of(status);
}

std::string readAll(const Descriptor& file, std::size_t size) {
    std::string bytes(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count =
            ::pread(file.number(), bytes.data() + done, size - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

/// Reads until nothing changed meanwhile, so that bytes and stamp belong together.
std::optional<std::string> readStable(const Descriptor& file, FileStamp& stamp, std::size_t largest) {
    constexpr int tries = 4;
    for (int i = 0; i < tries && stamp.size <= largest; ++i) {
        std::string bytes = readAll(file, static_cast<std::size_t>(stamp.size));
        const std::optional<FileStamp> now = stampOf(file);
        if (now == stamp && bytes.size() == stamp.size) return bytes;
        if (now) stamp = *now;
    }
    return std::nullopt;
}

/// A larger text takes a worker too long, and a cache too much.
constexpr std::uint64_t largestEncoded = 4 * 1024 * 1024;

/// Whether a browser would run script in a document of this type.
bool isActive(std::string_view type) {
    return type.starts_with("text/html") || type.find("xml") != std::string_view::npos;
}

bool isUpload(std::string_view relativePath, const StaticFileOptions& options) {
    return std::any_of(options.uploads.begin(), options.uploads.end(),
                       [relativePath](std::string_view folder) {
                           return ascii::startsWith(relativePath, folder.substr(1));
                       });
}

void describe(PublicFile& file, std::string_view name, const StaticFileOptions& options) {
    const std::string_view type = mediaType(name, options.types);
    file.etag = fmt::format("\"{:x}-{:x}-{:x}\"", file.stamp.inode, file.stamp.size, file.stamp.modified);
    file.fields = fmt::format(
        "Content-Type: {}\r\nLast-Modified: {}\r\nETag: {}\r\nCache-Control: {}\r\nAccept-Ranges: bytes\r\n",
        type, httpDate(file.modified()), file.etag, options.cacheControl);
    file.isText = options.encodes && isTextType(type) && file.stamp.size >= leastEncoded &&
                  file.stamp.size <= largestEncoded;
    if (file.isText) file.fields += "Vary: Accept-Encoding\r\n";
    if (isActive(type) && isUpload(name, options)) file.fields += "Content-Security-Policy: sandbox\r\n";
}

}  // namespace

bool isOutOfDescriptors(int errorNumber) {
    return errorNumber == EMFILE || errorNumber == ENFILE || errorNumber == ENOMEM;
}

std::optional<PublicFile> PublicFile::open(const RootFolder& root, const std::string& relativePath,
                                           const StaticFileOptions& options) {
    // Not blocking: a pipe in the folder would hold up the loop until someone writes to it.
    Descriptor opened = root.openWithoutLinks(relativePath, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!opened && isOutOfDescriptors(errno)) throw OutOfDescriptors();
    const std::optional<FileStamp> stamp = opened ? stampOf(opened) : std::nullopt;
    if (!stamp) return std::nullopt;
    PublicFile result;
    result.stamp = *stamp;
    if (std::optional<std::string> bytes = readStable(opened, result.stamp, options.smallFile)) {
        result.bytes = std::make_shared<const std::string>(std::move(*bytes));
    } else {
        result.file = std::make_shared<const Descriptor>(std::move(opened));
    }
    describe(result, relativePath, options);
    return result;
}

Answer PublicFile::answer(const FileConditions& conditions) const {
    const FileSelection selection = select(conditions, {stamp.size, etag, modified()});
    if (std::holds_alternative<NotModified>(selection)) return notModified();
    if (std::holds_alternative<UnsatisfiableRange>(selection)) return unsatisfiable();
    if (const auto* selected = std::get_if<FilePart>(&selection)) return part(*selected);
    return whole();
}

std::shared_ptr<const std::string> PublicFile::read() const {
    if (bytes) return bytes;
    FileStamp found = stamp;
    std::optional<std::string> all = readStable(*file, found, static_cast<std::size_t>(stamp.size));
    if (!all || found != stamp) return nullptr;
    return std::make_shared<const std::string>(std::move(*all));
}

std::string PublicFile::etagOf(Coding coding) const {
    return fmt::format("{}.{}\"", std::string_view(etag).substr(0, etag.size() - 1), codingName(coding));
}

std::string PublicFile::fieldsOf(Coding coding) const {
    std::string result = fields;
    result.replace(result.find(etag), etag.size(), etagOf(coding));
    return result + fmt::format("Content-Encoding: {}\r\n", codingName(coding));
}

bool PublicFile::isKnown(const FileConditions& conditions, Coding coding) const {
    const std::string tag = etagOf(coding);
    return std::holds_alternative<NotModified>(select(conditions, {stamp.size, tag, modified()}));
}

Answer PublicFile::notModified(Coding coding) const {
    Answer answer = notModified();
    answer.fields = fieldsOf(coding);
    return answer;
}

Answer PublicFile::encoded(Coding coding, std::shared_ptr<const std::string> form) const {
    Answer answer;
    answer.fields = fieldsOf(coding);
    answer.body = std::move(form);
    return answer;
}

Answer PublicFile::whole() const {
    Answer answer;
    answer.fields = fields;
    if (bytes) {
        answer.body = bytes;
    } else {
        answer.body = FileAnswer{file, 0, stamp.size};
    }
    return answer;
}

Answer PublicFile::part(const FilePart& part) const {
    Answer answer;
    answer.status = 206;
    answer.fields = fields;
    answer.addField("Content-Range",
                    fmt::format("bytes {}-{}/{}", part.offset, part.offset + part.length - 1, stamp.size));
    if (bytes) {
        answer.body =
            bytes->substr(static_cast<std::size_t>(part.offset), static_cast<std::size_t>(part.length));
    } else {
        answer.body = FileAnswer{file, part.offset, part.length};
    }
    return answer;
}

Answer PublicFile::notModified() const {
    Answer answer;
    answer.status = 304;
    answer.fields = fields;
    answer.hasLength = false;
    return answer;
}

Answer PublicFile::unsatisfiable() const {
    Answer answer = errorPages::page(416);
    answer.addField("Content-Range", fmt::format("bytes */{}", stamp.size));
    return answer;
}

}  // namespace torvex
