#include "platform/DateTime.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <fmt/format.h>

namespace torvex {

namespace {

bool isLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysInMonth(int year, int month) {
    static constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

bool isRealMoment(const DateTime& m) {
    return m.month >= 1 && m.month <= 12 && m.day >= 1 && m.day <= daysInMonth(m.year, m.month) &&
           m.hour >= 0 && m.hour <= 23 && m.minute >= 0 && m.minute <= 59 && m.second >= 0 && m.second <= 59;
}

/// Reads exactly `length` digits at `at`; -1 when one of them is no digit.
int digits(const std::string& text, std::size_t at, std::size_t length) {
    int value = 0;
    for (std::size_t i = at; i < at + length; ++i) {
        if (text[i] < '0' || text[i] > '9') return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

}  // namespace

std::string date8(const DateTime& moment) {
    // Asked for several times by every page, so without a general formatter.
    std::string text(8, '0');
    int rest = (moment.year * 100 + moment.month) * 100 + moment.day;
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, rest /= 10) {
        *digit = static_cast<char>('0' + rest % 10);
    }
    return text;
}

std::string isoText(const DateTime& moment) {
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", moment.year, moment.month, moment.day,
                       moment.hour, moment.minute, moment.second);
}

bool parseIso(const std::string& text, DateTime& moment) {
    const bool dateOnly = text.size() == 10;
    const bool withTime = text.size() >= 19 && (text[10] == 'T' || text[10] == ' ') && text[13] == ':' &&
                          text[16] == ':' && (text.size() == 19 || text[19] == '.');
    if ((!dateOnly && !withTime) || text[4] != '-' || text[7] != '-') return false;
    DateTime read{digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)};
    if (withTime) {
        read.hour = digits(text, 11, 2);
        read.minute = digits(text, 14, 2);
        read.second = digits(text, 17, 2);
    }
    if (read.year < 0 || !isRealMoment(read)) return false;
    moment = read;
    return true;
}

bool isDate8(std::string_view text) {
    constexpr std::size_t length = 8;
    if (text.size() != length) return false;
    const std::string day(text);
    DateTime moment;
    return parseIso(day.substr(0, 4) + "-" + day.substr(4, 2) + "-" + day.substr(6), moment) &&
           moment.year > 0;
}

std::int64_t Clock::unixSeconds() const {
    const DateTime local = now();
    std::tm parts{};
    parts.tm_year = local.year - 1900;
    parts.tm_mon = local.month - 1;
    parts.tm_mday = local.day;
    parts.tm_hour = local.hour;
    parts.tm_min = local.minute;
    parts.tm_sec = local.second;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

std::int64_t SystemClock::unixSeconds() const {
    return std::time(nullptr);
}

DateTime SystemClock::now() const {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace torvex
