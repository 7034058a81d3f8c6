#include "search/extraction/Reading.h"

#include "platform/workers/Packing.h"

namespace torvex::catalogue {

void packColumns(Packing& packing, const Columns& columns) {
    packing.number(columns.size());
    for (const auto& [name, value] : columns) packing.text(name).text(value);
}

Columns unpackColumns(Unpacking& unpacking) {
    Columns columns;
    for (std::uint64_t left = unpacking.number(); left > 0; --left) {
        const std::string_view name = unpacking.text();
        columns.emplace(name, unpacking.text());
    }
    return columns;
}

}  // namespace torvex::catalogue
