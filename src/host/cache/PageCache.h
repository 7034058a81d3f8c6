#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/cache/KeptPage.h"

namespace torvex {

class Exchange;
struct PageRoute;

/// The pages that are kept, found by what they asked of their requests: a parameter that nobody asked for makes no page
/// of its own. The least used go first. All operations are safe from any thread.
class PageCache {
  public:
    using Page = std::shared_ptr<KeptPage>;

    /// Keeps at most so many bytes; with 0, nothing.
    explicit PageCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    bool isOn() const { return mostBytes_ > 0; }

    /// The page for a request; null when none is kept. Whether it still stands is for the caller to find out.
    Page find(const Exchange& exchange);
    /// Takes the place of what was kept for such requests.
    void keep(const Exchange& exchange, const Page& page);
    /// Forgets a page that `find` has given for the request, unless another has taken its place.
    void drop(const Exchange& exchange, const Page& page);

    std::size_t bytes() const;
    std::size_t size() const;

  private:
    struct Kept {
        std::string key;
        Page page;
        std::size_t bytes;
    };
    using Order = std::list<Kept>;
    /// What pages of one address have asked, each list of questions once.
    using Askings = std::vector<std::shared_ptr<const RequestQuestions>>;

    Askings askingsOf(const PageRoute* route) const;
    void noteAsking(const PageRoute* route, const RequestQuestions& questions);
    void removeKey(const std::string& key);
    void makeRoom();

    /// More would make each search longer; the first one is then asked no more.
    static constexpr std::size_t mostAskings = 12;

    const std::size_t mostBytes_;
    mutable std::mutex mutex_;
    std::unordered_map<const PageRoute*, Askings> askings_;
    Order order_;  ///< the most recently used first
    std::unordered_map<std::string, Order::iterator> byKey_;
    std::size_t bytes_ = 0;
};

}  // namespace torvex
