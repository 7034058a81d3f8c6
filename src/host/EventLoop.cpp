#include "host/EventLoop.h"

#include <boost/asio/post.hpp>
#include <csignal>
#include <fmt/format.h>
#include <sys/socket.h>
#include <vector>

#include "host/Connection.h"
#include "host/Handshake.h"
#include "host/LineLog.h"
#include "host/Shortage.h"
#include "host/files/PublicFile.h"
#include "host/http/AnswerWriter.h"
#include "host/http/ErrorPages.h"
#include "host/http/Exchange.h"
#include "host/http/SecurityFields.h"
#include "platform/Errors.h"
#include "platform/net/HttpDate.h"

namespace torvex {

namespace {

using asio::ip::tcp;
using boost::system::error_code;

/// Deadlines are looked at this often: exact enough for times of seconds, and free for thousands of
/// connections.
constexpr std::chrono::milliseconds tickLength{50};
constexpr std::chrono::milliseconds afterFailedAccept{100};

/// A connection in the middle of a request may be ended for another when nothing has moved for so long.
constexpr std::chrono::seconds idleUnderWay{1};

using ReusePort = asio::detail::socket_option::boolean<SOL_SOCKET, SO_REUSEPORT>;

/// A visitor who leaves in the middle of a file would end the program: unlike `sendmsg`, `sendfile` can't be
/// told not to raise the signal. It goes to the calling thread, so it is enough to block it there.
void ignoreBrokenPipes() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

EventLoop::EventLoop(const LoopSetting& setting)
    : setting_(setting), looks_(setting.pipeline.looksOf(context_)) {
    if (!setting.root) return;
    const ServerOptions& options = setting.options;
    files_.emplace(*setting.root, setting.encoded,
                   StaticFileOptions{options.smallFile, options.fileCache, options.staticCacheControl,
                                     options.uploadFolders, options.fileTypes, options.compression});
}

EventLoop::~EventLoop() = default;

std::uint16_t EventLoop::listen(const std::string& address, std::uint16_t port, asio::ssl::context* tls) {
    try {
        auto listener = std::make_unique<Listener>(context_, tls);
        const tcp::endpoint endpoint(asio::ip::make_address(address), port);
        listener->acceptor.open(endpoint.protocol());
        listener->acceptor.set_option(asio::socket_base::reuse_address(true));
        listener->acceptor.set_option(ReusePort(true));
        listener->acceptor.bind(endpoint);
        listener->acceptor.listen(asio::socket_base::max_listen_connections);
        listener->port = listener->acceptor.local_endpoint().port();
        return listeners_.emplace_back(std::move(listener))->port;
    } catch (const boost::system::system_error& error) {
        throw Error(fmt::format("Can't listen on {} port {}: {}", address, port, error.code().message()));
    }
}

void EventLoop::run() {
    ignoreBrokenPipes();
    for (auto& listener : listeners_) accept(*listener);
    tick();
    context_.run();
}

void EventLoop::accept(Listener& listener) {
    listener.acceptor.async_accept(context_, listener.peer,
                                   [this, &listener](const error_code& error, Socket socket) {
                                       if (!listener.acceptor.is_open()) return;
                                       if (!error) {
                                           welcome(std::move(socket), listener);
                                           accept(listener);
                                           return;
                                       }
                                       if (isOutOfDescriptors(error.value()))
                                           warnOfDescriptors(pipeline().log());
                                       // The tick below tries again.
                                       listener.failedAt = std::chrono::steady_clock::now();
                                   });
}

void EventLoop::acceptAgain(TimePoint now) {
    for (auto& listener : listeners_) {
        if (!listener->failedAt || now - *listener->failedAt <= afterFailedAccept) continue;
        listener->failedAt.reset();
        accept(*listener);
    }
}

void EventLoop::welcome(Socket socket, const Listener& listener) {
    error_code ignored;
    socket.non_blocking(true, ignored);
    socket.set_option(tcp::no_delay(true), ignored);
    const asio::ip::address address = listener.peer.address();
    const Source source{
        {address, listener.tls != nullptr}, Peer::of(address), proxies().contains(address), listener.port};
    if (!takePlace(source)) return turnAway(socket, listener);
    const auto connection =
        connectionOn(std::make_unique<Transport>(std::move(socket), listener.tls), source);
    add(*connection);
    connection->start();
}

std::shared_ptr<LoopConnection> EventLoop::connectionOn(std::unique_ptr<Transport> transport,
                                                        const Source& source) {
    if (transport->isEncrypted()) return std::make_shared<Handshake>(*this, std::move(transport), source);
    return std::make_shared<Connection>(*this, std::move(transport), source);
}

/// Counts a newcomer with its address, for which another may have to go; false when there is no place.
bool EventLoop::takePlace(const Source& source) {
    if (!source.isProxy && !enterAsOne(source)) return false;
    if (!isFull() || endIdlest(idle_)) return true;
    setting_.askForRoom(*this);
    if (!source.isProxy) peers().leave(source.peer);
    return false;
}

bool EventLoop::enterAsOne(const Source& source) {
    if (peers().enter(source.peer)) return true;
    const auto own = byPeer_.find(source.peer);
    if (own != byPeer_.end() && endIdlest(own->second.idle) && peers().enter(source.peer)) return true;
    pipeline().log().warn(
        fmt::format("{} has {} connections, as many as connections_per_address in [limits] gives "
                    "one address: further ones are turned away",
                    textOf(source.visitor.address), options().connectionsOfOne));
    return false;
}

bool EventLoop::isFull() const {
    return setting_.connections.load(std::memory_order_relaxed) >= options().connections;
}

/// Those that rest go first; of the others only such as nothing has moved on for a while.
template <class Tag>
bool EventLoop::endIdlest(IdleOrder<Tag>& order) {
    if (!order.resting.empty()) {
        order.resting.front().giveWay();
        return true;
    }
    if (order.underWay.empty()) return false;
    LoopConnection& idlest = order.underWay.front();
    if (std::chrono::steady_clock::now() - idlest.lastMove() < idleUnderWay) return false;
    idlest.giveWay();
    return true;
}

void EventLoop::giveRoom() {
    asio::post(context_, [this] {
        if (isFull()) endIdlest(idle_);
    });
}

void EventLoop::turnAway(Socket& socket, const Listener& listener) {
    if (listener.tls) return;
    AnswerWriter writer;
    writer.start(errorPages::page(503),
                 {date(), false, false, false, fields().of(SecurityFields::Kind::Page, false)});
    writer.writeTo(socket.native_handle());
    error_code ignored;
    socket.shutdown(tcp::socket::shutdown_both, ignored);
}

void EventLoop::tick() {
    timer_.expires_after(tickLength);
    timer_.async_wait([this](const error_code& error) {
        if (error) return;
        const TimePoint now = std::chrono::steady_clock::now();
        const std::vector<LoopConnection*> current(connections_.begin(), connections_.end());
        for (LoopConnection* connection : current) connection->checkDeadline(now);
        if (!isStopping_) acceptAgain(now);
        if (everyTick_) everyTick_();
        if (everySecond_ && now - lastSecond_ >= std::chrono::seconds(1)) {
            lastSecond_ = now;
            everySecond_();
        }
        tick();
    });
}

void EventLoop::beginStop() {
    asio::post(context_, [this] {
        if (isStopping_) return;
        isStopping_ = true;
        error_code ignored;
        for (auto& listener : listeners_) listener->acceptor.close(ignored);
        const std::vector<LoopConnection*> current(connections_.begin(), connections_.end());
        for (LoopConnection* connection : current) connection->closeIfIdle();
        endWhenIdle();
    });
}

void EventLoop::endWhenIdle() {
    if (isStopping_ && connections_.empty()) context_.stop();
}

void EventLoop::add(LoopConnection& connection) {
    connections_.insert(&connection);
    OfOne& own = byPeer_[connection.source().peer];
    ++own.connections;
    connection.joins(own.idle);
    setting_.connections.fetch_add(1, std::memory_order_relaxed);
}

void EventLoop::remove(LoopConnection& connection) {
    if (connections_.erase(&connection) == 0) return;
    const Source& source = connection.source();
    const auto own = byPeer_.find(source.peer);
    if (--own->second.connections == 0) byPeer_.erase(own);
    if (!source.isProxy) peers().leave(source.peer);
    setting_.connections.fetch_sub(1, std::memory_order_relaxed);
    endWhenIdle();
}

void EventLoop::replace(LoopConnection& connection, LoopConnection& next) {
    noteBusy(connection);
    connections_.erase(&connection);
    connections_.insert(&next);
    next.joins(connection.orderOfPeer());
}

void EventLoop::noteBusy(LoopConnection& connection) {
    connection.OrderHook<OfLoop>::unlink();
    connection.OrderHook<OfPeer>::unlink();
}

void EventLoop::noteMove(LoopConnection& connection) {
    noteBusy(connection);
    idle_.underWay.push_back(connection);
    connection.orderOfPeer().underWay.push_back(connection);
}

void EventLoop::noteRest(LoopConnection& connection) {
    noteBusy(connection);
    idle_.resting.push_back(connection);
    connection.orderOfPeer().resting.push_back(connection);
}

std::string_view EventLoop::fieldsFor(const Exchange& exchange) const {
    const bool isPublicFile = !exchange.page && !exchange.guard;
    return fields().of(isPublicFile ? SecurityFields::Kind::PublicFile : SecurityFields::Kind::Page,
                       exchange.isTls);
}

std::string_view EventLoop::date() {
    const std::time_t now = std::time(nullptr);
    if (now != dateOf_) {
        dateOf_ = now;
        date_ = httpDate(now);
    }
    return date_;
}

}  // namespace torvex
