#include "host/Admission.h"

#include "host/EventLoop.h"
#include "host/LoopConnection.h"
#include "host/Pipeline.h"
#include "host/RequestAccount.h"
#include "host/http/Exchange.h"
#include "host/http/Refusal.h"
#include "pages/PageRoute.h"

namespace torvex {

namespace {

/// What a proxy brings for a visitor counts like a connection of theirs while it is being answered. What it
/// asks for itself doesn't.
bool enterForVisitor(const Source& source, RequestAccount& account) {
    if (!source.isProxy || account.visitor() == source.peer) return true;
    return account.enter(
        "a proxy has as many requests for one address as connections_per_address in [limits] gives it: "
        "further ones are turned away");
}

}  // namespace

Admission admit(EventLoop& loop, const Source& source, Exchange& exchange, RequestAccount& account) {
    if (source.isProxy) account.takeAs(loop.proxies().visitorOf(exchange.head(), source.visitor), exchange);
    if (auto refusal = loop.pipeline().examine(exchange)) return {std::move(refusal)};
    if (!enterForVisitor(source, account)) return {refusals::of(exchange, 503)};
    BodyReception reception = loop.pipeline().receive(exchange);
    if (reception.refusal != 0) return {refusals::of(exchange, reception.refusal)};
    exchange.sink = std::move(reception.sink);
    return {std::nullopt, reception.limit};
}

}  // namespace torvex
