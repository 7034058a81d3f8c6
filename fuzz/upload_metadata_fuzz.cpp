#include <cstdint>
#include <cstdlib>

#include "media/FileKinds.h"
#include "media/FileNames.h"
#include "media/UploadNotes.h"
#include "pages/api/UploadMetadata.h"

using namespace torvex;

/// A note must say again what was noted.
static void expectKept(const std::string& name, const std::string& title) {
    const Upload upload{"id",
                        {.loginId = 1,
                         .file = {{MediaKind::Documents, "aa", "001"}, name},
                         .title = title,
                         .length = 5,
                         .metadata = {}}};
    const auto again = readNote(noteOf(upload));
    if (!again || again->plan.file.name != name || again->plan.title != title) std::abort();
}

/// The input is the field `Upload-Metadata`. Its values become names of files and the beginnings of files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view field(reinterpret_cast<const char*>(data), size);
    readNote(field);
    const auto metadata = api::readUploadMetadata(field);
    if (!metadata) return 0;
    for (const auto& [name, value] : *metadata) {
        if (name.empty()) std::abort();
        beginsAs(name, value);
        const auto kept = keptFileName(value);
        if (!kept) continue;
        if (kept->find('/') != std::string::npos || kept->starts_with('.')) std::abort();
        expectKept(*kept, value);
    }
    return 0;
}
