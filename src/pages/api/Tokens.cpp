#include "pages/api/Tokens.h"

#include "accounts/AccessFilter.h"
#include "accounts/LoginSettings.h"
#include "accounts/ProgramTokens.h"
#include "installation/Setup.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

constexpr std::string_view scopeKey = "torvex_token_scope";
constexpr std::string_view scheme = "Bearer ";

std::string authorization(const Request& request) {
    return request.serverVariable("http_authorization");
}

/// The filter of the installation counts for programs as for authors.
bool isLetIn(const HostContext& host, std::string address) {
    const std::string filter(text::trim(host.application.text(applicationKey::accessFilter)));
    if (host.application.isTrue(applicationKey::accessFilterExact))
        return passesExactAccessFilter(filter, address);
    return passesAccessFilter(filter, address);
}

Session sessionFor(HostContext& host, db::Connection& connection, const ProgramToken& token) {
    Session session(programSession(token.loginId));
    HostContext own{static_cast<const Services&>(host), host.request, host.response, session};
    Setup(own).initSession();
    session.set(sessionKey::authorLoginId, token.loginId);
    session.set(sessionKey::authorName, token.username);
    session.set(sessionKey::authorFullname, token.fullname);
    session.set(sessionKey::authorPassword, "");
    takeOverSettings(own, connection, token.loginId);
    session.setObject(scopeKey, std::make_shared<TokenScope>(token.tokenId, token.operations));
    return session;
}

std::optional<Session> sessionOfToken(HostContext& host) {
    const std::string field = authorization(host.request);
    const std::string_view shown = text::trim(std::string_view(field).substr(scheme.size()));
    const std::string address(text::trim(host.request.serverVariable("remote_addr")));
    if (!isLetIn(host, address)) return std::nullopt;
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const auto token = useToken(*connection, shown, address, host.clock.now());
    if (!token) return std::nullopt;
    return sessionFor(host, *connection, *token);
}

}  // namespace

std::shared_ptr<const TokenScope> tokenScope(const Session& session) {
    return std::dynamic_pointer_cast<const TokenScope>(session.object(scopeKey));
}

bool answerInOwnSession(HostContext& host, const PageHandler& answer) {
    if (!text::startsWith(authorization(host.request), scheme)) {
        answer(host);
        return true;
    }
    std::optional<Session> session = sessionOfToken(host);
    if (!session) return false;
    HostContext own{static_cast<const Services&>(host), host.request, host.response, *session};
    own.scriptTimeout = host.scriptTimeout;
    own.begin = host.begin;
    answer(own);
    return true;
}

bool coversReading(const Session& session) {
    const auto scope = tokenScope(session);
    return !scope || text::equals(text::trim(scope->operations), readsOnly);
}

bool isCovered(const Session& session, std::string_view className, const operations::Operation& operation) {
    const auto scope = tokenScope(session);
    if (!scope) return true;
    if (text::equals(text::trim(scope->operations), readsOnly))
        return operation.effect == operations::Effect::Reads;
    return coversOperation(scope->operations, className, operation.name);
}

bool isCovered(const Session& session, std::string_view className) {
    const auto scope = tokenScope(session);
    return !scope || coversClass(scope->operations, className);
}

}  // namespace torvex::api
