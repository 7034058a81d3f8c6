#include "search/catalogue/ChangedFiles.h"

#include <utility>

namespace torvex::catalogue {

void ChangedFiles::note(const std::string& absolute) noexcept try {
    if (auto path = holdings_.pathOf(absolute)) {
        const std::scoped_lock lock(mutex_);
        paths_.insert(std::move(*path));
    }
} catch (const std::bad_alloc&) {
    // The next comparison of all files finds it.
}

std::vector<std::string> ChangedFiles::take() {
    const std::scoped_lock lock(mutex_);
    const std::set<std::string> paths = std::exchange(paths_, {});
    return {paths.begin(), paths.end()};
}

void ChangedFiles::putBack(const std::vector<std::string>& paths) {
    const std::scoped_lock lock(mutex_);
    paths_.insert(paths.begin(), paths.end());
}

}  // namespace torvex::catalogue
