#pragma once

#include <string>
#include <string_view>

namespace torvex {

class Exchange;
class LineLog;
class Session;

/// What the log keeps of a request that failed: one line with a random number, which the visitor sees too,
/// the address, the login and the error. Values that look like passwords are left out; what a visitor sends
/// is cut and can't break the line.
class FailureReport {
  public:
    FailureReport(const Exchange& exchange, const Session& session, std::string_view error);

    const std::string& reference() const { return reference_; }
    const std::string& line() const { return line_; }
    /// Of many reports of one page and one operation only the first stand in the log.
    void write(LineLog& log) const;

  private:
    std::string reference_;
    std::string line_;
    std::string kind_;
};

/// A query with the values of names like "password" replaced, also where the name is written with escapes.
std::string withoutSecrets(std::string_view query);

}  // namespace torvex
