#pragma once

#include <map>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The names of the months in a language, in English where it has none. Looked up together when the first
/// one is asked for. Lives for one request.
class MonthNames {
  public:
    MonthNames(db::Connection& connection, std::string lang)
        : connection_(connection), lang_(std::move(lang)) {}

    /// `month` is "01" to "12"; "" for anything else.
    std::string of(std::string_view month);

  private:
    void read();

    db::Connection& connection_;
    std::string lang_;
    std::map<double, std::string> names_;
};

}  // namespace torvex
