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
    /// `asks` wants the database asked before each page, where it tells of changes in its own time.
    SharedPages(const Services& services, std::size_t mostBytes, bool asks)
        : services_(services), cache_(mostBytes), asks_(asks) {}

    /// For one loop, which must outlive them, and so must this.
    Looks looksOf(boost::asio::io_context& loop) const;

    /// Whether answers to this request may be shared, provided that no session is known by it.
    bool mayShare(const Exchange& exchange) const;

    /// The page for a request without a session; null when none is kept.
    PageCache::Page find(const Exchange& exchange) { return cache_.find(exchange); }
    /// Whether a page that was found stands and may go out: its views are counted then. Never waits.
    bool serves(const Exchange& exchange, const PageCache::Page& page, const Look& look);

    /// Keeps a page, if there is room for one like it; never null. `changes` are those of the application's values
    /// before it was begun.
    PageCache::Page keep(const Exchange& exchange, Ingredients made, std::uint64_t changes, MadePage page);

    /// Counts views by a visitor without a session.
    void count(const Exchange& exchange, const std::vector<std::string>& views);

    StrangerViews& strangers() { return strangers_; }

  private:
    std::unique_ptr<db::ContentWatch> watch() const;
    void count(const Exchange& exchange, const std::vector<std::string>& views, const std::string& today);
    bool canCount(const std::vector<std::string>& views, const std::string& today) const;

    const Services services_;
    PageCache cache_;
    const bool asks_;
    StrangerViews strangers_;
};

}  // namespace torvex
