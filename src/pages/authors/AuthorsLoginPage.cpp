#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/LoginSettings.h"
#include "accounts/Logins.h"
#include "accounts/PendingLogin.h"
#include "operations/calls/CallRun.h"
#include "pages/NoStore.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/Token.h"
#include "pages/authors/AuthorsDocument.h"
#include "pages/authors/AuthorsPages.h"
#include "pages/authors/HeldLogin.h"
#include "pages/authors/InterfaceLanguage.h"
#include "pages/authors/Navigation.h"
#include "pages/authors/Policies.h"
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
constexpr double wrongCodeLabel = 5832;
constexpr double tooLateLabel = 5833;
constexpr double codeLabel = 5841;
constexpr double codeHintLabel = 5842;

const std::vector<double> labels{introLabel,    wrongLabel,     addressLabel,  capsLockLabel, waitLabel,
                                 waitOverLabel, loggedOutLabel, comeBackLabel, staleLabel,    wrongCodeLabel,
                                 tooLateLabel,  codeLabel,      codeHintLabel};

constexpr int loggedIn = 0;
constexpr int addressRefused = 2;
constexpr int heldElsewhere = 3;
constexpr int needsCode = 4;
constexpr int wrongCode = 5;

enum class Form { Password, Code, TakeOver };

/// What stands above the form, and which form it is.
struct Notice {
    int status = 200;
    double label = 0;  ///< 0 for none
    std::chrono::seconds wait{0};
    std::string held{};  ///< in place of a label: who has the login
    Form form = Form::Password;
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
    page.showBlock("fields", notice.form == Form::Password);
    page.showBlock("code", notice.form == Form::Code);
    page.showBlock("takeOver", notice.form == Form::TakeOver);
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
    const double intro = comesBack ? comeBackLabel : introLabel;
    page.fill("intro", notice.form == Form::Code ? codeLabel : intro);
    page.fill("token", pageToken::of(host.session));
    page.fill("to", visit.target);
    page.fill("chosenLang", visit.chosen);
    page.fill("username", text::first(username, 50));
    page.fillHtml(username.empty() ? "focusName" : "focusPassword", " autofocus");
    page.fill("capsLock", capsLockLabel);
    page.fill("codeHint", codeHintLabel);
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

Notice noticeOf(Visit& visit, int code, const std::string& username) {
    if (code == addressRefused) return {.status = 403, .label = addressLabel};
    if (code == needsCode) return {.form = Form::Code};
    if (code == wrongCode) return {.status = 403, .label = wrongCodeLabel, .form = Form::Code};
    if (code != heldElsewhere) return {.status = 403, .label = wrongLabel};
    return {.status = 409,
            .held = holderSentence(visit.host, visit.connection, visit.language(), username),
            .form = Form::TakeOver};
}

/// The operation's answer, past the gate, which slows down who guesses; nothing when the request is answered by it.
std::optional<int> answerOf(Visit& visit, const AuthorsShared& shared, const operations::Call& call,
                            Form form) {
    operations::CallRun run(shared.classes, visit.host, operations::Network{shared.throttle});
    const auto outcome = run.run(call);
    if (outcome.verdict.kind == operations::Verdict::Kind::Wait) {
        draw(visit, {.status = 429, .label = waitLabel, .wait = outcome.verdict.wait, .form = form});
        return std::nullopt;
    }
    const int code = outcome.verdict.isAllowed() ? static_cast<int>(outcome.result.toNumber()) : -1;
    if (code != loggedIn) return code;
    enter(visit);
    return std::nullopt;
}

void tryLogin(Visit& visit, const AuthorsShared& shared, const std::string& onto,
              const std::string& operation, const TypedLogin& typed) {
    const operations::Call call{
        onto, operation, {{"username", typed.username}, {"password", typed.password}}};
    const auto code = answerOf(visit, shared, call, Form::Password);
    if (!code) return;
    if (*code == heldElsewhere) keepTyped(visit.host, typed);
    draw(visit, noticeOf(visit, *code, typed.username));
}

/// The second step of whoever gave the right password, which is kept nowhere.
void tryCode(Visit& visit, const AuthorsShared& shared, const std::string& username) {
    const Request& request = visit.host.request;
    const operations::Call call{"desk",
                                "proveSecond",
                                {{"username", username},
                                 {"code", request.formField("code")},
                                 {"takeOver", request.hasFormField("takeOver")}}};
    const auto code = answerOf(visit, shared, call, Form::Code);
    if (!code) return;
    if (*code == static_cast<int>(LoginCode::Unknown))
        return draw(visit, {.status = 403, .label = tooLateLabel});
    draw(visit, noticeOf(visit, *code, username));
}

void answerForm(Visit& visit, const AuthorsShared& shared) {
    const Request& request = visit.host.request;
    const auto typed = takeTyped(visit.host);
    if (!comesFromOwnPages(visit.host) || !pageToken::isOf(visit.host.session, request.formField("token")))
        return draw(visit, {.status = 403, .label = staleLabel});
    const bool takesOver = request.hasFormField("takeOver");
    if (takesOver && typed) return tryLogin(visit, shared, "desk", "takeOver", *typed);
    if (takesOver || request.hasFormField("code")) {
        const auto pending = pendingLogins.get(visit.host);
        if (pending) return tryCode(visit, shared, pending->proof.username);
        return draw(visit, {.status = 403, .label = takesOver ? wrongLabel : tooLateLabel});
    }
    const std::string username(text::trim(request.formField("username")));
    const std::string password = request.formField("password");
    // The operation without arguments verifies the session's own login, which nobody asked for here.
    if (username.empty() || text::trim(password).empty())
        return draw(visit, {.status = 403, .label = wrongLabel});
    tryLogin(visit, shared, "cManager", "login", {username, password});
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
