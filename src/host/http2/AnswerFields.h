#pragma once

#include <nghttp2/nghttp2.h>
#include <string>
#include <string_view>
#include <vector>

#include "host/http/Answer.h"

namespace torvex::http2 {

/// The header of one answer after the other, as this protocol has it: names in lower case, and nothing that is said of
/// a connection.
class AnswerFields {
  public:
    /// `common` are those that every answer carries; "Name: value\r\n" each.
    void set(const Answer& answer, std::string_view date, std::string_view common);

    /// Valid until the next one is set.
    const std::vector<nghttp2_nv>& list() const { return list_; }

  private:
    void addLine(std::size_t begin, std::size_t end);

    std::string text_;
    std::vector<nghttp2_nv> list_;
};

}  // namespace torvex::http2
