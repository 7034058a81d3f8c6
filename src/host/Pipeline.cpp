#include "host/Pipeline.h"

#include "host/Shortage.h"
#include "host/files/InterfaceFile.h"
#include "host/files/PublicFile.h"
#include "host/files/StaticFiles.h"
#include "host/http/ErrorPages.h"
#include "host/http/Exchange.h"
#include "host/http/RequestConversion.h"
#include "host/http/ResponseConversion.h"
#include "platform/Response.h"

// The steps of a request, in order:
//
//  1. limits             the parser has refused what is too large or malformed: nothing below sees such bytes
//  2. target and host    both go into links and look-ups: they must be well-formed before anyone reads them
//  3. scheme             where https is what the site is, nothing is answered over http
//  4. method known       cheap, and the same for every address
//  5. who is responsible pages first: a look-up in memory, and no file in the public folder can stand in
//                        a page's place; then guarded folders; all else is a public file
//  6. method allowed     depends on who is responsible
//  7. body               its type and length are refused before it is read, by what the address takes; then
//                        it is read within its deadline and the budget of all bodies
//  8. public file        on the loop, without a session: it takes microseconds and needs no worker
//  9. session            requests of one visitor queue up here, where waiting costs no thread
// 10. worker             the page or guard runs; it may wait for the database or a feed
// 11. response           converted on the worker, which has the time for it
// 12. security headers   added by the connection, so that no answer, not even a refusal, is without them
// 13. write

namespace torvex {

namespace {

std::string_view allowedMethods(const Exchange& exchange) {
    return exchange.page && exchange.page->acceptsPost ? "GET, HEAD, POST" : "GET, HEAD";
}

bool isBodyType(const Exchange& exchange) {
    const std::string_view type = exchange.head().field("Content-Type");
    if (!exchange.page || exchange.page->bodyType.empty()) return isFormType(type);
    return isMediaType(type, exchange.page->bodyType);
}

/// The same over https. A port belongs to its scheme alone.
std::string secureAddress(const Exchange& exchange, std::uint16_t tlsPort) {
    const std::string_view name = hostName(exchange.host);
    const std::string_view port = exchange.host.substr(name.size());
    std::string address("https://");
    address.append(name);
    if (!port.empty()) address.append(tlsPort > 0 ? ":" + std::to_string(tlsPort) : std::string(port));
    std::string_view target = exchange.head().target;
    if (!exchange.target.authority.empty())
        target.remove_prefix(target.find("://") + 3 + exchange.host.size());
    if (!target.starts_with('/')) address += '/';
    return address.append(target);
}

bool isBelow(std::string_view path, std::string_view folder) {
    return ascii::startsWith(path, folder);
}

}  // namespace

Pipeline::Pipeline(PageSetting setting, std::vector<PageRoute> pages, std::vector<FileGuard> guards,
                   std::shared_ptr<const BuiltInterface> interface)
    : setting_(std::move(setting)), guards_(std::move(guards)), interface_(std::move(interface)) {
    for (PageRoute& page : pages) {
        std::string path = ascii::lowered(page.path);
        pages_.emplace(std::move(path), std::move(page));
    }
}

std::optional<Answer> Pipeline::examine(Exchange& exchange) const {
    std::optional<RequestTarget> target = parseTarget(exchange.head().target);
    if (!target) return errorPages::page(400);
    exchange.target = std::move(*target);
    if (auto refusal = checkHost(exchange)) return refusal;
    if (auto elsewhere = checkScheme(exchange)) return elsewhere;
    if (exchange.head().method == Method::Unknown) return errorPages::page(501);
    findResponsible(exchange);
    if (auto refusal = checkMethod(exchange)) return refusal;
    return checkBody(exchange);
}

std::optional<Answer> Pipeline::checkHost(Exchange& exchange) const {
    const RequestHead& head = exchange.head();
    const std::size_t hosts = head.count("Host");
    if (hosts > 1 || (hosts == 0 && head.version == 11)) return errorPages::page(400);
    exchange.host = exchange.target.authority.empty() ? head.field("Host") : exchange.target.authority;
    if (hosts == 1 && !isValidHost(head.field("Host"))) return errorPages::page(400);
    if (!setting_.hosts.answer(hostName(exchange.host))) return errorPages::page(421);
    return std::nullopt;
}

std::optional<Answer> Pipeline::checkScheme(const Exchange& exchange) const {
    if (!setting_.httpsAlone || exchange.isTls) return std::nullopt;
    if (exchange.host.empty()) return errorPages::page(400);
    // Not for ever, as browsers would keep it: what is for ever is told over https.
    Response response;
    response.status = 307;
    response.cacheControl = "no-store";
    response.addHeader("Location", secureAddress(exchange, tlsPort_));
    return toAnswer(std::move(response));
}

void Pipeline::findResponsible(Exchange& exchange) const {
    exchange.page = nullptr;
    exchange.guard = nullptr;
    const auto page = pages_.find(ascii::lowered(exchange.target.path));
    if (page != pages_.end()) {
        exchange.page = &page->second;
        return;
    }
    for (const FileGuard& guard : guards_)
        if (isBelow(exchange.target.path, guard.folder) && guard.isOn()) exchange.guard = &guard;
}

std::optional<Answer> Pipeline::checkMethod(const Exchange& exchange) const {
    const Method method = exchange.head().method;
    if (method == Method::Get || method == Method::Head) return std::nullopt;
    if (method == Method::Post && exchange.page && exchange.page->acceptsPost) return std::nullopt;
    return errorPages::methodNotAllowed(allowedMethods(exchange));
}

std::optional<Answer> Pipeline::checkBody(const Exchange& exchange) const {
    const RequestHead& head = exchange.head();
    const std::string_view expectation = head.field("Expect");
    if (!expectation.empty() && !ascii::equals(expectation, "100-continue")) return errorPages::page(417);
    if (head.method == Method::Post && head.hasBody && !isBodyType(exchange)) return errorPages::page(415);
    return std::nullopt;
}

std::uint64_t Pipeline::bodyLimit(const Exchange& exchange) const {
    if (!exchange.page || exchange.head().method != Method::Post) return 0;
    return exchange.page->bodyLimit.value_or(setting_.limits.body);
}

Answer Pipeline::answerFile(const Exchange& exchange, StaticFiles& files) const {
    try {
        return files.answer(exchange.target.path, exchange.head());
    } catch (const OutOfDescriptors&) {
        return outOfDescriptors(setting_.log);
    }
}

std::optional<Answer> Pipeline::answer(const std::shared_ptr<Exchange>& exchange, StaticFiles* files) const {
    const bool isOfInterface = interface_ && isBelow(exchange->target.path, interfaceFolder);
    if (!exchange->page && isOfInterface)
        return interfaceAnswer(*interface_, exchange->target.path, exchange->head());
    if (!exchange->page && !exchange->guard) {
        // A style sheet that is fetched with the cookie shows that the visitor keeps cookies.
        const std::string_view cookies = exchange->head().field("Cookie");
        if (!cookies.empty())
            setting_.sessions.touch(setting_.cookie.token(cookies, setting_.isSecure(*exchange)));
        return files ? answerFile(*exchange, *files) : errorPages::page(404);
    }
    if (formFields(exchange->body()) > setting_.limits.formFields) return errorPages::page(413);
    if (std::make_shared<PageJob>(setting_, exchange)->start()) return std::nullopt;
    return errorPages::page(503);
}

}  // namespace torvex
