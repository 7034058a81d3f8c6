#pragma once

#include "host/http/Answer.h"

namespace torvex {

class LineLog;

/// For what is there but can't be opened, as no file descriptor is left: tells the operator, and the visitor
/// to come back.
Answer outOfDescriptors(LineLog& log);

/// The operator's line alone, for a visitor who can't be answered.
void warnOfDescriptors(LineLog& log);

}  // namespace torvex
