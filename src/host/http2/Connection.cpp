#include "host/http2/Connection.h"

#include <fmt/format.h>
#include <utility>

#include "host/EventLoop.h"
#include "host/LineLog.h"
#include "host/Pipeline.h"

namespace torvex::http2 {

namespace {

using boost::system::error_code;

constexpr std::size_t readSize = 4096;
constexpr std::size_t bodyReadSize = 16 * 1024;  ///< one record of TLS, while a body comes
constexpr std::size_t lingerBytes = 256 * 1024;  ///< dropped behind the goodbye; more is cut off
/// Open at a time for one connection. Each takes a descriptor, of which all visitors have as many as the system gives.
constexpr std::size_t mostFiles = 16;
constexpr std::chrono::milliseconds betweenLooks{200};
/// By which the protocol counts a field as larger than HTTP/1.1 does.
constexpr std::size_t perField = 32;

std::size_t headerSize(const RequestLimits& limits) {
    return limits.header + limits.fields * perField;
}

}  // namespace

Connection::Connection(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source)
    : LoopConnection(source),
      loop_(loop),
      transport_(std::move(transport)),
      session_(*this, static_cast<std::uint32_t>(loop.options().streams), headerSize(loop.options().limits)) {
}

Connection::~Connection() = default;

void Connection::start() {
    lastMove_ = std::chrono::steady_clock::now();
    idleEnd_ = lastMove_ + loop_.options().deadlines.header;
    takePlace(Place::Moving);
    write();
    read();
}

void Connection::read() {
    in_.resize(countOf(Stream::Stage::Body) > 0 ? bodyReadSize : readSize);
    if (in_.capacity() > in_.size()) in_.shrink_to_fit();
    transport_->read(asio::buffer(in_),
                     [self = shared_from_this()](const error_code& error, std::size_t count) {
                         self->onRead(error, count);
                     });
}

void Connection::onRead(const error_code& error, std::size_t count) {
    if (isClosed_) return;
    if (isLingering_) lingered_ += count;
    if (error || lingered_ > lingerBytes) return close();
    if (!isLingering_) {
        // What has told the loop of these bytes may have been others than those of their requests.
        loop_.looks().end();
        session_.take({in_.data(), count});
        followHeader(count);
        goOn();
    }
    if (!isClosed_) read();
}

/// One header after the other may be on its way: each has its own time.
void Connection::followHeader(std::size_t count) {
    const FrameScanner& frames = session_.frames();
    headerBytes_ += count;
    if (!frames.isInHeader()) {
        headerSince_.reset();
    } else if (!headerSince_ || frames.headers() != headersBefore_) {
        headerSince_ = std::chrono::steady_clock::now();
        headerBytes_ = 0;
    }
    headersBefore_ = frames.headers();
}

bool Connection::takeFile(std::int32_t stream) {
    if (files_ >= mostFiles) return waiting_.push_back(stream), false;
    ++files_;
    return true;
}

void Connection::runWaiting() {
    while (files_ < mostFiles && !waiting_.empty()) {
        const auto found = streams_.find(waiting_.front());
        waiting_.pop_front();
        if (found == streams_.end()) continue;
        const std::shared_ptr<Stream> stream = found->second;
        stream->run();
    }
}

void Connection::goOn() {
    if (!isClosed_ && !isLingering_) runWaiting();
    write();
    settle();
}

void Connection::complain() {
    if (session_.complaint().empty() || isLeaving_) return;
    beginLeaving();
    loop_.pipeline().log().warn(
        fmt::format("{} was sent away: {}", textOf(source().visitor.address), session_.complaint()));
}

void Connection::write() {
    if (isWriting_ || isLingering_ || isClosed_) return;
    out_.clear();
    outSent_ = 0;
    session_.give(out_);
    complain();
    if (!out_.empty()) return writeOn();
    if (streams_.empty()) std::string().swap(out_);
    if (session_.isOver()) linger();
}

void Connection::writeOn() {
    isWriting_ = true;
    writingSince_ = std::chrono::steady_clock::now();
    const std::string_view rest = std::string_view(out_).substr(outSent_);
    transport_->writeEncrypted(asio::const_buffer(rest.data(), rest.size()),
                               [self = shared_from_this()](const error_code& error, std::size_t count) {
                                   if (self->isClosed_) return;
                                   if (error) return self->close();
                                   self->onWritten(count);
                               });
}

void Connection::onWritten(std::size_t count) {
    outSent_ += count;
    if (outSent_ < out_.size()) return writeOn();
    isWriting_ = false;
    goOn();
}

StreamEvents* Connection::onRequest(std::int32_t id) {
    // A request that was dropped while its page is being made goes on costing what it costs.
    const std::size_t dropped = working_ - countOf(Stream::Stage::Working);
    if (isLeaving_ || streams_.size() + dropped >= loop_.options().streams) return nullptr;
    const auto stream = std::make_shared<Stream>(*this, id);
    streams_.emplace(id, stream);
    ++countOf(Stream::Stage::Header);
    hasMoved_ = true;
    return stream.get();
}

void Connection::onSent(std::size_t bytes) {
    sent_ += bytes;
    hasMoved_ = true;
}

void Connection::onBody(std::size_t bytes) {
    bodyBytes_ += bytes;
    hasMoved_ = true;
}

void Connection::onStage(Stream::Stage from, Stream::Stage to) {
    --countOf(from);
    ++countOf(to);
    if (to == Stream::Stage::Answering && countOf(to) == 1)
        readerPace_.begin(sent_, std::chrono::steady_clock::now());
}

/// What it is for others who look for a place: one that rests, one that moves, or one for which a page is made.
void Connection::settle() {
    if (isClosed_) return;
    if (countOf(Stream::Stage::Working) > 0) {
        if (place_ != Place::Busy) takePlace(Place::Busy);
    } else if (!streams_.empty()) {
        if (hasMoved_ || place_ != Place::Moving) takePlace(Place::Moving);
    } else if (hasMoved_ || place_ == Place::Busy) {
        idleEnd_ = std::chrono::steady_clock::now() + loop_.options().deadlines.idle;
        takePlace(Place::Resting);
    }
    hasMoved_ = false;
}

void Connection::takePlace(Place place) {
    place_ = place;
    lastMove_ = std::chrono::steady_clock::now();
    if (place == Place::Resting) return loop_.noteRest(*this);
    if (place == Place::Moving) return loop_.noteMove(*this);
    loop_.noteBusy(*this);
}

void Connection::checkDeadline(TimePoint now) {
    if (isClosed_ || now < nextLook_) return;
    const auto self = shared_from_this();
    nextLook_ = now + betweenLooks;
    look(now);
}

void Connection::look(TimePoint now) {
    if (isLeaving_ || isLingering_) {
        if (now >= lingerEnd_) close();
        return;
    }
    if (!isHeaderInTime(now)) return leave(NGHTTP2_ENHANCE_YOUR_CALM);
    isIdleEnd_ = streams_.empty() && !headerSince_ && now >= idleEnd_;
    if (isIdleEnd_) return leave(NGHTTP2_NO_ERROR);
    checkStreams(now);
    if (!isTaking(now)) close();
}

/// A stream that its reader holds up is ended here, so that it isn't taken for one who reads nothing at all.
void Connection::checkStreams(TimePoint now) {
    if (streams_.empty()) return;
    const auto current = streams_;
    for (const auto& one : current) one.second->checkDeadline(now);
    goOn();
}

bool Connection::isHeaderInTime(TimePoint now) const {
    if (!headerSince_) return true;
    const ServerOptions& options = loop_.options();
    return now - *headerSince_ < options.deadlines.header &&
           isFastEnough(options.speed, headerBytes_, *headerSince_, now);
}

/// Asked of what is said of the connection, too: a client that takes none of it lets it pile up here.
bool Connection::isTaking(TimePoint now) {
    if (isWriting_ && now - writingSince_ >= loop_.options().deadlines.write) return false;
    if (isClosed_ || countOf(Stream::Stage::Answering) == 0) return true;
    return readerPace_.isKept(loop_.options(), transport_->socket().native_handle(), sent_, now);
}

void Connection::closeIfIdle() {
    const auto self = shared_from_this();
    if (isLeaving_ || isLingering_) return;
    isIdleEnd_ = streams_.empty();
    if (isIdleEnd_) return leave(NGHTTP2_NO_ERROR);
    session_.refuseFurther();
    goOn();
}

void Connection::leave(std::uint32_t code) {
    beginLeaving();
    session_.end(code);
    write();
}

void Connection::beginLeaving() {
    isLeaving_ = true;
    lingerEnd_ = std::chrono::steady_clock::now() + loop_.options().deadlines.linger;
}

/// Closing while the visitor still sends would make the system discard the goodbye; so the sending end is closed and
/// what comes is read for a short while.
void Connection::linger() {
    if (isIdleEnd_) return close();
    isLingering_ = true;
    lingerEnd_ = std::chrono::steady_clock::now() + loop_.options().deadlines.linger;
    abandonStreams();
    error_code ignored;
    transport_->socket().shutdown(Socket::shutdown_send, ignored);
}

void Connection::abandonStreams() {
    const auto streams = std::exchange(streams_, {});
    for (const auto& one : streams) one.second->abandon();
}

void Connection::close() {
    if (isClosed_) return;
    const auto self = shared_from_this();
    isClosed_ = true;
    error_code ignored;
    transport_->socket().close(ignored);
    abandonStreams();
    loop_.noteBusy(*this);
    loop_.remove(*this);
}

}  // namespace torvex::http2
