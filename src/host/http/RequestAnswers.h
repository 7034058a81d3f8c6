#pragma once

#include <optional>
#include <string>

#include "platform/Request.h"

namespace torvex {

class Exchange;

/// What the `Request` made of an exchange would answer, without making all of it: for who asks a few questions only. The
/// exchange must outlive it.
class RequestAnswers {
  public:
    explicit RequestAnswers(const Exchange& exchange) : exchange_(exchange) {}

    /// "" for questions of the kind `Other`, which no visitor's page asks.
    std::string to(const RequestQuestion& question);

  private:
    const Request& query();
    bool isInQuery(std::string_view name);
    std::string variable(std::string_view name) const;

    const Exchange& exchange_;
    std::optional<Request> query_;  ///< with nothing but the query
};

}  // namespace torvex
