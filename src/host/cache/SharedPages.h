#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/cache/Looks.h"
#include "host/cache/PageCache.h"
#include "host/cache/StrangerViews.h"
#include "platform/Services.h"

namespace torvex {

/// The pages that all visitors without a session share, and the count of who views them. Safe to share between threads.
class SharedPages {
  public:
    SharedPages(const Services& services, std::size_t mostBytes) : services_(services), cache_(mostBytes) {}

    /// Whether answers to this request may be shared, provided that no session is known by it.
    bool mayShare(const Exchange& exchange) const;

    /// The page for a request without a session, if one is kept and stands; its views are counted then. `looks` are the
    /// calling loop's. Never waits.
    PageCache::Page find(const Exchange& exchange, Looks& looks);

    /// Keeps a page, if there is room for one like it; never null. `changes` are those of the application's values
    /// before it was begun.
    PageCache::Page keep(const Exchange& exchange, Ingredients made, std::uint64_t changes, MadePage page);

    /// Counts views by a visitor without a session.
    void count(const Exchange& exchange, const std::vector<std::string>& views);

    StrangerViews& strangers() { return strangers_; }

  private:
    void count(const Exchange& exchange, const std::vector<std::string>& views, const std::string& today);
    bool canCount(const std::vector<std::string>& views, const std::string& today) const;

    const Services services_;
    PageCache cache_;
    StrangerViews strangers_;
};

}  // namespace torvex
