#include "host/Pipeline.h"

#include <algorithm>

#include "host/Shortage.h"
#include "host/files/InterfaceFile.h"
#include "host/files/PublicFile.h"
#include "host/files/StaticFiles.h"
#include "host/http/ErrorPages.h"
#include "host/http/Exchange.h"
#include "host/http/Refusal.h"
#include "host/http/RequestConversion.h"
#include "host/http/ResponseConversion.h"
#include "pages/ContentPolicy.h"
#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
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
//                        it is read within its deadline and the budget of all bodies, or goes where the
//                        address wants it, at its own pace
//  8. public file        on the loop, without a session: it takes microseconds and needs no worker, but once for
//                        each compressed form of a version
//  9. kept page          on the loop, too, when what it was made of stands: for visitors without a session
// 10. session            requests of one visitor queue up here, where waiting costs no thread
// 11. worker             the page or guard runs; it may wait for the database or a feed
// 12. response           converted on the worker, which has the time for it
// 13. security headers   added by the connection, so that no answer, not even a refusal, is without them
// 14. write

namespace torvex {

namespace {

const MethodSet& methodsOf(const Exchange& exchange) {
    return exchange.page ? exchange.page->methods : methods::page;
}

/// By what the method means, a request to read brings nothing.
bool mayHaveBody(Method method) {
    return !methods::page.has(method);
}

/// What was asked, from its first "/" on.
std::string pathOf(const Exchange& exchange) {
    std::string_view target = exchange.head().target;
    if (!exchange.target.authority.empty())
        target.remove_prefix(target.find("://") + 3 + exchange.host.size());
    return target.starts_with('/') ? std::string(target) : "/" + std::string(target);
}

/// The same over https. A port belongs to its scheme alone.
std::string secureAddress(const Exchange& exchange, std::uint16_t tlsPort) {
    const std::string_view name = hostName(exchange.host);
    const std::string_view port = exchange.host.substr(name.size());
    std::string address("https://");
    address.append(name);
    if (!port.empty()) address.append(tlsPort > 0 ? ":" + std::to_string(tlsPort) : std::string(port));
    return address.append(pathOf(exchange));
}

bool isBelow(std::string_view path, std::string_view folder) {
    return ascii::startsWith(path, folder);
}

bool isOfAuthors(std::string_view path) {
    return isBelow(path, "/torvex/") || ascii::equals(path, "/torvex");
}

Answer leadTo(std::string address) {
    Response response;
    response.status = 307;
    response.cacheControl = "no-store";
    response.addHeader("Location", std::move(address));
    return toAnswer(std::move(response));
}

}  // namespace

Pipeline::Pipeline(PageSetting setting, std::vector<PageRoute> pages, std::vector<FileGuard> guards,
                   std::shared_ptr<const BuiltInterface> interface)
    : setting_(std::move(setting)), guards_(std::move(guards)), interface_(std::move(interface)) {
    for (PageRoute& page : pages) {
        page.path = ascii::lowered(page.path);
        if (page.reach != PageRoute::Reach::Exact) {
            folders_.push_back(std::move(page));
        } else {
            std::string path = page.path;
            pages_.emplace(std::move(path), std::move(page));
        }
    }
    std::stable_sort(folders_.begin(), folders_.end(), [](const PageRoute& left, const PageRoute& right) {
        return left.path.size() > right.path.size();
    });
}

std::optional<Answer> Pipeline::examine(Exchange& exchange) const {
    std::optional<RequestTarget> target = parseTarget(exchange.head().target);
    if (!target) return errorPages::page(400);
    exchange.target = std::move(*target);
    findResponsible(exchange);
    if (auto refusal = checkHost(exchange)) return refusal;
    if (auto refusal = checkPlace(exchange)) return refusal;
    if (auto elsewhere = checkScheme(exchange)) return elsewhere;
    if (exchange.head().method == Method::Unknown) return refusals::of(exchange, 501);
    if (auto refusal = checkMethod(exchange)) return refusal;
    return checkBody(exchange);
}

std::optional<Answer> Pipeline::checkHost(Exchange& exchange) const {
    const RequestHead& head = exchange.head();
    const std::size_t hosts = head.count("Host");
    if (hosts > 1 || (hosts == 0 && head.version == 11)) return refusals::of(exchange, 400);
    exchange.host = exchange.target.authority.empty() ? head.field("Host") : exchange.target.authority;
    if (hosts == 1 && !isValidHost(head.field("Host"))) return refusals::of(exchange, 400);
    if (!setting_.hosts.answer(hostName(exchange.host))) return refusals::of(exchange, 421);
    return std::nullopt;
}

std::string Pipeline::publicAddress(const Exchange& exchange) const {
    const std::string_view port = exchange.host.substr(hostName(exchange.host).size());
    std::string address(exchange.isTls ? "https://" : "http://");
    return address.append(setting_.publicHost).append(port).append(pathOf(exchange));
}

bool Pipeline::isAuthorsHost(const Exchange& exchange) const {
    return setting_.authoringHost.empty() || ascii::equals(hostName(exchange.host), setting_.authoringHost);
}

/// Authors and visitors don't meet where authors have a host of their own.
std::optional<Answer> Pipeline::checkPlace(const Exchange& exchange) const {
    const bool isAuthors = isAuthorsHost(exchange);
    // A script that answers in this server's place could answer authors.
    if (isAuthors && ascii::equals(exchange.head().field("Service-Worker"), "script"))
        return refusals::of(exchange, 403);
    if (setting_.authoringHost.empty() || exchange.target.path == policyReportPath) return std::nullopt;
    const std::string_view path = exchange.target.path;
    if (isAuthors && path == "/") return leadTo("/torvex/");
    const bool isForAuthors = exchange.page ? isOfAuthors(path) : isBelow(path, interfaceFolder);
    const bool isFile = !exchange.page && !isForAuthors;
    if (isFile || isForAuthors == isAuthors) return std::nullopt;
    // Links of pages that are looked at lead to public pages.
    const bool leadsOut = isAuthors && !setting_.publicHost.empty() && exchange.head().method == Method::Get;
    return leadsOut ? leadTo(publicAddress(exchange)) : refusals::of(exchange, 404);
}

std::optional<Answer> Pipeline::checkScheme(const Exchange& exchange) const {
    if (!setting_.httpsAlone || exchange.isTls) return std::nullopt;
    if (exchange.host.empty()) return refusals::of(exchange, 400);
    // Not for ever, as browsers would keep it: what is for ever is told over https.
    return leadTo(secureAddress(exchange, tlsPort_));
}

void Pipeline::findResponsible(Exchange& exchange) const {
    exchange.guard = nullptr;
    exchange.page = pageAt(ascii::lowered(exchange.target.path));
    if (exchange.page) return;
    for (const FileGuard& guard : guards_)
        if (isBelow(exchange.target.path, guard.folder) && guard.isOn()) exchange.guard = &guard;
}

const PageRoute* Pipeline::pageAt(const std::string& path) const {
    if (const auto page = pages_.find(path); page != pages_.end()) return &page->second;
    const bool isFile = isPublicPath(path, setting_.guardedFiles.types) || path.starts_with(interfaceFolder);
    const auto folder = std::find_if(folders_.begin(), folders_.end(), [&](const PageRoute& one) {
        if (one.reach == PageRoute::Reach::BelowButFiles && isFile) return false;
        return path.starts_with(one.path);
    });
    return folder == folders_.end() ? nullptr : &*folder;
}

std::optional<Answer> Pipeline::checkMethod(const Exchange& exchange) const {
    if (methodsOf(exchange).has(exchange.head().method)) return std::nullopt;
    return refusals::methodNotAllowed(exchange);
}

std::optional<Answer> Pipeline::checkBody(const Exchange& exchange) const {
    const RequestHead& head = exchange.head();
    const std::string_view expectation = head.field("Expect");
    if (!expectation.empty() && !ascii::equals(expectation, "100-continue"))
        return refusals::of(exchange, 417);
    if (mayHaveBody(head.method) && head.hasBody && !isBodyType(exchange)) return refusals::of(exchange, 415);
    return std::nullopt;
}

std::uint64_t Pipeline::bodyLimit(const Exchange& exchange) const {
    if (!exchange.page || !mayHaveBody(exchange.head().method)) return 0;
    return exchange.page->bodyLimit.value_or(setting_.limits.body);
}

BodyReception Pipeline::receive(const Exchange& exchange) const {
    const RequestHead& head = exchange.head();
    const bool isElsewhere =
        exchange.page && exchange.page->receiver && head.hasBody && mayHaveBody(head.method);
    if (!isElsewhere) return {.limit = bodyLimit(exchange)};
    return exchange.page->receiver(exchange.target.path,
                                   [&head](std::string_view name) { return head.field(name); });
}

/// On a worker, as it takes milliseconds; once for each version of what is encoded. When too much waits already, the bytes go
/// as they are.
std::optional<Answer> Pipeline::encode(const std::shared_ptr<Exchange>& exchange, Answer plain,
                                       std::function<Answer()> encoded) const {
    const bool isTaken = setting_.workers.submit(
        [exchange = exchange, encoded = std::move(encoded)]() mutable {
            Exchange& one = *exchange;
            Answer answer = encoded();
            one.finish(std::move(exchange), std::move(answer));
        },
        exchange->origin);
    if (isTaken) return std::nullopt;
    return plain;
}

std::optional<Answer> Pipeline::answerFile(const std::shared_ptr<Exchange>& exchange,
                                           StaticFiles& files) const {
    try {
        FileReply reply = files.answer(exchange->target.path, exchange->head());
        if (auto* work = std::get_if<FileToEncode>(&reply)) {
            Answer plain = work->file.answer({});
            return encode(exchange, std::move(plain), [work = std::move(*work), &encoded = setting_.encoded] {
                return work.answer(encoded);
            });
        }
        return std::get<Answer>(std::move(reply));
    } catch (const OutOfDescriptors&) {
        return outOfDescriptors(setting_.log);
    }
}

Looks Pipeline::looksOf(boost::asio::io_context& loop) const {
    return setting_.pages.looksOf(loop);
}

bool Pipeline::hasSession(const Exchange& exchange) const {
    const std::string_view cookies = exchange.head().field("Cookie");
    return !cookies.empty() &&
           setting_.sessions.isKnown(setting_.cookie.token(cookies, setting_.isSecure(exchange)));
}

std::optional<Answer> Pipeline::answerKept(const std::shared_ptr<Exchange>& exchange,
                                           const PageCache::Page& page) const {
    if (page->isKnownTo(exchange->head())) return page->notModified();
    const Coding coding = page->codingFor(exchange->head());
    if (page->hasForm(coding)) return page->answer(coding);
    return encode(exchange, page->answer(Coding::Identity), [page, coding] { return page->answer(coding); });
}

std::optional<Answer> Pipeline::answer(const std::shared_ptr<Exchange>& exchange, StaticFiles* files,
                                       Looks* looks) const {
    const bool isOfInterface = interface_ && isBelow(exchange->target.path, interfaceFolder);
    if (!exchange->page && isOfInterface)
        return interfaceAnswer(*interface_, exchange->target.path, exchange->head());
    if (!exchange->page && !exchange->guard) {
        // A style sheet that is fetched with the cookie shows that the visitor keeps cookies.
        const std::string_view cookies = exchange->head().field("Cookie");
        if (!cookies.empty())
            setting_.sessions.touch(setting_.cookie.token(cookies, setting_.isSecure(*exchange)));
        return files ? answerFile(exchange, *files) : errorPages::page(404);
    }
    if (hasForm(*exchange) && formFields(exchange->body()) > setting_.limits.formFields)
        return refusals::of(*exchange, 413);
    const bool mayShare = looks && setting_.pages.mayShare(*exchange) && !hasSession(*exchange);
    return mayShare ? answerShared(exchange, *looks) : makeAnew(exchange);
}

std::optional<Answer> Pipeline::makeAnew(const std::shared_ptr<Exchange>& exchange) const {
    if (std::make_shared<PageJob>(setting_, exchange)->start()) return std::nullopt;
    return refusals::of(*exchange, 503);
}

std::optional<Answer> Pipeline::answerShared(const std::shared_ptr<Exchange>& exchange, Looks& looks) const {
    // Looks begin to watch although nothing is kept: what can be kept is known by those who watch.
    const bool mustAsk = looks.mustAsk();
    const PageCache::Page page = setting_.pages.find(*exchange);
    if (!page) return makeAnew(exchange);
    if (!mustAsk) return answerFound(exchange, page, looks.now());
    looks.ask([this, exchange, page](const Look& look) {
        auto answer = answerFound(exchange, page, look);
        if (answer) exchange->finish(exchange, std::move(*answer));
    });
    return std::nullopt;
}

std::optional<Answer> Pipeline::answerFound(const std::shared_ptr<Exchange>& exchange,
                                            const PageCache::Page& page, const Look& look) const {
    return setting_.pages.serves(*exchange, page, look) ? answerKept(exchange, page) : makeAnew(exchange);
}

}  // namespace torvex
