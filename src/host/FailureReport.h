#pragma once

#include <string>
#include <string_view>

namespace spdlog {
class logger;
}

namespace torvex {

class Exchange;
class Session;

/// What the log keeps of a request that failed: one line with a random number, which the visitor sees too,
/// the address, the login and the error. Values that look like passwords are left out, and nothing that a
/// visitor sends can break the line.
class FailureReport {
  public:
    FailureReport(const Exchange& exchange, const Session& session, std::string_view error);

    const std::string& reference() const { return reference_; }
    const std::string& line() const { return line_; }
    void write(spdlog::logger& log) const;

  private:
    std::string reference_;
    std::string line_;
};

/// A query with the values of names like "password" replaced.
std::string withoutSecrets(std::string_view query);

}  // namespace torvex
