#pragma once

#include <string>
#include <vector>

#include "search/ResultList.h"
#include "search/WordMarks.h"

namespace torvex {

/// The part of a results template that shows one result. Besides the tags of the encoded texts it may hold
/// `search_titleMarked` and `search_abstractMarked`: the same with the words that were searched for in `mark`
/// elements.
class ResultTemplate {
  public:
    /// `block` is what stands in the block `search_result`.
    ResultTemplate(HostContext& host, std::string_view block, const KeptQuery& query);

    /// `rankBase` is the rank that counts as the best.
    std::string fill(const catalogue::Row& row, const FoundFile& file, int rankBase) const;
    /// What stands between two results.
    const std::string& spacer() const { return spacer_; }

  private:
    std::string graph(int rank, int rankBase) const;

    HostContext& host_;
    std::vector<std::string> extraColumns_;
    WordMarks marks_;
    std::string layout_;
    std::string spacer_;
    std::string graphUnit_;
};

}  // namespace torvex
