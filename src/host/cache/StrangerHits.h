#pragma once

#include "host/cache/StrangerViews.h"
#include "platform/HitCounter.h"

namespace torvex {

/// Counts for one visitor without a session, who brings no list of what was viewed before. Used by one request.
class StrangerHits final : public HitCounter {
  public:
    StrangerHits(HitCounter& real, StrangerViews& strangers, const Exchange& exchange)
        : real_(real), strangers_(strangers), exchange_(exchange) {}

    bool count(std::string_view nodeId, std::string_view day, bool unique) override {
        return real_.count(nodeId, day, unique && strangers_.isFirst(exchange_, nodeId, day));
    }
    void countSearch(const SearchedWords& searched) override { real_.countSearch(searched); }
    void countNothingFound(const SearchedWords& searched) override { real_.countNothingFound(searched); }
    bool flush() override { return real_.flush(); }

  private:
    HitCounter& real_;
    StrangerViews& strangers_;
    const Exchange& exchange_;
};

}  // namespace torvex
