#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/WorkerPool.h"
#include "host/cache/SharedPages.h"
#include "host/files/StaticFiles.h"
#include "host/http/Exchange.h"
#include "host/sessions/SessionCookie.h"
#include "host/sessions/SessionStore.h"
#include "platform/Services.h"
#include "platform/net/HostNames.h"

namespace torvex {

class LineLog;
class Request;
class Response;
struct HostContext;

/// What page jobs share; outlives them all.
struct PageSetting {
    Services services;
    LineLog& log;
    std::function<void(HostContext&)> startSession;
    SessionStore& sessions;
    WorkerPool& workers;
    SharedPages& pages;
    const RootFolder* root;  ///< of guarded files
    EncodedFiles& encoded;   ///< of public files
    bool compresses;         ///< pages for whoever takes them so
    StaticFileOptions guardedFiles;
    StaticFileOptions membersFiles;  ///< the same for somebody who has logged in
    bool secureCookies;
    SessionCookie cookie;
    HostNames hosts;
    bool httpsAlone;
    RequestLimits limits{};
    std::string authoringHost{};  ///< where alone authors work; "" is everywhere
    std::string publicHost{};     ///< where authors are led to see public pages; "" for nowhere

    bool isSecure(const Exchange& exchange) const { return exchange.isTls || secureCookies; }
};

/// One request for a page or a guarded file: waits for its session and a worker, runs there, and hands the
/// answer to the exchange.
class PageJob : public std::enable_shared_from_this<PageJob> {
  public:
    PageJob(const PageSetting& setting, std::shared_ptr<Exchange> exchange)
        : setting_(setting), exchange_(std::move(exchange)) {}

    /// False when the visitor has too many requests waiting: nothing will come then.
    bool start();

  private:
    bool bringsToken() const;
    void begin(SessionLease lease);
    void run();
    Answer produce();
    void openSession(HostContext& context);
    Answer runWith(const Services& services, Request& request);
    Answer runShared(Request& request);
    static void limitTime(HostContext& context);
    bool runHandler(HostContext& context);
    Answer runPage(HostContext& context);
    bool mayCompress(const Response& response, bool isPersonal) const;
    Answer finished(Response response, bool compresses) const;
    Answer compressed(Answer answer) const;
    Answer runGuard(HostContext& context);
    Answer failed(std::string_view description, const std::exception* error);
    void addCookie(Answer& answer, const SessionToken& token) const;

    const PageSetting& setting_;
    std::shared_ptr<Exchange> exchange_;
    std::optional<SessionLease> lease_;
    bool isSessionReady_ = false;
};

}  // namespace torvex
