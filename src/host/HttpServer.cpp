#include "host/HttpServer.h"

#include <algorithm>
#include <boost/asio/ssl/context.hpp>
#include <condition_variable>
#include <fmt/format.h>
#include <iterator>
#include <mutex>
#include <thread>

#include "host/Descriptors.h"
#include "host/EventLoop.h"
#include "host/LineLog.h"
#include "host/Pipeline.h"
#include "host/TrustedProxies.h"
#include "host/http/Ascii.h"
#include "host/http/SecurityFields.h"
#include "host/http/TlsContext.h"
#include "host/sessions/EndedAuthors.h"
#include "platform/Errors.h"
#include "platform/files/RootFolder.h"

namespace torvex {

namespace {

unsigned cores() {
    return std::max(std::thread::hardware_concurrency(), 1U);
}

unsigned workerCount(const ServerOptions& options) {
    return options.workers > 0 ? options.workers : std::max(cores() * 2, 4U);
}

SessionCookie::Schemes schemesOf(const ServerOptions& options) {
    return options.httpsAlone ? SessionCookie::Schemes::HttpsAlone : SessionCookie::Schemes::Each;
}

std::unique_ptr<RootFolder> openRoot(const ServerOptions& options) {
    return options.rootFolder.empty() ? nullptr : std::make_unique<RootFolder>(options.rootFolder);
}

/// The first name in the settings that is one and that isn't the authors'.
std::string publicHost(const ServerOptions& options) {
    const auto found = std::find_if(options.hosts.begin(), options.hosts.end(), [&](const std::string& host) {
        return host.find('*') == std::string::npos && !ascii::equals(host, options.authoringHost);
    });
    return found == options.hosts.end() ? std::string() : *found;
}

/// No more connections than there are descriptors for: one too many, and files couldn't be opened.
ServerOptions withinDescriptors(ServerOptions options, LineLog& log) {
    const unsigned workers = std::max(workerCount(options), options.mostWorkers);
    const std::size_t wanted = options.connections;
    options.connections = connectionsWithin(descriptorLimit(), wanted, workers);
    if (options.connections < wanted)
        log.warn(
            fmt::format("{} connections in place of {}: there may be {} open files (LimitNOFILE, ulimit -n)",
                        options.connections, wanted, descriptorLimit()));
    return options;
}

/// The loops share their address with each other, which would also let a second server share it unnoticed: so
/// it is first taken alone.
void checkAddressIsFree(const std::string& address, std::uint16_t port) {
    try {
        asio::io_context context;
        const asio::ip::tcp::endpoint endpoint(asio::ip::make_address(address), port);
        asio::ip::tcp::acceptor probe(context, endpoint, true);
    } catch (const boost::system::system_error& error) {
        throw Error(fmt::format("Can't listen on {} port {}: {}", address, port, error.code().message()));
    }
}

}  // namespace

class HttpServer::Implementation {
  public:
    Implementation(ServerOptions options, const Services& services, LineLog& log, ServedPages served)
        : options_(withinDescriptors(std::move(options), log)),
          services_(services),
          log_(log),
          root_(openRoot(options_)),
          tls_(openTls(options_.tls, options_.http2)),
          sessions_(options_.sessions),
          workers_(workerCount(options_), options_.queuedPages, options_.mostWorkers),
          pages_(services, options_.pageCache, options_.pageCacheAsks),
          pipeline_({services, log, std::move(served.startSession), sessions_, workers_, pages_, root_.get(),
                     encoded_, options_.compression, guardedFiles("private, no-cache"),
                     guardedFiles("private, no-store"), options_.secureCookies,
                     SessionCookie(schemesOf(options_)), HostNames(options_.hosts), options_.httpsAlone,
                     options_.limits, options_.authoringHost, publicHost(options_)},
                    std::move(served.pages), root_ ? std::move(served.guards) : std::vector<FileGuard>(),
                    std::move(served.interface)) {
        listen();
    }

    ~Implementation() { workers_.stop(); }

    std::uint16_t port() const { return port_; }
    std::uint16_t tlsPort() const { return tlsPort_; }
    std::size_t sessionCount() const { return sessions_.size(); }

    void run() {
        std::vector<std::thread> threads;
        for (auto& loop : loops_) threads.emplace_back([&loop] { loop->run(); });
        std::thread watch([this] { endLoopsAfterDeadline(); });
        for (std::thread& thread : threads) thread.join();
        {
            const std::scoped_lock guard(mutex_);
            hasEnded_ = true;
        }
        changed_.notify_all();
        watch.join();
    }

