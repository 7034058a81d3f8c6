#include "platform/net/HttpDate.h"

#include <array>
#include <fmt/format.h>

namespace torvex {

namespace {

constexpr std::array<std::string_view, 7> days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// The number in plain digits, -1 for anything else.
int digits(std::string_view text) {
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}

int monthOf(std::string_view name) {
    for (std::size_t i = 0; i < months.size(); ++i)
        if (months[i] == name) return static_cast<int>(i);
    return -1;
}

bool hasShape(std::string_view text) {
    return text.size() == 29 && text.substr(3, 2) == ", " && text[7] == ' ' && text[11] == ' ' &&
           text[16] == ' ' && text[19] == ':' && text[22] == ':' && text.substr(25) == " GMT";
}

}  // namespace

std::string httpDate(std::time_t moment) {
    std::tm parts{};
    gmtime_r(&moment, &parts);
    return fmt::format("{}, {:02} {} {} {:02}:{:02}:{:02} GMT", days[static_cast<std::size_t>(parts.tm_wday)],
                       parts.tm_mday, months[static_cast<std::size_t>(parts.tm_mon)], parts.tm_year + 1900,
                       parts.tm_hour, parts.tm_min, parts.tm_sec);
}

std::optional<std::time_t> parseHttpDate(std::string_view text) {
    if (!hasShape(text)) return std::nullopt;
    std::tm parts{};
    parts.tm_mday = digits(text.substr(5, 2));
    parts.tm_mon = monthOf(text.substr(8, 3));
    parts.tm_year = digits(text.substr(12, 4)) - 1900;
    parts.tm_hour = digits(text.substr(17, 2));
    parts.tm_min = digits(text.substr(20, 2));
    parts.tm_sec = digits(text.substr(23, 2));
    const bool valid = parts.tm_mday >= 1 && parts.tm_mday <= 31 && parts.tm_mon >= 0 &&
                       parts.tm_year >= -300 && parts.tm_hour >= 0 && parts.tm_hour < 24 &&
                       parts.tm_min >= 0 && parts.tm_min < 60 && parts.tm_sec >= 0 && parts.tm_sec <= 60;
    if (!valid) return std::nullopt;
    return timegm(&parts);
}

}  // namespace torvex
