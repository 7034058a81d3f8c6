#include "search/catalogue/Extent.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <xapian.h>

#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Reader.h"

namespace torvex::catalogue {

namespace {

/// Files may come and go meanwhile.
std::uint64_t bytesIn(const std::string& folder) {
    std::uint64_t bytes = 0;
    std::error_code failure;
    for (const auto& entry : std::filesystem::directory_iterator(folder, failure)) {
        const std::uint64_t size = entry.is_regular_file(failure) ? entry.file_size(failure) : 0;
        if (!failure) bytes += size;
    }
    return bytes;
}

}  // namespace

std::optional<Extent> extentOf(std::string_view installPath) try {
    Extent extent;
    Reader(installPath).read([&](const Xapian::Database& database) {
        extent.entries = database.get_doccount();
        const std::string queue = database.get_metadata(std::string(metadata::queue));
        extent.queue = static_cast<std::int64_t>(text::isNumeric(queue) ? text::toNumber(queue) : 0);
    });
    extent.bytes = bytesIn(databaseFolder(installPath));
    return extent;
} catch (const UnavailableError&) {
    return std::nullopt;
}

}  // namespace torvex::catalogue
