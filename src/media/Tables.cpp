#include "media/Tables.h"

namespace torvex {

std::span<const OwnedTable> mediaTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_DOCUMENTS", .site = "doc_site"},
        {.name = "TORVEX_DOCUMENTS_FOLDERS", .site = "fld_site"},
        {.name = "TORVEX_IMAGES", .site = "img_site"},
        {.name = "TORVEX_IMAGES_FOLDERS", .site = "fld_site"},
        {.name = "TORVEX_FOLDERS_GROUPS", .site = "fld_site"},
    };
    return tables;
}

}  // namespace torvex
