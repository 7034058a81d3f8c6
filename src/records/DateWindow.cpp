#include "records/DateWindow.h"

#include "platform/text/Text.h"

namespace torvex {

bool isWithin(std::string_view day, std::string_view from, std::string_view to) {
    return (from.empty() || text::compare(day, from) >= 0) && (to.empty() || text::compare(day, to) <= 0);
}

bool isOnlineOn(std::string_view day, double online, std::string_view from, std::string_view to) {
    return online == 1 && isWithin(day, from, to);
}

}  // namespace torvex
