#pragma once

#include "platform/Errors.h"

namespace torvex::cli {

/// A command line that makes no sense; nothing was done.
class UsageError : public Error {
  public:
    using Error::Error;
};

}  // namespace torvex::cli
