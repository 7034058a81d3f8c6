#include "search/extraction/Archive.h"

#include <algorithm>
#include <array>
#include <zip.h>

#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

constexpr zip_int64_t mostFiles = 100'000;

struct CloseFile {
    void operator()(zip_file_t* file) const { ::zip_fclose(file); }
};

}  // namespace

Archive::Archive(std::string_view bytes, std::uint64_t most) : left_(most) {
    zip_error_t error;
    ::zip_error_init(&error);
    zip_source_t* source = ::zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source != nullptr) archive_ = ::zip_open_from_source(source, ZIP_RDONLY, &error);
    ::zip_error_fini(&error);
    if (archive_ == nullptr) {
        if (source != nullptr) ::zip_source_free(source);
        // Office programs encrypt all of an archive into a file of another kind.
        const bool isOther = bytes.starts_with("\xD0\xCF\x11\xE0");
        throw ExtractionError(isOther ? "it is encrypted, or of an old kind" : "it is broken");
    }
    const zip_int64_t count = std::min(::zip_get_num_entries(archive_, 0), mostFiles);
    for (zip_int64_t n = 0; n < count; ++n) {
        const char* name = ::zip_get_name(archive_, static_cast<zip_uint64_t>(n), 0);
        if (name != nullptr) names_.emplace_back(name);
    }
}

Archive::~Archive() {
    ::zip_discard(archive_);
}

bool Archive::has(std::string_view name) const {
    return std::find(names_.begin(), names_.end(), name) != names_.end();
}

void Archive::read(const std::string& name, XmlEvents& events) {
    if (!has(name)) return;
    zip_stat_t status;
    if (::zip_stat(archive_, name.c_str(), 0, &status) != 0) throw ExtractionError("it is broken");
    const bool isEncrypted =
        (status.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && status.encryption_method != ZIP_EM_NONE;
    if (isEncrypted) throw ExtractionError("it is encrypted");
    const std::unique_ptr<zip_file_t, CloseFile> file(::zip_fopen(archive_, name.c_str(), 0));
    if (!file) throw ExtractionError("it is broken");
    XmlFeed feed(events);
    std::array<char, 1 << 16> piece;
    for (;;) {
        const zip_int64_t size = ::zip_fread(file.get(), piece.data(), piece.size());
        if (size < 0) throw ExtractionError("it is broken");
        if (size == 0) break;
        if (static_cast<std::uint64_t>(size) > left_) throw ExtractionError("it unpacks to too much");
        left_ -= static_cast<std::uint64_t>(size);
        if (!feed.add({piece.data(), static_cast<std::size_t>(size)})) return;
    }
    feed.finish();
}

}  // namespace torvex::catalogue
