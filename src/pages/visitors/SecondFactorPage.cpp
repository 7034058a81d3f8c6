#include <optional>

#include "accounts/BegunFactor.h"
#include "accounts/DoorLog.h"
#include "accounts/LoginAttempt.h"
#include "accounts/SecondFactor.h"
#include "accounts/TimeCode.h"
#include "accounts/VisitorLogin.h"
#include "delivery/Access.h"
#include "delivery/PageAssembly.h"
#include "delivery/SecondFactorAddress.h"
#include "delivery/Users.h"
#include "delivery/cServer.h"
#include "modules/SiteModules.h"
#include "pages/ContentPolicy.h"
#include "pages/NoStore.h"
#include "pages/Pages.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/Token.h"
#include "pages/visitors/MessagePage.h"
#include "pages/visitors/SecondFactorView.h"
#include "pages/visitors/SitePage.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/Vocabulary.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view tag = "torvex_secondFactor";
/// A picture of a longer address would be hard to read.
constexpr std::size_t longestIssuer = 40;
constexpr std::size_t dayLength = 10;

/// Of a page of the server's own.
constexpr std::string_view formStyle = R"(
button:focus-visible{outline:3px solid var(--accent);outline-offset:3px}
h2{margin:2rem 0 .5rem;font-size:1.2rem}form{margin:0 0 1.5rem}
label{display:block;margin:0 0 1rem;font-weight:600}
input{display:block;width:100%;margin-top:.3rem;padding:.6rem .75rem;border:1px solid var(--soft);border-radius:.5rem;
background:var(--card);color:var(--ink);font:inherit}
button{padding:.6rem 1.2rem;border:0;border-radius:.5rem;background:var(--accent);color:var(--card);font:inherit;font-weight:600}
.alert,.done{padding:.75rem 1rem;border-left:.3rem solid var(--accent)}.alert{border-color:#b3261e}
.qr-picture{display:block;width:15rem;max-width:100%;height:auto;margin:0 0 1rem;border-radius:.5rem}
.factor-secret{overflow-wrap:anywhere}.factor-codes{columns:2;padding:0;list-style:none}
@media (max-width:26rem){.factor-codes{columns:1}}
@media print{form,.factor-on{display:none}})";

/// Whoever is at the page: logged in, or on her way.
struct Person {
    VisitorIdentity visitor;
    bool waits = false;
    std::string address{};  ///< where she is on her way to

    FactorOwner owner() const { return ofVisitor(visitor.userId); }
};

std::optional<Person> personAt(const HostContext& host, db::Connection& connection) {
    if (auto pending = pendingVisitor(host)) return Person{pending->visitor, true, pending->address};
    const Visitor visitor = visitorOf(host);
    if (visitor.username.empty()) return std::nullopt;
    const int userId = static_cast<int>(userIdOf(connection, visitor));
    if (userId == 0) return std::nullopt;
    return Person{{userId, visitor.username, visitor.password}};
}

/// One request for the page.
class Visit {
  public:
    Visit(HostContext& host, db::Connection& connection, const PolicyReports& reports,
          GuessThrottle& throttle)
        : host_(host),
          connection_(connection),
          reports_(reports),
          throttle_(throttle),
          server_(host, &modules_),
          page_(identify(connection, askedPage())) {
        server_.connect(connection);
    }

    void run() {
        forbidStoring(host_.response);
        using Page = SecondFactorView::Page;
        if (!hasExtranet(host_) || visitorFactors(host_) == VisitorFactors::Off)
            return refuse(404, Page::None);
        person_ = personAt(host_, connection_);
        if (!person_)
            return refuse(isPosted(host_) ? 403 : 200, Page::LogIn,
                          isPosted(host_) ? factorWord::tookTooLong : 0);
        if (!isPosted(host_)) return show(present());
        const std::string token = host_.request.formField(factorField::token);
        if (!comesFromOwnPages(host_) || !pageToken::isOf(host_.session, token, pageToken::Side::Visitors))
            return showAlert(factorWord::formTooOld, 403);
        take();
    }

