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

std::string packReading(const Entry& entry) {
    Packing packing;
    packing.text(entry.reading.language);
    packColumns(packing, entry.reading.columns);
    packing.text(isSnapshot(entry.path) ? "" : entry.reading.text);
    return packing.take();
}

Reading unpackReading(std::string_view bytes) {
    Unpacking unpacking(bytes);
    Reading reading;
    reading.language = unpacking.text();
    reading.columns = unpackColumns(unpacking);
    reading.text = unpacking.text();
    return reading;
}

}  // namespace torvex::catalogue
