#include "host/PageJob.h"

#include <array>

#include "host/FailureReport.h"
#include "host/LineLog.h"
#include "host/Shortage.h"
#include "host/files/PublicFile.h"
#include "host/http/ContentCoding.h"
#include "host/http/ErrorPages.h"
#include "host/http/Refusal.h"
#include "host/http/RequestConversion.h"
#include "host/http/ResponseConversion.h"
#include "installation/ScriptTimeouts.h"
#include "pages/NoStore.h"
#include "pages/PageRoute.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"

namespace torvex {

namespace {

constexpr std::array quickestFirst{Coding::Zstd, Coding::Brotli, Coding::Gzip};

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
        Response response;
        HostContext context{setting_.services, request, response, lease_->session()};
        context.begin = Deadline::Clock::now();
        context.scriptTimeout = normalTimeout(context);
        return exchange_->guard ? runGuard(context) : runPage(context);
    } catch (const OutOfDescriptors&) {
        return outOfDescriptors(setting_.log);
    } catch (const std::exception& error) {
        return failed(error.what(), &error);
    } catch (...) {
        return failed("unknown error", nullptr);
    }
}

void PageJob::openSession(HostContext& context) {
    if (lease_->isNew()) {
        setting_.startSession(context);
        lease_->keepAsDefaults();
    }
    isSessionReady_ = true;
}

Answer PageJob::runPage(HostContext& context) {
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
    const bool isOpen = !exchange_->page->isPersonal || (exchange_->page->isOpen && !isPersonal);
    const bool compresses = setting_.compresses && isOpen && isTextType(context.response.contentType);
    Answer answer = toAnswer(std::move(context.response));
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
