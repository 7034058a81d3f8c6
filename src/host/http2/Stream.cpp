#include "host/http2/Stream.h"

#include <boost/asio/post.hpp>

#include "host/Admission.h"
#include "host/EventLoop.h"
#include "host/Pace.h"
#include "host/Pipeline.h"
#include "host/http/AnswerParts.h"
#include "host/http/Refusal.h"
#include "host/http/SecurityFields.h"
#include "host/http2/Connection.h"

namespace torvex::http2 {

namespace {

constexpr std::string_view tooManyPages =
    "an address has as many connections, and pages under way on them, as connections_per_address in [limits] "
    "gives it: further ones are turned away";

}  // namespace

Stream::Stream(Connection& connection, std::int32_t id)
    : context_(connection.loop().context()),
      connection_(connection),
      owner_(connection.weak_from_this()),
      id_(id),
      fields_(connection.loop().options().limits),
      account_(connection.loop().peers(), connection.loop().pipeline().log()) {
    localPort = connection.source().localPort;
    account_.takeAs(connection.source().visitor, *this);
}

void Stream::enter(Stage stage) {
    connection_.onStage(stage_, stage);
    stage_ = stage;
    lastMove_ = std::chrono::steady_clock::now();
}

bool Stream::onField(std::string_view name, std::string_view value) {
    fields_.add(name, value);
    return !fields_.isExcessive();
}

void Stream::onHead(bool isWhole) {
    if (const int status = fields_.makeHead(head_, !isWhole)) return send(refusals::of(*this, status));
    hasHead_ = true;
    Admission admission = admit(connection_.loop(), connection_.source(), *this, account_);
    if (admission.refusal) return send(std::move(*admission.refusal));
    bodyLimit_ = admission.bodyLimit;
    if (head_.hasMoreThan(bodyLimit_)) return send(refusals::of(*this, 413));
    if (isWhole) return run();
    enter(Stage::Body);
    bodyBegan_ = lastMove_;
    bodiesBefore_ = connection_.bodyBytes();
    if (!head_.field("Expect").empty()) connection_.session().goOn(id_);
}

/// What has come is handed out of the way at once, so as much may come again. What nobody wants holds up its own
/// stream alone.
void Stream::onBody(std::string_view bytes) {
    if (stage_ != Stage::Body) return connection_.session().consumeOfConnection(bytes.size());
    connection_.session().consume(id_, bytes.size());
    connection_.onBody(bytes.size());
    lastMove_ = std::chrono::steady_clock::now();
    if (const int status = putAway(bytes)) send(refusals::of(*this, status));
}

/// The status of a refusal, or 0.
int Stream::putAway(std::string_view bytes) {
    if (received_ == 0)
        growth_.begin(body_, static_cast<std::size_t>(sink ? 0 : head_.contentLength.value_or(0)));
    received_ += bytes.size();
    if (received_ > bodyLimit_) return 413;
    if (sink) return sink->take(bytes) ? 0 : 503;
    growth_.add(body_, bytes);
    return account_.hold(body_.capacity()) ? 0 : 503;
}

void Stream::onEnd() {
    if (stage_ == Stage::Body) run();
}

/// What has come of a body that goes elsewhere is handed on although its rest won't come: an upload goes on behind it.
void Stream::onClosed() {
    if (stage_ == Stage::Closed) return;
    const auto self = shared_from_this();
    abandon();
    connection_.remove(*this);
}

void Stream::abandon() {
    if (stage_ == Stage::Body && sink && takePlace()) {
        enter(Stage::Closed);
        connection_.beginWork();
        work();
        return;
    }
    const bool isWorking = stage_ == Stage::Working;
    enter(Stage::Closed);
    answer_ = {};
    if (!isWorking) leaveFile();
}

void Stream::run() {
    isFile_ = !page && connection_.takeFile(id_);
    if (!page && !isFile_) return enter(Stage::Waiting);
    enter(Stage::Working);
    if (!takePlace()) return send(refusals::of(*this, 503));
    connection_.beginWork();
    work();
}

/// On one connection a visitor could have far more pages made than others, who have one on each: the first is what the
/// connection counts for, each further one takes a place as another connection would.
bool Stream::takePlace() {
    if ((!page && !guard) || connection_.source().isProxy || !connection_.isWorking()) return true;
    return account_.enter(tooManyPages);
}

void Stream::leaveFile() {
    if (isFile_) connection_.leaveFile();
    isFile_ = false;
}

void Stream::work() {
    EventLoop& loop = connection_.loop();
    if (auto answer = loop.pipeline().answer(shared_from_this(), loop.files(), &loop.looks()))
        onFinished(std::move(*answer));
}

/// Any thread: so it only posts. What is posted holds the last reference, for requests end on their loop.
void Stream::finish(std::shared_ptr<Exchange> self, Answer answer) {
    asio::post(context_, [this, self = std::move(self), answer = std::move(answer)]() mutable {
        const auto connection = owner_.lock();
        if (!connection) return;
        onFinished(std::move(answer));
        connection->goOn();
    });
}

void Stream::onFinished(Answer answer) {
    connection_.endWork();
    if (!connection_.source().isProxy) account_.leave();
    if (stage_ == Stage::Working) return send(std::move(answer));
    leaveFile();
}

void Stream::send(Answer answer) {
    body_ = {};
    account_.release();
    answer_ = std::move(answer);
    bodyToSend_ = fields_.isHead() || !answer_.hasLength ? 0 : answerParts::bodyLength(answer_);
    enter(Stage::Answering);
    if (unsent() == 0 || !std::holds_alternative<FileAnswer>(answer_.body)) leaveFile();
    AnswerFields& fields = connection_.answerFields();
    fields.set(answer_, connection_.loop().date(), commonFields());
    connection_.session().answer(id_, *this, fields.list());
}

std::string_view Stream::commonFields() const {
    EventLoop& loop = connection_.loop();
    return hasHead_ ? loop.fieldsFor(*this) : loop.fields().of(SecurityFields::Kind::Page, isTls);
}

bool Stream::takeBody(std::string& out, std::size_t count) {
    if (!answerParts::appendBody(out, answer_, bodySent_, count)) return false;
    bodySent_ += count;
    lastMove_ = std::chrono::steady_clock::now();
    return true;
}

void Stream::checkDeadline(TimePoint now) {
    if (stage_ == Stage::Body && !isBodyInTime(now)) return sink ? run() : send(refusals::of(*this, 408));
    const bool isStuck = stage_ == Stage::Answering && unsent() > 0 &&
                         now - lastMove_ >= connection_.loop().options().deadlines.write;
    if (isStuck && connection_.session().isHeldUp(id_)) connection_.session().reset(id_, NGHTTP2_CANCEL);
}

/// A long body may take its time in all, but not rest for longer than a short one may take. Bodies share the line: one
/// that waits for another isn't slow.
bool Stream::isBodyInTime(TimePoint now) const {
    const ServerOptions& options = connection_.loop().options();
    const TimePoint since = sink ? lastMove_ : bodyBegan_;
    const std::uint64_t bytes = connection_.bodyBytes() - bodiesBefore_;
    return now - since < options.deadlines.body && isFastEnough(options.speed, bytes, bodyBegan_, now);
}

}  // namespace torvex::http2
