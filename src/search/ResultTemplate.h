#pragma once

#include <string>
#include <vector>

#include "search/ResultList.h"

namespace torvex {

/// The part of a results template that shows one result.
class ResultTemplate {
  public:
    /// `block` is what stands in the block `search_result`; `extraColumns` have tags of their own.
    ResultTemplate(HostContext& host, std::string_view block, std::vector<std::string> extraColumns);

    /// `rankBase` is the rank that counts as the best.
    std::string fill(const catalogue::Row& row, const FoundFile& file, int rankBase) const;
    /// What stands between two results.
    const std::string& spacer() const { return spacer_; }

  private:
    std::string graph(int rank, int rankBase) const;

    HostContext& host_;
    std::vector<std::string> extraColumns_;
    std::string layout_;
    std::string spacer_;
    std::string graphUnit_;
};

}  // namespace torvex
