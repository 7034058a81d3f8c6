#include "host/Connection.h"

#include <algorithm>
#include <boost/asio/post.hpp>

#include "host/Admission.h"
#include "host/EventLoop.h"
#include "host/LineLog.h"
#include "host/Pipeline.h"
#include "host/http/Refusal.h"
#include "host/http/SecurityFields.h"

namespace torvex {

namespace {

using boost::system::error_code;

constexpr std::size_t readSize = 4096;
constexpr std::size_t pouredSize = 64 * 1024;    ///< read at a time of a body that goes to a sink
constexpr std::size_t keptBody = 4096;           ///< of memory, from one request to the next
constexpr std::size_t lingerBytes = 256 * 1024;  ///< of a refused body, dropped; more is cut off
constexpr int mostInOneGo = 16;  ///< pipelined requests, before other connections have their turn
constexpr std::chrono::milliseconds betweenLooks{1000};  ///< at the pace of one that is neither fast nor out
constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";

}  // namespace

Connection::Connection(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source)
    : LoopConnection(source),
      loop_(loop),
      transport_(std::move(transport)),
      parser_(loop.options().limits),
      account_(loop.peers(), loop.pipeline().log()) {
    localPort = source.localPort;
    account_.takeAs(source.visitor, *this);
}

void Connection::start() {
    enter(Stage::Header);
    read();
}

void Connection::enter(Stage stage) {
    const TimePoint now = std::chrono::steady_clock::now();
    stage_ = stage;
    lastMove_ = now;
    movingSince_ = now;
    stageEnd_ = endOf(stage, now);
    deadline_ = stageEnd_;
    switch (stage) {
        case Stage::Header:
        case Stage::Body:
            deadline_ = std::min(stageEnd_, now + loop_.options().speed.grace);
            return loop_.noteMove(*this);
        case Stage::Writing:
            readerPace_.begin(writer_.written(), now);
            deadline_ = now + std::min(loop_.options().deadlines.write, loop_.options().speed.grace);
            return loop_.noteMove(*this);
        case Stage::Lingering:
            return loop_.noteMove(*this);
        case Stage::Idle:
            return loop_.noteRest(*this);
        case Stage::Handling:
        case Stage::Closed:
            return loop_.noteBusy(*this);
    }
}

Connection::TimePoint Connection::endOf(Stage stage, TimePoint now) const {
    const Deadlines& deadlines = loop_.options().deadlines;
    switch (stage) {
        case Stage::Header:
            return now + deadlines.header;
        case Stage::Idle:
            return now + deadlines.idle;
        case Stage::Body:
            // As long as it comes: see `isBodyInTime`.
            return sink ? TimePoint::max() : now + deadlines.body;
        case Stage::Lingering:
            return now + deadlines.linger;
        default:
            return TimePoint::max();
    }
}

void Connection::moved() {
    lastMove_ = std::chrono::steady_clock::now();
    loop_.noteMove(*this);
}

void Connection::checkDeadline(TimePoint now) {
    if (now < deadline_) return;
    if (now < stageEnd_ && keepsPace(now)) {
        deadline_ = std::min(stageEnd_, now + std::min(betweenLooks, loop_.options().deadlines.write));
        return;
    }
    const auto self = shared_from_this();
    const bool isAnswered = stage_ == Stage::Body || (stage_ == Stage::Header && buffer_.size() > 0);
    if (!isAnswered) return close();
    // The read under way is ended, and its handler says why.
    deadline_ = TimePoint::max();
    isTimedOut_ = true;
    error_code ignored;
    transport_->socket().cancel(ignored);
}

bool Connection::keepsPace(TimePoint now) {
    if (stage_ == Stage::Writing)
        return readerPace_.isKept(loop_.options(), transport_->socket().native_handle(), writer_.written(),
                                  now);
    if (stage_ == Stage::Body) return isBodyInTime(now);
    // One that has sent nothing yet isn't slow: browsers connect ahead of what they ask for.
    return buffer_.size() == 0 || isFastEnough(buffer_.size(), now);
}

/// A long body may take its time in all, but not rest for longer than a short one may take.
bool Connection::isBodyInTime(TimePoint now) {
    if (!sink) return isFastEnough(parser_.body().size(), now);
    return now - lastMove_ < loop_.options().deadlines.body && isFastEnough(poured_, now);
}

bool Connection::isFastEnough(std::uint64_t bytes, TimePoint now) const {
    return torvex::isFastEnough(loop_.options().speed, bytes, movingSince_, now);
}

void Connection::giveWay() {
    const auto self = shared_from_this();
    close();
}

void Connection::closeIfIdle() {
    if (stage_ != Stage::Idle && !(stage_ == Stage::Header && buffer_.size() == 0)) return;
    const auto self = shared_from_this();
    close();
}

void Connection::read() {
    transport_->read(buffer_.prepare(sink ? pouredSize : readSize),
                     [self = shared_from_this()](const error_code& error, std::size_t count) {
                         self->onRead(error, count);
                     });
}

void Connection::onRead(const error_code& error, std::size_t count) {
    if (stage_ == Stage::Closed) return;
    const bool isLost = isTimedOut_ || error;
    if (isLost && sink && stage_ == Stage::Body) return cutShort();
    if (isTimedOut_) {
        if (refuse(refusals::of(*this, 408))) process();
        return;
    }
    if (error) return close();
    if (stage_ == Stage::Idle) {
        enter(Stage::Header);
    } else {
        moved();
        if (buffer_.size() == 0 && stage_ == Stage::Header) movingSince_ = lastMove_;
    }
    buffer_.commit(count);
    isBehindAnother_ = false;
    process();
}

/// Goes on with what has been read until there is nothing left that can be done at once.
void Connection::process() {
    inOneGo_ = 0;
    while (processOnce()) {
        if (++inOneGo_ < mostInOneGo * 4) continue;
        asio::post(loop_.context(), [self = shared_from_this()] { self->resume(); });
        return;
    }
}

void Connection::resume() {
    if (stage_ != Stage::Closed) process();
}

/// One step; false when the next one waits for the network, a worker, or nothing at all.
bool Connection::processOnce() {
    const std::string_view bytes(static_cast<const char*>(buffer_.data().data()), buffer_.size());
    const std::size_t consumed = parser_.feed(bytes);
    buffer_.consume(consumed);
    if (!parser_.body().empty() && !(account_.hold(parser_.body().capacity()) && pour()))
        return refuse(refusals::of(*this, 503));
    switch (parser_.state()) {
        case RequestParser::State::HeaderDone:
            return onHeader();
        case RequestParser::State::Complete:
            return onComplete();
        case RequestParser::State::Refused:
            return refuse(refusals::of(*this, parser_.refusal()));
        default:
            if (consumed > 0) return true;
            read();
            return false;
    }
}

bool Connection::onHeader() {
    Admission admission = admit(loop_, source(), *this, account_);
    if (admission.refusal) return decline(std::move(*admission.refusal));
    poured_ = 0;
    parser_.readBody(admission.bodyLimit);
    if (parser_.state() != RequestParser::State::Body) return true;
    enter(Stage::Body);
    return askForBody();
}

bool Connection::pour() {
    if (!sink) return true;
    poured_ += parser_.body().size();
    const bool isTaken = sink->take(parser_.body());
    parser_.body().clear();
    return isTaken;
}

/// What has come of a body is handed on although its rest won't come: an upload goes on behind it.
void Connection::cutShort() {
    isCut_ = true;
    enter(Stage::Handling);
    auto answer = loop_.pipeline().answer(std::static_pointer_cast<Exchange>(shared_from_this()),
                                          loop_.files(), &loop_.looks());
    if (answer && send(std::move(*answer))) process();
}

/// A client that waits to be told so is told to send the body.
bool Connection::askForBody() {
    const bool isAsked = !head().field("Expect").empty() && head().version == 11;
    if (!isAsked || buffer_.size() > 0) return true;
    writer_.startRaw(goOn);
    isInterim_ = true;
    return writeOn();
}

bool Connection::onComplete() {
    enter(Stage::Handling);
    body_.swap(parser_.body());
    // It may have come later than what told the loop that there is something to read.
    if (isBehindAnother_) loop_.looks().end();
    auto answer = loop_.pipeline().answer(std::static_pointer_cast<Exchange>(shared_from_this()),
                                          loop_.files(), &loop_.looks());
    return answer && send(std::move(*answer));
}

/// Any thread: so it only posts. What is posted holds the last reference, for connections end on their loop.
void Connection::finish(std::shared_ptr<Exchange> self, Answer answer) {
    asio::post(loop_.context(), [this, self = std::move(self), answer = std::move(answer)]() mutable {
        if (stage_ != Stage::Closed && send(std::move(answer))) process();
    });
}

/// An answer behind which the connection is of no use: what the visitor still sends can't be made sense of.
bool Connection::refuse(Answer answer) {
    answer.closes = true;
    return send(std::move(answer));
}

/// The same while the rest of the request can still be told from the next one.
bool Connection::decline(Answer answer) {
    return head().hasBody ? refuse(std::move(answer)) : send(std::move(answer));
}

bool Connection::send(Answer answer) {
    const bool hasRequest = parser_.state() != RequestParser::State::Refused && !isTimedOut_;
    closesAfterAnswer_ = answer.closes || isCut_ || !hasRequest || !head().keepAlive || loop_.isStopping();
    const bool isHead = hasRequest && head().method == Method::Head;
    writer_.start(
        std::move(answer),
        {loop_.date(), !closesAfterAnswer_, isHead, hasRequest && head().version == 10,
         hasRequest ? loop_.fieldsFor(*this) : loop_.fields().of(SecurityFields::Kind::Page, isTls)});
    isInterim_ = false;
    enter(Stage::Writing);
    return writeOn();
}

/// True when all is written and the next request can be looked at.
bool Connection::writeOn() {
    if (!transport_->isEncrypted()) return writePlain();
    writeEncrypted();
    return false;
}

bool Connection::writePlain() {
    const std::uint64_t before = writer_.written();
    const AnswerWriter::Progress progress = writer_.writeTo(transport_->socket().native_handle());
    if (progress == AnswerWriter::Progress::Done) return afterAnswer();
    if (progress == AnswerWriter::Progress::Failed) return close(), false;
    if (writer_.written() > before) moved();
    awaitWritable();
    return false;
}

void Connection::awaitWritable() {
    transport_->socket().async_wait(Socket::wait_write, [self = shared_from_this()](const error_code& error) {
        if (self->stage_ == Stage::Closed) return;
        if (error) return self->close();
        if (self->writePlain()) self->process();
    });
}

void Connection::writeEncrypted() {
    const std::string_view bytes = writer_.next();
    if (writer_.failed()) return close();
    transport_->writeEncrypted(asio::const_buffer(bytes.data(), bytes.size()),
                               [self = shared_from_this()](const error_code& error, std::size_t count) {
                                   if (self->stage_ == Stage::Closed) return;
                                   if (error) return self->close();
                                   self->writer_.advance(count);
                                   self->moved();
                                   const bool isAll = self->writer_.next().empty() && !self->writer_.failed();
                                   if (!isAll) return self->writeEncrypted();
                                   if (self->afterAnswer()) self->process();
                               });
}

bool Connection::afterAnswer() {
    writer_.clear();
    if (isInterim_) {
        isInterim_ = false;
        return true;
    }
    if (closesAfterAnswer_) return linger(), false;
    isBehindAnother_ = true;
    parser_.reset();
    page = nullptr;
    guard = nullptr;
    sink.reset();
    if (buffer_.size() == 0 && buffer_.capacity() >= pouredSize) buffer_.shrink_to_fit();
    releaseBody();
    enter(buffer_.size() > 0 ? Stage::Header : Stage::Idle);
    return true;
}

void Connection::releaseBody() {
    if (body_.capacity() > keptBody) body_ = {};
    body_.clear();
    account_.release();
    account_.leave();
    if (source().isProxy) account_.takeAs(source().visitor, *this);
}

/// Closing while the visitor still sends would make the system discard the answer; so the sending end is
/// closed and what comes is read for a short while.
void Connection::linger() {
    error_code ignored;
    enter(Stage::Lingering);
    transport_->socket().shutdown(Socket::shutdown_send, ignored);
    buffer_.clear();
    transport_->socket().async_read_some(
        buffer_.prepare(readSize), [self = shared_from_this()](const error_code& error, std::size_t count) {
            self->onLinger(error, count);
        });
}

void Connection::onLinger(const error_code& error, std::size_t count) {
    lingered_ += count;
    if (stage_ == Stage::Closed) return;
    if (error || lingered_ > lingerBytes) return close();
    transport_->socket().async_read_some(
        buffer_.prepare(readSize), [self = shared_from_this()](const error_code& failure, std::size_t more) {
            self->onLinger(failure, more);
        });
}

void Connection::close() {
    if (stage_ == Stage::Closed) return;
    enter(Stage::Closed);
    error_code ignored;
    transport_->socket().close(ignored);
    releaseBody();
    loop_.remove(*this);
}

}  // namespace torvex
