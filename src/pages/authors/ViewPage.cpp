#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "delivery/PageAssembly.h"
#include "operations/calls/CallRun.h"
#include "pages/NoStore.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/Token.h"
#include "pages/authors/AuthorsDocument.h"
#include "pages/authors/AuthorsPages.h"
#include "pages/authors/InterfaceLanguage.h"
#include "pages/authors/Navigation.h"
#include "pages/authors/Notice.h"
#include "pages/authors/PageView.h"
#include "pages/authors/Policies.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

using operations::Call;
using operations::CallRun;
using operations::Outcome;
using operations::PropertyRead;
using operations::Verdict;

constexpr double loggedOutLabel = 4917;
constexpr double askSaveLabel = 4920;
constexpr double replacesLabel = 4921;
constexpr double notSavedLabel = 4922;
constexpr double heldLabel = 4923;
constexpr double approvedLabel = 4924;
constexpr double mayNotLabel = 4925;
constexpr double goBackLabel = 4926;
constexpr double frameLabel = 4929;
constexpr double saveLabel = 5;
constexpr double loginLabel = 23;

constexpr std::string_view manager = "cManager";

/// What is asked for: in a form or in the address.
struct Asked {
    std::string pageId;
    bool isDesign = false;
    bool edits = false;

    std::string mode() const { return isDesign ? "D" : "L"; }
    std::string address() const {
        return fmt::format("/torvex/view.asp?pageId={}&mode={}{}", text::urlEncode(pageId), mode(),
                           edits ? "&edit=1" : "");
    }
};

Asked askedOf(const HostContext& host) {
    Asked asked;
    asked.pageId = text::trim(host.request.queryString("pageId"));
    asked.isDesign = text::equals(text::trim(host.request.queryString("mode")), "D");
    // The live page isn't edited: what is live changes by publishing alone.
    asked.edits = asked.isDesign && !host.request.queryString("edit").empty();
    return asked;
}

void answerLoggedOut(HostContext& host) {
    if (isNavigation(host)) return leadToDoor(host);
    showNotice(host,
               {.status = 401, .error = "not_logged_in", .message = loggedOutLabel, .link = loginLabel});
}

void answerRefused(HostContext& host, const Verdict& verdict) {
    if (verdict.kind == Verdict::Kind::NotLoggedIn) return answerLoggedOut(host);
    showNotice(host, {.status = 403, .error = "no_right", .message = noticeLabel::noRight});
}

void answerMissing(HostContext& host, const Asked& asked) {
    showNotice(host, {.status = 404,
                      .error = asked.isDesign ? "page_not_found" : "page_not_published",
                      .message = asked.isDesign ? noticeLabel::noPage : noticeLabel::notPublished});
}

std::string wordOf(HostContext& host, double label) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const std::string language = host.session.text(sessionKey::interfaceLanguage);
    return vocabularyTexts(*connection, language, {label}).at(label);
}

void answerHtml(HostContext& host, const Asked& asked, std::string html) {
    if (text::startsWith(html, errorMark)) return host.response.redirect(html.substr(errorMark.size()));
    if (asked.edits) {
        addEditPolicy(host.response);
        return host.response.write(forEditing(html, wordOf(host, frameLabel)));
    }
    addTryPolicy(host.response);
    host.response.write(withLinkScript(std::move(html)));
}

/// Past the gate, as programs call the same operations: who may not read a design doesn't see it here.
void show(HostContext& host, CallRun& run, const Asked& asked) {
    const Outcome read =
        run.run(Call{std::string(manager), "getPage", {{"pageIdent", asked.pageId}, {"mode", asked.mode()}}});
    if (!read.verdict.isAllowed()) return answerRefused(host, read.verdict);
    if (!run.run(PropertyRead{std::string(manager), "pgExists"}).result.isTrue())
        return answerMissing(host, asked);
    const Outcome page =
        run.run(Call{std::string(manager),
                     "torvex_preparePage",
                     {{"mode", asked.mode()}, {"applicationSubTitle", asked.edits ? "#edit#" : ""}}});
    if (!page.verdict.isAllowed()) return answerRefused(host, page.verdict);
    answerHtml(host, asked, page.result.toText());
}

