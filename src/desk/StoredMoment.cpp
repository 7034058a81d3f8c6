#include "desk/StoredMoment.h"

#include <fmt/format.h>

namespace torvex {

std::optional<DateTime> storedMoment(std::string_view day, std::string_view time) {
    if (!isDate8(day)) return std::nullopt;
    const std::string iso =
        fmt::format("{}-{}-{}T{}", day.substr(0, 4), day.substr(4, 2), day.substr(6), time);
    DateTime moment;
    return parseIso(iso, moment) ? std::optional(moment) : std::nullopt;
}

}  // namespace torvex
