#include "host/http/Refusal.h"

#include "host/http/ErrorPages.h"
#include "host/http/Exchange.h"
#include "host/http/ResponseConversion.h"
#include "pages/PageRoute.h"

namespace torvex::refusals {

namespace {

bool speaksForItself(const Exchange& exchange) {
    return exchange.page && exchange.page->refusal;
}

Answer inItsForm(const Exchange& exchange, Refused refused) {
    refused.languages = exchange.head().field("Accept-Language");
    return toAnswer(exchange.page->refusal(refused));
}

}  // namespace

Answer of(const Exchange& exchange, int status) {
    if (!speaksForItself(exchange)) return errorPages::page(status);
    Answer answer = inItsForm(exchange, {.status = status});
    if (status == 503) answer.addField("Retry-After", errorPages::retryAfter);
    return answer;
}

Answer methodNotAllowed(const Exchange& exchange) {
    const std::string allowed = exchange.page ? exchange.page->methods.text() : methods::page.text();
    if (!speaksForItself(exchange)) return errorPages::methodNotAllowed(allowed);
    Answer answer = inItsForm(exchange, {.status = 405});
    answer.addField("Allow", allowed);
    return answer;
}

Answer failure(const Exchange& exchange, std::string_view reference, const std::exception* error) {
    if (!speaksForItself(exchange)) return errorPages::failure(reference);
    return inItsForm(exchange, {.status = 500, .reference = reference, .failure = error});
}

}  // namespace torvex::refusals
