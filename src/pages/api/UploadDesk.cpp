#include "pages/api/UploadDesk.h"

#include <algorithm>
#include <charconv>

namespace torvex::api {

std::optional<std::uint64_t> numberIn(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::string uploadIn(const std::string& path) {
    return path.size() > uploadFolder.size() ? path.substr(uploadFolder.size()) : std::string();
}

void FinishedUploads::add(const std::string& id, Finished finished) {
    const std::lock_guard lock(mutex_);
    finished_.emplace_back(id, std::move(finished));
    if (finished_.size() > most) finished_.pop_front();
}

std::optional<FinishedUploads::Finished> FinishedUploads::find(const std::string& id, int loginId) const {
    const std::lock_guard lock(mutex_);
    for (const auto& [known, finished] : finished_)
        if (known == id && finished.plan.loginId == loginId) return finished;
    return std::nullopt;
}

std::string megabytes(std::uint64_t bytes) {
    constexpr std::uint64_t megabyte = 1024 * 1024;
    return std::to_string(std::max<std::uint64_t>(bytes / megabyte, 1));
}

}  // namespace torvex::api
