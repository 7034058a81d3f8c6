#pragma once

#include <string>
#include <string_view>

#include "platform/OperatorLog.h"

namespace spdlog {
class logger;
}

namespace torvex {

/// Writes what operators should know to the program's log, as one line whatever the text holds.
class LineLog final : public OperatorLog {
  public:
    /// `log` outlives the object.
    explicit LineLog(spdlog::logger& log) : log_(log) {}

    void warn(std::string_view line) override;

  private:
    spdlog::logger& log_;
};

/// A text on one line: the lines of a chain are divided by bars, other control characters dropped.
std::string oneLine(std::string_view text);

}  // namespace torvex
