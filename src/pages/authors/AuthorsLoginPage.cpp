#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/LoginSettings.h"
#include "accounts/Logins.h"
#include "operations/calls/CallRun.h"
#include "pages/NoStore.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/authors/AuthorsDocument.h"
#include "pages/authors/AuthorsPages.h"
#include "pages/authors/HeldLogin.h"
#include "pages/authors/InterfaceLanguage.h"
#include "pages/authors/Navigation.h"
#include "pages/authors/Policies.h"
#include "pages/authors/Token.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr double introLabel = 4001;
constexpr double wrongLabel = 4002;
constexpr double addressLabel = 4003;
constexpr double capsLockLabel = 4900;
constexpr double waitLabel = 4904;
constexpr double waitOverLabel = 4905;
constexpr double loggedOutLabel = 4906;
constexpr double comeBackLabel = 4907;
constexpr double staleLabel = 4908;

const std::vector<double> labels{introLabel,    wrongLabel,     addressLabel,  capsLockLabel, waitLabel,
                                 waitOverLabel, loggedOutLabel, comeBackLabel, staleLabel};

constexpr int loggedIn = 0;
constexpr int addressRefused = 2;
constexpr int heldElsewhere = 3;

/// What stands above the form.
struct Notice {
    int status = 200;
    double label = 0;  ///< 0 for none
    std::chrono::seconds wait{0};
    std::string held{};  ///< in place of a label: who has the login
};

struct Visit {
    HostContext& host;
    db::Connection& connection;
    std::vector<InterfaceLanguage> languages;
    std::string chosen;  ///< the language that was asked for by name
    std::string target;

    std::string language() const { return languageFor(host, languages, chosen); }
};

std::string addressOf(const Visit& visit, std::string_view language) {
    std::string address = fmt::format("/torvex/login?lang={}", language);
    if (visit.target != safeTarget({})) address += "&to=" + text::urlEncode(visit.target);
    return address;
}

/// Links and no list: they work without a script.
std::string languageLinks(const Visit& visit, std::string_view present) {
    std::string links;
    for (const auto& [code, name] : visit.languages) {
        const bool isPresent = code == present;
        links += fmt::format(R"(<a href="{}" lang="{}" hreflang="{}"{}>{}</a>)",
                             text::htmlEncode(addressOf(visit, code)), text::htmlEncode(code),
                             text::htmlEncode(code), isPresent ? R"( aria-current="true")" : "",
                             text::htmlEncode(name));
    }
    return links;
}

void showNotice(AuthorsDocument& page, const Notice& notice) {
    const bool isGood = notice.label == loggedOutLabel;
    const bool isRefused = !notice.held.empty() || (notice.label != 0 && !isGood);
    page.showBlock("status", isGood);
    page.showBlock("refusal", isRefused);
    page.showBlock("fields", notice.held.empty());
    page.showBlock("takeOver", !notice.held.empty());
    if (isGood) page.fill("status", notice.label);
    const std::string seconds = std::to_string(notice.wait.count());
    if (!notice.held.empty()) {
        page.fill("refusal", notice.held);
    } else if (isRefused) {
        page.fill("refusal", filled(page.word(notice.label), "seconds", seconds));
    }
    page.fill("tone", notice.held.empty() ? "" : " warn");
    page.fill("seconds", seconds);
    page.fill("waitSentence", waitLabel);
    page.fill("waitOver", waitOverLabel);
}

void draw(Visit& visit, const Notice& notice) {
    HostContext& host = visit.host;
    AuthorsDocument page(host, visit.connection, visit.language(), "login.html", labels);
    const std::string username(text::trim(host.request.formField("username")));
    const bool comesBack = visit.target != safeTarget({});
    showNotice(page, notice);
    page.fill("intro", comesBack ? comeBackLabel : introLabel);
    page.fill("token", pageToken::of(host.session));
    page.fill("to", visit.target);
    page.fill("chosenLang", visit.chosen);
    page.fill("username", text::first(username, 50));
    page.fillHtml(username.empty() ? "focusName" : "focusPassword", " autofocus");
    page.fill("capsLock", capsLockLabel);
    page.fill("again", addressOf(visit, page.language()));
    page.showBlock("languages", visit.languages.size() > 1);
    page.fillHtml("languages", languageLinks(visit, page.language()));
    host.response.status = notice.status;
    if (notice.wait.count() > 0) host.response.addHeader("Retry-After", std::to_string(notice.wait.count()));
    addDoorPolicy(host.response);
    host.response.write(page.take());
}

void enter(Visit& visit) {
    // Who chose a language at the door works in it this time, whatever her settings say.
    pageToken::renew(visit.host.session);
    if (!visit.chosen.empty()) useInterface(visit.host, visit.connection, visit.chosen);
    visit.host.response.redirect(visit.target);
}

Notice noticeOf(Visit& visit, int code, const std::string& username, const std::string& password) {
    if (code == addressRefused) return {.status = 403, .label = addressLabel};
    if (code != heldElsewhere) return {.status = 403, .label = wrongLabel};
    keepTyped(visit.host, {username, password});
    return {.status = 409, .held = holderSentence(visit.host, visit.connection, visit.language(), username)};
}

/// The operation that was asked for, past the gate, which slows down who guesses.
void tryLogin(Visit& visit, const AuthorsShared& shared, const std::string& onto,
              const std::string& operation, const std::string& username, const std::string& password) {
    operations::CallRun run(shared.classes, visit.host, operations::Network{shared.throttle});
    const auto outcome =
        run.run(operations::Call{onto, operation, {{"username", username}, {"password", password}}});
    if (outcome.verdict.kind == operations::Verdict::Kind::Wait) {
        return draw(visit, {.status = 429, .label = waitLabel, .wait = outcome.verdict.wait});
    }
    const int code = outcome.verdict.isAllowed() ? static_cast<int>(outcome.result.toNumber()) : -1;
    if (code == loggedIn) return enter(visit);
    draw(visit, noticeOf(visit, code, username, password));
}

void answerForm(Visit& visit, const AuthorsShared& shared) {
    const Request& request = visit.host.request;
    const auto typed = takeTyped(visit.host);
    if (!comesFromOwnPages(visit.host) || !pageToken::isOf(visit.host.session, request.formField("token")))
        return draw(visit, {.status = 403, .label = staleLabel});
    if (request.hasFormField("takeOver") && typed)
        return tryLogin(visit, shared, "desk", "takeOver", typed->username, typed->password);
    const std::string username(text::trim(request.formField("username")));
    const std::string password = request.formField("password");
    // The operation without arguments verifies the session's own login, which nobody asked for here.
    if (username.empty() || text::trim(password).empty())
        return draw(visit, {.status = 403, .label = wrongLabel});
    tryLogin(visit, shared, "cManager", "login", username, password);
}

}  // namespace

void authorsLoginPage(HostContext& host, const AuthorsShared& shared) {
    forbidStoring(host.response);
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const bool isForm = isPosted(host);
    const auto given = [&](const char* name) {
        return isForm ? host.request.formField(name) : host.request.queryString(name);
    };
    auto languages = interfaceLanguages(*connection);
    const std::string chosen = knownCode(languages, given("lang"));
    Visit visit{host, *connection, std::move(languages), chosen, safeTarget(given("to"))};
    if (isForm) return answerForm(visit, shared);
    if (ownsItsLogin(*connection, actorOf(host))) return host.response.redirect(visit.target);
    const bool isOut = !host.request.queryString("out").empty();
    draw(visit, {.label = isOut ? loggedOutLabel : 0});
}

}  // namespace torvex
