#pragma once

#include <chrono>

#include "platform/DateTime.h"

namespace torvex {

// Moments to calculate with: by the calendar, in which every day has 24 hours.

std::chrono::sys_days dayOf(const DateTime& moment);
std::chrono::sys_seconds secondOf(const DateTime& moment);
DateTime momentOf(std::chrono::sys_seconds second);

}  // namespace torvex
