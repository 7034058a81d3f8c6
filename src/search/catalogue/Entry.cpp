#include "search/catalogue/Entry.h"

#include "platform/workers/Packing.h"
#include "search/extraction/OneOf.h"

namespace torvex::catalogue {

bool isDocumentColumn(std::string_view name) {
    return isOneOf(name, column::ofDocument);
}

std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool isSnapshot(std::string_view path) {
    return path.starts_with("search/");
}

std::string pack(const Entry& entry) {
    Packing packing;
    packing.text(entry.path)
        .number(entry.stamp.size)
        .number(static_cast<std::uint64_t>(entry.stamp.modified));
    packing.text(entry.reading.language);
    packColumns(packing, entry.reading.columns);
    packing.text(isSnapshot(entry.path) ? "" : entry.reading.text);
    return packing.take();
}

Entry unpackEntry(std::string_view bytes) {
    Unpacking unpacking(bytes);
    Entry entry;
    entry.path = unpacking.text();
    entry.stamp.size = unpacking.number();
    entry.stamp.modified = static_cast<std::int64_t>(unpacking.number());
    entry.reading.language = unpacking.text();
    entry.reading.columns = unpackColumns(unpacking);
    entry.reading.text = unpacking.text();
    return entry;
}

}  // namespace torvex::catalogue
