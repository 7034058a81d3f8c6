#include "host/cache/Ingredients.h"

#include <algorithm>

#include "platform/ApplicationValues.h"

namespace torvex {

bool Ingredients::holdsInApplication(const ApplicationValues& values) const {
    return std::ranges::all_of(application,
                               [&](const auto& read) { return values.get(read.first) == read.second; });
}

bool Ingredients::holdsInFiles() const {
    return std::ranges::all_of(files,
                               [](const auto& read) { return FileStamp::at(read.first) == read.second; });
}

bool Ingredients::holdsByConditions() const {
    return std::ranges::all_of(conditions, [](const auto& holds) { return holds(); });
}

bool Ingredients::holdsOn(std::string_view today) const {
    return day.empty() || day == today;
}

bool Ingredients::holdsInContent(const db::SharedStates& now) const {
    if (!states || states == now) return true;
    return now && states->agreesWith(*now, tables);
}

}  // namespace torvex
