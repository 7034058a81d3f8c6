#include "modules/forum/Places.h"

#include <algorithm>

#include "modules/forum/TreeLines.h"

namespace torvex::forumPlace {

namespace {

constexpr std::string_view digits = "0123456789";
/// By their order in all engines.
constexpr std::string_view signs = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::size_t orderOf(char sign) {
    if (sign >= 'a' && sign <= 'z') sign = static_cast<char>(sign - 'a' + 'A');
    return signs.find(sign);
}

/// The two characters behind those; nothing behind "ZZ", or behind what is no level.
std::optional<std::string> levelBehind(std::string_view level) {
    if (level.size() != 2) return std::nullopt;
    std::size_t first = orderOf(level[0]);
    std::size_t second = orderOf(level[1]);
    if (first == std::string_view::npos || second == std::string_view::npos) return std::nullopt;
    const bool isNumber = first < digits.size();
    const std::size_t base = isNumber ? digits.size() : signs.size();
    if (++second >= base) {
        second = 0;
        if (++first >= signs.size()) return std::nullopt;
    }
    return std::string{signs[first], signs[second]};
}

}  // namespace

std::optional<std::string> next(std::string_view parent, std::string_view last) {
    const std::string before = parent.empty() ? std::string() : std::string(parent) + '.';
    if (last.empty()) return before + "01";
    const std::string_view level = last.substr(std::min(before.size(), last.size())).substr(0, 2);
    const auto behind = levelBehind(level);
    if (!behind) return std::nullopt;
    return before + *behind;
}

std::string_view parentFor(std::string_view reference) {
    if (levelOf(reference) < mostLevels) return reference;
    return reference.substr(0, mostLevels * 3 - 4);
}

bool isBelow(std::string_view reference, std::string_view ancestor) {
    return reference.size() > ancestor.size() + 1 && reference.starts_with(ancestor) &&
           reference[ancestor.size()] == '.';
}

}  // namespace torvex::forumPlace
