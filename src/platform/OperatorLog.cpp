#include "platform/OperatorLog.h"

#include <string>

#include "platform/text/Text.h"

namespace torvex {

void warnOf(OperatorLog& log, std::string_view what, const std::exception& error) {
    log.warn(std::string(what) + ": " + text::replaceAll(error.what(), "\r\n", " "));
}

}  // namespace torvex
