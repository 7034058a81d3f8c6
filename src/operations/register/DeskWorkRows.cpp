#include "operations/register/DeskRows.h"

namespace torvex::operations {

std::vector<Row<desk>> deskWorkRows() {
    return {
        reads("getBodies", &desk::getBodies, {argument("pageIdent")},
              "The bodies of a page by number: what kind each is, its feed, its length, and whether visitors "
              "see another one.",
              editRight("edit", "pageIdent"))
            .lists({{"bodyId", Number},
                    {"kind", Text},
                    {"feedId", Number},
                    {"feedTitle", Text},
                    {"characters", Number},
                    {"differs", Boolean}}),
    };
}

}  // namespace torvex::operations
