#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/PageJob.h"
#include "host/cache/Looks.h"
#include "host/http/Answer.h"
#include "pages/PageRoute.h"

namespace torvex {

class BuiltInterface;
class Exchange;
class StaticFiles;

/// The way of every request, the same for all event loops. See the source for its steps and their order. Safe
/// to share between threads.
class Pipeline {
  public:
    Pipeline(PageSetting setting, std::vector<PageRoute> pages, std::vector<FileGuard> guards,
             std::shared_ptr<const BuiltInterface> interface);

    /// What can be decided on the header alone; an answer here is a refusal, and the body needn't be read.
    std::optional<Answer> examine(Exchange& exchange) const;

    /// How the body of an examined request is taken in: how long it may be, and where it goes if not into
    /// memory.
    BodyReception receive(const Exchange& exchange) const;

    /// Answers a whole request: at once, or later through the exchange. `files` are the calling loop's, null
    /// when none are served, and so are `looks`, without which no page is answered at once.
    std::optional<Answer> answer(const std::shared_ptr<Exchange>& exchange, StaticFiles* files,
                                 Looks* looks = nullptr) const;

    /// For one loop, which must outlive them.
    Looks looksOf(boost::asio::io_context& loop) const;

    SessionStore& sessions() const { return setting_.sessions; }
    LineLog& log() const { return setting_.log; }

    /// Where https is spoken beside http; before the first request.
    void noteTlsPort(std::uint16_t port) { tlsPort_ = port; }

  private:
    std::optional<Answer> checkHost(Exchange& exchange) const;
    std::optional<Answer> checkPlace(const Exchange& exchange) const;
    std::string publicAddress(const Exchange& exchange) const;
    bool isAuthorsHost(const Exchange& exchange) const;
    std::optional<Answer> checkScheme(const Exchange& exchange) const;
    std::optional<Answer> checkMethod(const Exchange& exchange) const;
    void findResponsible(Exchange& exchange) const;
    const PageRoute* pageAt(const std::string& path) const;
    std::optional<Answer> answerFile(const std::shared_ptr<Exchange>& exchange, StaticFiles& files) const;
    std::optional<Answer> encode(const std::shared_ptr<Exchange>& exchange, Answer plain,
                                 std::function<Answer()> encoded) const;
    std::optional<Answer> makeAnew(const std::shared_ptr<Exchange>& exchange) const;
    std::optional<Answer> answerShared(const std::shared_ptr<Exchange>& exchange, Looks& looks) const;
    std::optional<Answer> answerFound(const std::shared_ptr<Exchange>& exchange, const PageCache::Page& page,
                                      const Look& look) const;
    std::optional<Answer> answerKept(const std::shared_ptr<Exchange>& exchange,
                                     const PageCache::Page& page) const;
    bool hasSession(const Exchange& exchange) const;
    std::optional<Answer> checkBody(const Exchange& exchange) const;
    std::uint64_t bodyLimit(const Exchange& exchange) const;

    PageSetting setting_;
    std::unordered_map<std::string, PageRoute> pages_;
    std::vector<PageRoute> folders_;  ///< that take all below their paths, the longest first
    std::vector<FileGuard> guards_;
    std::shared_ptr<const BuiltInterface> interface_;  ///< null: none is served
    std::uint16_t tlsPort_ = 0;
};

}  // namespace torvex