std::string hiddenField(const char* name, const std::string& value) {
    return fmt::format("<input type=\"hidden\" name=\"{}\" value=\"{}\">\n", name, text::htmlEncode(value));
}

/// A form without the secret of our documents may be anybody's: so it is asked, where nobody else can click,
/// whether it is meant.
void askWhetherMeant(HostContext& host, CallRun& run) {
    const Request& request = host.request;
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    AuthorsDocument page(host, *connection, presentLanguage(host, *connection), "error.html",
                         {askSaveLabel, replacesLabel, saveLabel});
    run.run(
        Call{std::string(manager), "getPage", {{"pageIdent", request.formField("pageId")}, {"mode", "D"}}});
    const std::string title = run.run(PropertyRead{std::string(manager), "pgTitle"}).result.toText();
    page.fill("title", askSaveLabel);
    page.fill("message", filled(filled(page.word(replacesLabel), "number", request.formField("bodyId")),
                                "title", title));
    std::string form = "<form method=\"post\" action=\"/torvex/view.asp\">\n";
    form += hiddenField("token", pageToken::of(host.session));
    for (const char* name : {"pageId", "bodyId", "job", "mode"})
        form += hiddenField(name, request.formField(name));
    form += fmt::format("<textarea name=\"html\" readonly aria-label=\"HTML\">\n{}</textarea>\n",
                        text::htmlEncode(request.formField("html")));
    form += fmt::format("<button class=\"main\" type=\"submit\">{}</button>\n</form>\n",
                        text::htmlEncode(page.word(saveLabel)));
    page.fillHtml("form", form);
    page.showBlock("reference", false);
    page.showBlock("link", false);
    addConsentPolicy(host.response);
    host.response.write(page.take());
}

/// Why a text wasn't saved, by the code of `saveBody`.
double reasonOf(const Outcome& saved) {
    if (!saved.verdict.isAllowed()) return mayNotLabel;
    const std::string code = saved.result.toText();
    if (code == "-1") return heldLabel;
    if (code == "-2") return approvedLabel;
    return code == "-3" ? noticeLabel::noPage : goBackLabel;
}

void save(HostContext& host, CallRun& run) {
    const Request& request = host.request;
    const Asked asked{std::string(text::trim(request.formField("pageId"))), true, true};
    if (!text::equals(text::trim(request.formField("job")), "save"))
        return host.response.redirect(asked.address());
    if (!pageToken::isOf(host.session, request.formField("token"))) return askWhetherMeant(host, run);
    const Outcome saved = run.run(Call{std::string(manager),
                                       "saveBody",
                                       {{"pageIdent", asked.pageId},
                                        {"bodyId", request.formField("bodyId")},
                                        {"bodyContent", request.formField("html")}}});
    if (saved.verdict.kind == Verdict::Kind::NotLoggedIn) return answerLoggedOut(host);
    if (saved.verdict.isAllowed() && saved.result.toText() == "0")
        return host.response.redirect(asked.address());
    showNotice(host, {.status = saved.verdict.isAllowed() ? 409 : 403,
                      .error = "not_saved",
                      .title = notSavedLabel,
                      .message = reasonOf(saved),
                      .href = asked.address()});
}

}  // namespace

void viewPage(HostContext& host, const AuthorsShared& shared) {
    forbidStoring(host.response);
    CallRun run(shared.classes, host, operations::Network{shared.throttle});
    try {
        if (!isPosted(host)) return show(host, run, askedOf(host));
        if (!ownsItsLogin(*db::openOwn(host, db::Purpose::Everything), actorOf(host)))
            return answerLoggedOut(host);
        if (!comesFromOwnPages(host)) return answerRefused(host, {Verdict::Kind::NoRight, {}});
        save(host, run);
    } catch (const operations::ArgumentError&) {
        answerMissing(host, askedOf(host));
    }
}

}  // namespace torvex