  private:
    std::string askedPage() const {
        const std::string asked = host_.request.queryString("pageId");
        return text::trim(asked).empty() ? host_.application.text(applicationKey::defaultPageId) : asked;
    }

    // ---- What was posted ----

    void take() {
        LoginAttempt attempt(throttle_, LoginAttempt::Kind::Visitor,
                             host_.request.serverVariable("remote_addr"), person_->visitor.username);
        if (const auto wait = attempt.begin(); wait.count() > 0) return tellToWait(wait);
        const bool hasFactor = secondFactorOf(connection_, person_->owner()).has_value();
        if (!hasFactor) return enrol(attempt);
        if (person_->waits) return letIn(attempt);
        if (host_.request.formField(factorField::action) == factorAction::drop) return drop(attempt);
        renew(attempt);
    }

    void tellToWait(std::chrono::seconds wait) {
        logEarlyTry(host_);
        host_.response.addHeader("Retry-After", std::to_string(wait.count()));
        SecondFactorView view = present();
        view.wait = std::to_string(wait.count());
        view.alert = factorWord::tooMany;
        host_.response.status = 429;
        show(view);
    }

    std::string typed(const char* field) const { return host_.request.formField(field); }

    void letIn(LoginAttempt& attempt) {
        const ShownCode shown = showVisitorCode(host_, typed(factorField::code));
        if (shown == ShownCode::LetIn) {
            attempt.succeeded();
            return host_.response.redirect(person_->address);
        }
        reportWrong(attempt);
        if (shown == ShownCode::Wrong) return showAlert(factorWord::wrongCode);
        person_.reset();
        refuse(403, SecondFactorView::Page::LogIn, factorWord::logInAgain);
    }

    void reportWrong(const LoginAttempt& attempt) {
        const std::string& name = person_->visitor.username;
        logFailedLogin(host_, LoginAttempt::Kind::Visitor, name, "wrong code");
        if (const auto wait = attempt.waitAfterwards(); wait.count() > 0)
            logLockOut(host_, LoginAttempt::Kind::Visitor, name, wait);
    }

    /// The secret is the visitor's own, so there is nothing to guess.
    void enrol(LoginAttempt& attempt) {
        attempt.takeBack();
        SecondFactorView view;
        const std::string code = typed(factorField::code);
        const FactorChange change = person_->waits ? enrolPendingVisitor(host_, code, view.codes)
                                                   : enrolVisitor(host_, person_->visitor, code, view.codes);
        if (change == FactorChange::Wrong) return showAlert(factorWord::wrongCode);
        if (change != FactorChange::Done) return showAlert(factorWord::beginAgain);
        if (!person_->waits) setFactorShown(host_);
        showCodes(std::move(view));
    }

    void renew(LoginAttempt& attempt) {
        SecondFactorView view;
        const FactorChange change =
            renewVisitorCodes(host_, person_->visitor, typed(factorField::code), view.codes);
        if (change == FactorChange::Done) attempt.succeeded();
        if (change != FactorChange::Done) return complain(attempt, change, factorWord::wrongCode);
        showCodes(std::move(view));
    }

    void drop(LoginAttempt& attempt) {
        const FactorChange change = dropVisitorFactor(host_, person_->visitor, typed(factorField::proof));
        if (change != FactorChange::Done) return complain(attempt, change, factorWord::wrongProof);
        attempt.succeeded();
        SecondFactorView view = present();
        view.notice = factorWord::isOff;
        show(view);
    }

    void complain(LoginAttempt& attempt, FactorChange change, double word) {
        if (change == FactorChange::Wrong) {
            reportWrong(attempt);
            return showAlert(word);
        }
        attempt.takeBack();
        showAlert(change == FactorChange::IsDemanded ? factorWord::staysDemanded : factorWord::formTooOld);
    }

    // ---- What is shown ----

