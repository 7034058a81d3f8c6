#include "host/RequestAccount.h"

#include "host/LineLog.h"
#include "host/PeerLimits.h"
#include "host/http/Exchange.h"

namespace torvex {

RequestAccount::~RequestAccount() {
    release();
    leave();
}

void RequestAccount::takeAs(const Client& visitor, Exchange& exchange) {
    visitor_ = Peer::of(visitor.address);
    exchange.remoteAddress = textOf(visitor.address);
    exchange.origin = PeerHash()(visitor_);
    exchange.isTls = visitor.isTls;
}

bool RequestAccount::enter(std::string_view warning) {
    isCounted_ = limits_.enter(visitor_);
    if (!isCounted_) log_.warn(warning);
    return isCounted_;
}

void RequestAccount::leave() {
    if (isCounted_) limits_.leave(visitor_);
    isCounted_ = false;
}

bool RequestAccount::hold(std::uint64_t bytes) {
    if (bytes <= held_) return true;
    if (!limits_.hold(visitor_, bytes - held_)) {
        log_.warn("bodies of requests take all the memory that bodies_bytes in [limits] gives them");
        return false;
    }
    held_ = bytes;
    return true;
}

void RequestAccount::release() {
    if (held_ == 0) return;
    limits_.release(visitor_, held_);
    held_ = 0;
}

}  // namespace torvex
