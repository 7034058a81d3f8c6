#include "pages/AcceptLanguage.h"

#include <algorithm>
#include <cstdlib>

#include "platform/text/Text.h"

namespace torvex {

namespace {

struct Preference {
    std::string language;  ///< without its region
    double weight = 1;
};

Preference preferenceOf(std::string_view item) {
    const std::size_t end = item.find(';');
    const std::string_view tag = text::trim(item.substr(0, end));
    Preference found{text::lower(tag.substr(0, tag.find('-'))), 1};
    if (end == std::string_view::npos) return found;
    const std::string_view weight = text::trim(item.substr(end + 1));
    if (weight.starts_with("q=")) found.weight = std::strtod(std::string(weight.substr(2)).c_str(), nullptr);
    return found;
}

}  // namespace

std::string likedLanguage(std::string_view acceptLanguage,
                          const std::function<bool(const std::string& language)>& isKnown) {
    Preference best{{}, 0};
    while (!acceptLanguage.empty()) {
        const std::size_t end = std::min(acceptLanguage.find(','), acceptLanguage.size());
        Preference wish = preferenceOf(acceptLanguage.substr(0, end));
        acceptLanguage.remove_prefix(std::min(end + 1, acceptLanguage.size()));
        if (wish.weight > best.weight && isKnown(wish.language)) best = std::move(wish);
    }
    return best.language;
}

}  // namespace torvex