    /// By what there is to do for the person.
    SecondFactorView present() {
        SecondFactorView view;
        view.isDemanded = visitorFactors(host_) == VisitorFactors::Demanded;
        view.lastsUntilLogin = person_->waits;
        view.goOn = comesFrom();
        const auto state = factorStateOf(connection_, person_->owner());
        if (!state) {
            view.page = SecondFactorView::Page::SetUp;
            view.secret = begunSecret(host_, person_->owner());
            if (view.secret.empty()) view.secret = beginFactor(host_, person_->owner());
            view.enrolment = enrolmentAddress(issuer(), person_->visitor.username, view.secret);
            return view;
        }
        view.page = person_->waits ? SecondFactorView::Page::Code : SecondFactorView::Page::Keep;
        view.since = state->since.toText().substr(0, dayLength);
        view.codesLeft = std::to_string(state->codesLeft);
        return view;
    }

    std::string issuer() {
        const std::string title = page_.isValid() ? server_.getWebsiteTitle(std::string(siteOf(page_.nodeId)),
                                                                            std::string(langOf(page_.nodeId)))
                                                  : std::string();
        const std::string name = title.empty() ? host_.request.serverVariable("http_host") : title;
        return std::string(text::first(name, longestIssuer));
    }

    void showAlert(double word, int status = 200) {
        SecondFactorView view = present();
        view.alert = word;
        host_.response.status = status;
        show(view);
    }

    void showCodes(SecondFactorView view) {
        view.page = SecondFactorView::Page::Codes;
        view.goOn = person_->waits ? person_->address : comesFrom();
        show(view);
    }

    void refuse(int status, SecondFactorView::Page page, double alert = 0) {
        SecondFactorView view;
        view.page = page;
        view.alert = alert;
        view.goOn = comesFrom();
        host_.response.status = status;
        show(view);
    }

    /// The page that she came from, mostly one with a login form; or the home page.
    std::string comesFrom() const {
        const std::string from = host_.request.queryString("from");
        const bool isPage = text::isNumeric(from) && text::toNumber(from) > 0;
        return isPage ? "/tvx.asp?pageId=" + text::fromNumber(text::toNumber(from)) : "/";
    }

    void show(SecondFactorView view) {
        view.token = pageToken::of(host_.session, pageToken::Side::Visitors);
        view.action = std::string(secondFactorFolder) + "?pageId=" + text::fromNumber(page_.pageId) +
                      "&from=" + text::urlEncode(host_.request.queryString("from"));
        const std::string language = page_.isValid() ? std::string(langOf(page_.nodeId)) : "en";
        const FactorWords words = vocabularyTexts(connection_, language, factorWords());
        const std::string html = secondFactorHtml(view, words);
        if (showInSite(html)) return;
        host_.response.addHeader("Content-Security-Policy", ownFormPolicy(host_));
        host_.response.write(ownDocument(language, words.at(factorWord::title), html, formStyle));
    }

    /// False when there is no application page, or its template has no place for it.
    bool showInSite(const std::string& html) {
        server_.setCodePage();
        const Visitor visitor = visitorOf(host_);
        server_.getPage(text::fromNumber(page_.pageId), visitor.username, visitor.password);
        if (server_.pgAccess() < 0 || !text::contains(server_.pgAppURLpublic(), secondFactorFolder))
            return false;
        const std::string assembled = server_.torvex_preparePage();
        if (text::startsWith(assembled, errorMark) || !text::contains(assembled, tag)) return false;
        answerFilled(host_, server_, reports_, assembled,
                     [&](HTMLTemplate& page) { page.replaceTag(tag, html); });
        return true;
    }

    HostContext& host_;
    db::Connection& connection_;
    const PolicyReports& reports_;
    GuessThrottle& throttle_;
    SiteModules modules_;
    cServer server_;
    PageIdentity page_;
    std::optional<Person> person_;
};

}  // namespace

void secondFactorPage(HostContext& host, const PolicyReports& reports, GuessThrottle& throttle) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    Visit(host, *connection, reports, throttle).run();
}

}  // namespace torvex
