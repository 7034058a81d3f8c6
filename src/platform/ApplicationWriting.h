#pragma once

#include "platform/ApplicationValues.h"

namespace torvex {

/// Other writers of the application's values wait while it lives; what was written is seen as a whole when it ends.
class ApplicationWriting {
  public:
    explicit ApplicationWriting(ApplicationValues& application) : application_(application) {
        application_.lock();
    }
    ApplicationWriting(const ApplicationWriting&) = delete;
    ApplicationWriting& operator=(const ApplicationWriting&) = delete;
    ~ApplicationWriting() { application_.unlock(); }

  private:
    ApplicationValues& application_;
};

}  // namespace torvex
