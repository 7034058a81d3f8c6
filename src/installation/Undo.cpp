#include "installation/Undo.h"

#include <exception>

namespace torvex {

namespace fs = std::filesystem;

Undo::~Undo() {
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        try {
            (*step)();
        } catch (const std::exception&) {
            // Told already is what went wrong first; the rest is taken back all the same.
            continue;
        }
    }
}

void Undo::removeWhatIsMade(const fs::path& path) {
    const fs::path absolute = fs::absolute(path).lexically_normal();
    fs::path first;
    for (const fs::path& part : absolute) {
        first /= part;
        if (fs::exists(fs::symlink_status(first))) continue;
        add([first] {
            std::error_code ignored;
            fs::remove_all(first, ignored);
        });
        return;
    }
}

}  // namespace torvex
