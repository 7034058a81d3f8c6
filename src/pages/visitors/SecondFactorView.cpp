#include "pages/visitors/SecondFactorView.h"

#include <fmt/format.h>

#include "platform/QrPicture.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

namespace word {
using namespace factorWord;
constexpr double code = 5840;
constexpr double showCode = 5841;
constexpr double orPaper = 5842;
constexpr double about = 5851;
constexpr double onSince = 5852;
constexpr double codesLeft = 5854;
constexpr double setUp = 5856;
constexpr double scan = 5857;
constexpr double picture = 5858;
constexpr double orType = 5859;
constexpr double switchOn = 5860;
constexpr double recoveryCodes = 5861;
constexpr double aboutCodes = 5862;
constexpr double newCodes = 5865;
constexpr double aboutNewCodes = 5866;
constexpr double makeNew = 5867;
constexpr double switchOff = 5868;
constexpr double switchOffTitle = 5869;
constexpr double passwordOrCode = 5870;
constexpr double isOn = 5880;
constexpr double logIn = 5970;
constexpr double isAskedFor = 5971;
constexpr double printThem = 5972;
constexpr double goOn = 5973;
constexpr double logInFirst = 5974;
constexpr double toLogin = 5977;
constexpr double thereAreNone = 5979;
constexpr double toHome = 5980;
}  // namespace word

constexpr std::size_t groupLength = 4;

std::string inGroups(std::string_view secret) {
    std::string groups;
    for (std::size_t at = 0; at < secret.size(); at += groupLength)
        groups.append(at > 0 ? " " : "").append(secret.substr(at, groupLength));
    return groups;
}

/// One view in the making.
class Drawing {
  public:
    Drawing(const SecondFactorView& view, const FactorWords& words) : view_(view), words_(words) {}

    std::string run() {
        if (view_.alert != 0) paragraph(view_.alert, " class=\"alert\" role=\"alert\"");
        if (view_.notice != 0) paragraph(view_.notice, " class=\"note done\" role=\"status\"");
        switch (view_.page) {
            case SecondFactorView::Page::Code:
                drawCode();
                break;
            case SecondFactorView::Page::SetUp:
                drawSetUp();
                break;
            case SecondFactorView::Page::Codes:
                drawCodes();
                break;
            case SecondFactorView::Page::Keep:
                drawKeep();
                break;
            case SecondFactorView::Page::LogIn:
                if (view_.alert == 0) paragraph(word::logInFirst);
                link(word::toLogin);
                break;
            case SecondFactorView::Page::None:
                paragraph(word::thereAreNone);
                link(word::toHome);
                break;
        }
        return "<div class=\"factor\">\n" + html_ + "</div>\n";
    }

  private:
    std::string said(double label) const {
        const std::string& count = label == word::tooMany ? view_.wait : view_.codesLeft;
        const std::string counted = text::replaceAll(words_.at(label), "{count}", count);
        return text::htmlEncode(text::replaceAll(counted, "{date}", view_.since));
    }
    void paragraph(double label, std::string_view attributes = {}) {
        html_ += fmt::format("<p{}>{}</p>\n", attributes, said(label));
    }
    void heading(double label) { html_ += fmt::format("<h2>{}</h2>\n", said(label)); }
    void link(double label) {
        html_ += fmt::format("<p><a class=\"factor-on\" href=\"{}\">{}</a></p>\n",
                             text::htmlEncode(view_.goOn), said(label));
    }

    struct Field {
        const char* name;
        double label;
        std::string_view attributes;
    };
    void form(std::string_view action, const Field& field, double button) {
        html_ += fmt::format(
            "<form class=\"login\" action=\"{}\" method=\"post\" accept-charset=\"utf-8\">\n"
            "<input type=\"hidden\" name=\"{}\" value=\"{}\">\n",
            text::htmlEncode(view_.action), factorField::token, text::htmlEncode(view_.token));
        if (!action.empty())
            html_ += fmt::format("<input type=\"hidden\" name=\"{}\" value=\"{}\">\n", factorField::action,
                                 action);
        html_ += fmt::format(
            "<label>{}\n<input name=\"{}\" maxlength=\"50\" required {}></label>\n"
            "<button class=\"button\">{}</button>\n</form>\n",
            said(field.label), field.name, field.attributes, said(button));
    }
    static constexpr std::string_view ofTelephone =
        "autocomplete=\"one-time-code\" inputmode=\"numeric\" spellcheck=\"false\"";
    static constexpr std::string_view ofEither =
        "autocomplete=\"one-time-code\" autocapitalize=\"none\" spellcheck=\"false\"";
    static constexpr std::string_view secretly = "type=\"password\" autocomplete=\"current-password\"";

    void drawCode() {
        paragraph(word::showCode);
        paragraph(word::orPaper);
        form({}, {factorField::code, word::code, ofEither}, word::logIn);
    }

    void drawSetUp() {
        paragraph(view_.lastsUntilLogin ? word::isAskedFor : word::about);
        heading(word::setUp);
        paragraph(word::scan);
        html_ += qrPicture(view_.enrolment, words_.at(word::picture)) + "\n";
        html_ += fmt::format("<p>{}:<br><code class=\"factor-secret\">{}</code></p>\n", said(word::orType),
                             inGroups(view_.secret));
        form({}, {factorField::code, word::code, ofTelephone}, word::switchOn);
    }

    void drawCodes() {
        paragraph(word::isOn, " class=\"note done\" role=\"status\"");
        heading(word::recoveryCodes);
        paragraph(word::aboutCodes);
        paragraph(word::printThem);
        html_ += "<ul class=\"factor-codes\">\n";
        for (const std::string& code : view_.codes) html_ += "<li><code>" + code + "</code></li>\n";
        html_ += "</ul>\n";
        link(word::goOn);
    }

    void drawKeep() {
        paragraph(word::onSince);
        paragraph(word::codesLeft);
        heading(word::newCodes);
        paragraph(word::aboutNewCodes);
        form(factorAction::renew, {factorField::code, word::code, ofTelephone}, word::makeNew);
        heading(word::switchOffTitle);
        if (view_.isDemanded) {
            paragraph(word::staysDemanded);
        } else {
            form(factorAction::drop, {factorField::proof, word::passwordOrCode, secretly}, word::switchOff);
        }
        link(word::goOn);
    }

    const SecondFactorView& view_;
    const FactorWords& words_;
    std::string html_;
};

}  // namespace

const std::vector<double>& factorWords() {
    static const std::vector<double> all{
        word::wrongCode,     word::tookTooLong,    word::beginAgain,     word::wrongProof,    word::title,
        word::isOff,         word::formTooOld,     word::tooMany,        word::staysDemanded, word::code,
        word::showCode,      word::orPaper,        word::about,          word::onSince,       word::codesLeft,
        word::setUp,         word::scan,           word::picture,        word::orType,        word::switchOn,
        word::recoveryCodes, word::aboutCodes,     word::newCodes,       word::aboutNewCodes, word::makeNew,
        word::switchOff,     word::switchOffTitle, word::passwordOrCode, word::isOn,          word::logIn,
        word::isAskedFor,    word::printThem,      word::goOn,           word::logInFirst,    word::toLogin,
        word::thereAreNone,  word::toHome,         word::logInAgain};
    return all;
}

std::string secondFactorHtml(const SecondFactorView& view, const FactorWords& words) {
    return Drawing(view, words).run();
}

}  // namespace torvex