    void finish() { workers_.stop(); }

    void stop() {
        {
            const std::scoped_lock guard(mutex_);
            isStopping_ = true;
        }
        changed_.notify_all();
        for (auto& loop : loops_) loop->beginStop();
    }

  private:
    StaticFileOptions guardedFiles(std::string cacheControl) const {
        return {options_.smallFile, 0, std::move(cacheControl), options_.uploadFolders, options_.fileTypes};
    }

    void listen() {
        const bool both = tls_ && options_.tlsPort;
        checkAddressIsFree(options_.address, options_.port);
        if (both) checkAddressIsFree(options_.address, *options_.tlsPort);
        const unsigned count = options_.loops > 0 ? options_.loops : cores();
        const LoopSetting setting{
            options_, pipeline_,    root_.get(),
            encoded_, connections_, peers_,
            proxies_, fields_,      [this](const EventLoop& asking) { giveRoom(asking); }};
        port_ = options_.port;
        tlsPort_ = options_.tlsPort.value_or(0);
        for (unsigned i = 0; i < count; ++i) {
            loops_.push_back(std::make_unique<EventLoop>(setting));
            port_ = loops_.back()->listen(options_.address, port_, both ? nullptr : tls_.get());
            if (both) tlsPort_ = loops_.back()->listen(options_.address, tlsPort_, tls_.get());
        }
        pipeline_.noteTlsPort(tlsPort_);
        loops_.front()->onEverySecond([this] {
            sessions_.sweep();
            seeAuthorsOut();
            log_.writeCounts();
        });
        loops_.front()->onEveryTick([this] { workers_.relieve(); });
    }

    /// On a worker: the database may be waited for.
    void seeAuthorsOut() {
        auto ended = sessions_.takeEndedAuthors();
        leaving_.insert(leaving_.end(), std::move_iterator(ended.begin()), std::move_iterator(ended.end()));
        if (leaving_.empty()) return;
        const bool isTaken = workers_.submit([this, ids = leaving_] { leaveWebsites(services_, log_, ids); });
        if (isTaken) leaving_.clear();
    }

    /// Each loop ends its own connections alone.
    void giveRoom(const EventLoop& asking) {
        for (auto& loop : loops_)
            if (loop.get() != &asking) loop->giveRoom();
    }

    void endLoopsAfterDeadline() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isStopping_ || hasEnded_; });
        changed_.wait_for(lock, options_.deadlines.stop, [this] { return hasEnded_; });
        if (hasEnded_) return;
        for (auto& loop : loops_) loop->abort();
    }

    const ServerOptions options_;
    const Services services_;
    LineLog& log_;
    std::vector<std::string> leaving_;  ///< sessions of authors that have ended; of the first loop alone
    std::unique_ptr<RootFolder> root_;
    std::unique_ptr<asio::ssl::context> tls_;
    SessionStore sessions_;
    std::atomic<std::size_t> connections_ = 0;
    PeerLimits peers_{options_.connectionsOfOne, options_.limits.bodies,
                      std::max(options_.limits.bodies / 4, options_.limits.body)};
    const TrustedProxies proxies_{options_.trustedProxies};
    const SecurityFields fields_{options_};
    EncodedFiles encoded_{options_.fileCache};
    // The workers end before the loops that they hand their answers to.
    std::vector<std::unique_ptr<EventLoop>> loops_;
    WorkerPool workers_;
    SharedPages pages_;
    Pipeline pipeline_;
    std::uint16_t port_ = 0;
    std::uint16_t tlsPort_ = 0;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool isStopping_ = false;
    bool hasEnded_ = false;
};

HttpServer::HttpServer(ServerOptions options, const Services& services, LineLog& log, ServedPages served)
    : implementation_(
          std::make_unique<Implementation>(std::move(options), services, log, std::move(served))) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
    return implementation_->port();
}

std::uint16_t HttpServer::tlsPort() const {
    return implementation_->tlsPort();
}

void HttpServer::run() {
    implementation_->run();
}

void HttpServer::finish() {
    implementation_->finish();
}

void HttpServer::stop() {
    implementation_->stop();
}

std::size_t HttpServer::sessionCount() const {
    return implementation_->sessionCount();
}

}  // namespace torvex
