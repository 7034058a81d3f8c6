#include "host/PageJob.h"

#include <array>

#include "host/FailureReport.h"
#include "host/LineLog.h"
#include "host/Shortage.h"
#include "host/cache/Recording.h"
#include "host/cache/StrangerHits.h"
#include "host/files/PublicFile.h"
#include "host/http/ContentCoding.h"
#include "host/http/ErrorPages.h"
#include "host/http/Refusal.h"
#include "host/http/RequestConversion.h"
#include "host/http/ResponseConversion.h"
#include "installation/ScriptTimeouts.h"
#include "pages/NoStore.h"
#include "pages/PageRoute.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Whether all who bring no session may have the answer: it leaves nothing behind with this visitor and says nothing
/// that only holds now.
bool isForAll(const HostContext& context) {
    const Session& session = context.session;
    const Response& response = context.response;
    const bool isMarked =
        session.holdsSomething() || session.isIdKnown() || session.isAbandoned() || session.wantsNewToken();
    const bool isPage = response.status == 200 || (response.status >= 301 && response.status <= 308);
    return !isMarked && isPage && !response.expires && !text::contains(response.cacheControl, "no-store");
}

}  // namespace

bool PageJob::start() {
    const std::string_view token = bringsToken() ? std::string_view()
                                                 : setting_.cookie.token(exchange_->head().field("Cookie"),
                                                                         setting_.isSecure(*exchange_));
    return setting_.sessions.enter(token, exchange_->origin, [job = shared_from_this()](SessionLease lease) {
        job->begin(std::move(lease));
    });
}

bool PageJob::bringsToken() const {
    return exchange_->page && exchange_->page->takesTokens &&
           !exchange_->head().field("Authorization").empty();
}

void PageJob::begin(SessionLease lease) {
    lease_.emplace(std::move(lease));
    if (setting_.workers.submit([job = shared_from_this()] { job->run(); }, exchange_->origin)) return;
    lease_.reset();
    Exchange& exchange = *exchange_;
    Answer answer = refusals::of(exchange, 503);
    exchange.finish(std::move(exchange_), std::move(answer));
}

void PageJob::run() {
    Answer answer = produce();
    if (bringsToken()) lease_->session().abandon();
    if (isSessionReady_) {
        if (const auto token = lease_->finish()) addCookie(answer, *token);
    }
    lease_.reset();
    Exchange& exchange = *exchange_;
    exchange.finish(std::move(exchange_), std::move(answer));
}

Answer PageJob::produce() {
    try {
        Request request = toRequest(*exchange_);
        if (!lease_->isNew()) return runWith(setting_.services, request);
        if (setting_.pages.mayShare(*exchange_)) return runShared(request);
        StrangerHits hits(setting_.services.hits, setting_.pages.strangers(), *exchange_);
        return runWith(setting_.services.with(hits), request);
    } catch (const OutOfDescriptors&) {
        return outOfDescriptors(setting_.log);
    } catch (const std::exception& error) {
        return failed(error.what(), &error);
    } catch (...) {
        return failed("unknown error", nullptr);
    }
}

Answer PageJob::runWith(const Services& services, Request& request) {
    Response response;
    HostContext context{services, request, response, lease_->session()};
    limitTime(context);
    return exchange_->guard ? runGuard(context) : runPage(context);
}

/// Noting what the answer is made of, so that others can have it.
Answer PageJob::runShared(Request& request) {
    const std::uint64_t changes = setting_.services.application.changes();
    Recording recording(setting_.services);
    request.noteQuestions(recording.questions());
    Response response;
    HostContext context{recording.services(), request, response, lease_->session()};
    limitTime(context);
    const bool isPersonal = runHandler(context);
    setting_.pages.count(*exchange_, recording.views());
    const bool compresses = mayCompress(response, isPersonal);
    auto made = isPersonal || !isForAll(context) ? std::nullopt : recording.ingredients();
    if (!made) return finished(std::move(response), compresses);
    if (response.cacheControl.empty()) response.cacheControl = "no-cache";
    made->conditions = response.takeConditions();
    const auto page = setting_.pages.keep(*exchange_, std::move(*made), changes,
                                          {toAnswer(std::move(response)), recording.views(), compresses});
    return page->isKnownTo(exchange_->head()) ? page->notModified() : page->firstAnswer(exchange_->head());
}

void PageJob::openSession(HostContext& context) {
    if (lease_->isNew()) {
        setting_.startSession(context);
        lease_->keepAsDefaults();
    }
    isSessionReady_ = true;
}

void PageJob::limitTime(HostContext& context) {
    context.begin = Deadline::Clock::now();
    context.scriptTimeout = normalTimeout(context);
}

/// The result says whether the answer is about somebody who is, or was, logged in.
bool PageJob::runHandler(HostContext& context) {
    bool isPersonal = false;
    try {
        openSession(context);
        isPersonal = holdsLogin(context.session);
        exchange_->page->handler(context);
    } catch (const ResponseEnded&) {
        isSessionReady_ = true;
    }
    isPersonal = isPersonal || holdsLogin(context.session);
    if (isPersonal && exchange_->page->isPersonal) forbidStoring(context.response);
    return isPersonal;
}

Answer PageJob::runPage(HostContext& context) {
    const bool isPersonal = runHandler(context);
    const bool compresses = mayCompress(context.response, isPersonal);
    return finished(std::move(context.response), compresses);
}

bool PageJob::mayCompress(const Response& response, bool isPersonal) const {
    const bool isOpen = !exchange_->page->isPersonal || (exchange_->page->isOpen && !isPersonal);
    return setting_.compresses && isOpen && isTextType(response.contentType);
}

Answer PageJob::finished(Response response, bool compresses) const {
    Answer answer = toAnswer(std::move(response));
    return compresses ? compressed(std::move(answer)) : answer;
}

/// A text that everybody may know: of a secret beside words that a stranger has chosen the length would tell.
Answer PageJob::compressed(Answer answer) const {
    auto* body = std::get_if<std::string>(&answer.body);
    if (!answer.hasLength || !body || body->size() < leastEncoded) return answer;
    answer.addField("Vary", "Accept-Encoding");
    const Coding coding = preferredCoding(exchange_->head(), quickestFirst);
    if (coding == Coding::Identity) return answer;
    answer.body = encodedAs(coding, *body, Effort::EachTime);
    answer.addField("Content-Encoding", codingName(coding));
    return answer;
}

Answer PageJob::runGuard(HostContext& context) {
    bool mayRead = false;
    try {
        openSession(context);
        mayRead = exchange_->guard->mayRead(context, exchange_->target.path);
    } catch (const ResponseEnded&) {
        isSessionReady_ = true;
    }
    const bool isPersonal = holdsLogin(context.session);
    if (mayRead)
        return fileAnswer(*setting_.root, exchange_->target.path, exchange_->head(),
                          isPersonal ? setting_.membersFiles : setting_.guardedFiles);
    if (!context.response.isTouched()) return errorPages::page(403);
    if (isPersonal) forbidStoring(context.response);
    return toAnswer(std::move(context.response));
}

Answer PageJob::failed(std::string_view description, const std::exception* error) {
    const FailureReport report(*exchange_, lease_->session(), description);
    report.write(setting_.log);
    return refusals::failure(*exchange_, report.reference(), error);
}

void PageJob::addCookie(Answer& answer, const SessionToken& token) const {
    answer.addField("Set-Cookie", SessionCookie::field(token.text(), setting_.isSecure(*exchange_)));
}

}  // namespace torvex
