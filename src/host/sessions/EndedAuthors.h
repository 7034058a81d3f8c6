#pragma once

#include <span>
#include <string>

namespace torvex {

class LineLog;
struct Services;

/// Has the authors whose sessions have ended leave the site and language that they were in, so that nobody waits
/// for them. Never throws: what goes wrong stands in the log.
void leaveWebsites(const Services& services, LineLog& log, std::span<const std::string> sessionIds);

}  // namespace torvex
