#include "host/Handshake.h"

#include "host/Connection.h"
#include "host/EventLoop.h"
#include "host/http2/Connection.h"

namespace torvex {

Handshake::Handshake(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source)
    : LoopConnection(source), loop_(loop), transport_(std::move(transport)) {}

void Handshake::start() {
    lastMove_ = std::chrono::steady_clock::now();
    deadline_ = lastMove_ + loop_.options().deadlines.header;
    loop_.noteMove(*this);
    transport_->handshake([self = shared_from_this()](const boost::system::error_code& error) {
        if (self->isClosed_) return;
        if (error) return self->close();
        self->onDone();
    });
}

void Handshake::onDone() {
    if (transport_->speaksHttp2())
        return pass(std::make_shared<http2::Connection>(loop_, std::move(transport_), source()));
    pass(std::make_shared<Connection>(loop_, std::move(transport_), source()));
}

void Handshake::pass(const std::shared_ptr<LoopConnection>& next) {
    isClosed_ = true;
    loop_.replace(*this, *next);
    next->start();
}

void Handshake::checkDeadline(TimePoint now) {
    if (now >= deadline_) close();
}

void Handshake::close() {
    if (isClosed_) return;
    const auto self = shared_from_this();
    isClosed_ = true;
    boost::system::error_code ignored;
    transport_->socket().close(ignored);
    loop_.remove(*this);
}

}  // namespace torvex
