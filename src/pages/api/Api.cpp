#include "pages/api/Api.h"

#include "pages/SameSite.h"
#include "pages/Token.h"
#include "pages/api/Answers.h"
#include "pages/api/Tokens.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

/// In a session that has come before: a cookie that was made up brings a new one each time.
struct Counted final : SessionObject {};
constexpr std::string_view countedKey = "torvex_api_counted";

/// Who comes again with a session is counted by it, everybody else by the address.
std::string callerOf(HostContext& host) {
    if (const auto token = tokenScope(host.session)) return "token " + std::to_string(token->tokenId);
    if (host.session.object(countedKey)) return host.session.id();
    host.session.setObject(countedKey, std::make_shared<Counted>());
    return host.request.serverVariable("remote_addr");
}

ProblemKind kindOf(int status) {
    switch (status) {
        case 400:
            return kind::notUnderstood;
        case 405:
            return kind::otherMethod;
        case 413:
            return kind::tooLarge;
        case 415:
            return kind::otherType;
        case 500:
            return kind::failed;
        case 503:
            return kind::busy;
        default:
            return {status, "not-answered", "The request can't be answered", 5016};
    }
}

Problem problemOf(const Refused& refused, const Words& words) {
    if (const auto* failure = dynamic_cast<const CallFailure*>(refused.failure)) return failure->problem;
    const ProblemKind kind = kindOf(refused.status);
    Problem made = Problem::of(kind);
    made.detail = words.sentence(words.languageFor(refused.languages), kind.label);
    return made;
}

using Answerer = void (*)(HostContext&, Api&);

void answerUnlessTooFast(HostContext& host, Api& api, Answerer answerer) {
    if (!isTooFast(host, api)) answerer(host, api);
}

PageHandler handler(const std::shared_ptr<Api>& api, Answerer answerer) {
    return [api, answerer](HostContext& host) {
        api->words.refresh(host);
        const bool isAnswered = answerInOwnSession(
            host, [&](HostContext& caller) { answerUnlessTooFast(caller, *api, answerer); });
        if (!isAnswered) answerUnlessTooFast(host, *api, answerBadToken);
    };
}

}  // namespace

RefusalHandler refusals(const std::shared_ptr<Api>& api) {
    return [api](const Refused& refused) {
        Problem problem = problemOf(refused, api->words);
        if (!refused.reference.empty()) {
            problem.detail = text::replaceAll(problem.detail, "{reference}", refused.reference);
            problem.more["reference"] = boost::json::string(refused.reference);
        }
        Response response;
        answer(response, problem);
        return response;
    };
}

bool isTooFast(HostContext& host, Api& api) {
    const auto wait =
        api.rates.take(callerOf(host), tokenScope(host.session) ? api.ofTokens : api.ofSessions);
    if (wait.count() == 0) return false;
    Problem problem = problemFor(host, api, kind::tooFast, {{"seconds", std::to_string(wait.count())}});
    problem.wait = wait;
    answer(host.response, problem);
    return true;
}

bool isFromOwnDocument(const HostContext& host) {
    if (tokenScope(host.session)) return true;  // no browser sends one by itself
    return pageToken::isOf(host.session, host.request.serverVariable(pageToken::variable)) &&
           comesFromOwnPages(host);
}

void answerBadToken(HostContext& host, Api& api) {
    host.response.addHeader("WWW-Authenticate", "Bearer");
    answer(host.response, problemFor(host, api, kind::badToken));
}

Problem problemFor(const HostContext& host, const Api& api, const ProblemKind& kind,
                   std::initializer_list<Place> places) {
    Problem made = Problem::of(kind);
    made.detail = api.words.sentence(languageOf(host, api.words), kind.label, places);
    return made;
}

PageRoute route(const std::shared_ptr<Api>& api, std::string_view path, Answerer answerer,
                MethodSet methods) {
    PageRoute made{std::string(folder) + std::string(path), handler(api, answerer), methods};
    made.bodyTypes = {"application/json"};
    made.takesTokens = true;
    made.refusal = refusals(api);
    return made;
}

std::vector<PageRoute> routes(const std::shared_ptr<Api>& api) {
    PageRoute calls = route(api, "", answerCall, methods::any);
    calls.reach = PageRoute::Reach::Below;
    PageRoute labels = route(api, "labels", answerLabels, methods::page);
    labels.isPersonal = false;
    PageRoute description = route(api, "openapi.json", answerDescription, methods::page);
    description.isPersonal = false;
    PageRoute files = route(api, "export/", answerExport, methods::page);
    files.reach = PageRoute::Reach::Below;
    return {std::move(calls),
            std::move(files),
            std::move(labels),
            std::move(description),
            route(api, "batch", answerBatch, {Method::Post}),
            route(api, "session", answerSession, methods::page)};
}

}  // namespace torvex::api
