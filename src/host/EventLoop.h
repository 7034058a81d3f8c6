#pragma once

#include <atomic>
#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/IdleOrder.h"
#include "host/PeerLimits.h"
#include "host/Pipeline.h"
#include "host/cache/Looks.h"
#include "host/files/StaticFiles.h"
#include "host/http/Transport.h"
#include "installation/ServerOptions.h"

namespace torvex {

class EventLoop;
class Exchange;
class LoopConnection;
class SecurityFields;
class TrustedProxies;
struct Source;

/// What all event loops share.
struct LoopSetting {
    const ServerOptions& options;
    const Pipeline& pipeline;
    const RootFolder* root;
    EncodedFiles& encoded;
    std::atomic<std::size_t>& connections;
    PeerLimits& peers;
    const TrustedProxies& proxies;
    const SecurityFields& fields;
    /// Asks the other loops to give up a connection.
    std::function<void(const EventLoop& asking)> askForRoom;
};

/// One thread's share of the server: its listening socket, its connections and its public files. Everything
/// but `beginStop` and `abort` belongs to the thread that runs it.
class EventLoop {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Acceptor = asio::basic_socket_acceptor<asio::ip::tcp, asio::io_context::executor_type>;

    explicit EventLoop(const LoopSetting& setting);
    ~EventLoop();

    /// Listens at a further address, with TLS when there is a context for it, which outlives the loop. Throws
    /// `Error` when the address can't be had. Returns the port.
    std::uint16_t listen(const std::string& address, std::uint16_t port, asio::ssl::context* tls);
    void onEverySecond(std::function<void()> action) { everySecond_ = std::move(action); }
    /// A tick comes some times a second.
    void onEveryTick(std::function<void()> action) { everyTick_ = std::move(action); }
    void run();
    /// Accepts no more and ends when the last connection has.
    void beginStop();
    /// Ends at once.
    void abort() { context_.stop(); }

    void add(LoopConnection& connection);
    void remove(LoopConnection& connection);
    /// What was one of its connections goes on as another one.
    void replace(LoopConnection& connection, LoopConnection& next);
    /// Something was read or written; nothing is under way; a request is being answered.
    void noteMove(LoopConnection& connection);
    void noteRest(LoopConnection& connection);
    void noteBusy(LoopConnection& connection);
    /// From any thread: if all connections of the server are taken, the idlest one here goes.
    void giveRoom();

    const ServerOptions& options() const { return setting_.options; }
    PeerLimits& peers() const { return setting_.peers; }
    const SecurityFields& fields() const { return setting_.fields; }
    /// The header fields that every answer to such a request carries.
    std::string_view fieldsFor(const Exchange& exchange) const;
    const TrustedProxies& proxies() const { return setting_.proxies; }
    const Pipeline& pipeline() const { return setting_.pipeline; }
    StaticFiles* files() { return files_ ? &*files_ : nullptr; }
    /// By which pages that are kept are judged.
    Looks& looks() { return looks_; }
    asio::io_context& context() { return context_; }
    bool isStopping() const { return isStopping_; }
    /// The current time as header fields give it.
    std::string_view date();

  private:
    /// One address: its socket, and what its connections speak.
    struct Listener {
        Listener(asio::io_context& context, asio::ssl::context* speaks) : acceptor(context), tls(speaks) {}

        Acceptor acceptor;
        asio::ssl::context* tls;  ///< null for plain HTTP
        std::uint16_t port = 0;
        asio::ip::tcp::endpoint peer;
        std::optional<TimePoint> failedAt;
    };

    void accept(Listener& listener);
    void acceptAgain(TimePoint now);
    void welcome(Socket socket, const Listener& listener);
    std::shared_ptr<LoopConnection> connectionOn(std::unique_ptr<Transport> transport, const Source& source);
    bool takePlace(const Source& source);
    bool enterAsOne(const Source& source);
    bool isFull() const;
    template <class Tag>
    static bool endIdlest(IdleOrder<Tag>& order);
    void turnAway(Socket& socket, const Listener& listener);
    void tick();
    void endWhenIdle();

    const LoopSetting setting_;
    asio::io_context context_{1};
    std::vector<std::unique_ptr<Listener>> listeners_;
    asio::basic_waitable_timer<std::chrono::steady_clock, asio::wait_traits<std::chrono::steady_clock>,
                               asio::io_context::executor_type>
        timer_{context_};
    std::optional<StaticFiles> files_;
    Looks looks_;
    /// What this loop has of one address.
    struct OfOne {
        std::size_t connections = 0;
        IdleOrder<OfPeer> idle;
    };

    std::unordered_set<LoopConnection*> connections_;
    IdleOrder<OfLoop> idle_;
    std::unordered_map<Peer, OfOne, PeerHash> byPeer_;
    std::function<void()> everySecond_;
    std::function<void()> everyTick_;
    TimePoint lastSecond_{};
    std::time_t dateOf_ = 0;
    std::string date_;
    bool isStopping_ = false;
};

}  // namespace torvex
