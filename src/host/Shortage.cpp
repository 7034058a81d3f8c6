#include "host/Shortage.h"

#include "host/LineLog.h"
#include "host/http/ErrorPages.h"

namespace torvex {

void warnOfDescriptors(LineLog& log) {
    log.warn(
        "no file descriptor is left: visitors are told to come back. Raise the limit of open files "
        "(LimitNOFILE, "
        "ulimit -n), or lower connections in [limits]");
}

Answer outOfDescriptors(LineLog& log) {
    warnOfDescriptors(log);
    return errorPages::page(503);
}

}  // namespace torvex
