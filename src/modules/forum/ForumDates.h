#pragma once

#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {

/// A day "yyyymmdd" as "dd/mm/yyyy".
std::string shownDay(std::string_view date8);

/// The day that lies so many days before a moment, "yyyymmdd"; negative numbers lead ahead. Limited to the
/// years from 1 to 9999.
std::string dayBefore(const DateTime& moment, double days);

}  // namespace torvex
