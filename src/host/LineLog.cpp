#include "host/LineLog.h"

#include <spdlog/logger.h>

namespace torvex {

void LineLog::warn(std::string_view line) {
    log_.warn(oneLine(line));
}

std::string oneLine(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\n') {
            result += " | ";
        } else if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7f) {
            result += c;
        }
    }
    return result;
}

}  // namespace torvex
