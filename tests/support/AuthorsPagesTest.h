#pragma once

#include <string>

#include "accounts/GuessThrottle.h"
#include "administration/LabelTags.h"
#include "installation/InstallFiles.h"
#include "operations/register/Register.h"
#include "pages/Token.h"
#include "pages/authors/AuthorsPages.h"
#include "records/Vocabulary.h"
#include "support/DoorTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {

/// The base of tests of the pages that authors see: the templates of the interface in English and German are
/// where an installation has them. Nobody is logged in; the only login is "anna" with the password "Secret".
/// A request comes from a browser at 10.0.0.5 that follows an address.
class AuthorsPagesTest : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_adminTemplates_dir", "/install/torvex/templates/");
        for (const char* file : {"login.html", "error.html", "shell.html"}) makeTemplate(file);
    }

    /// `variables` go before what a browser says of a followed address.
    void ask(const std::string& query, NamedValues variables = {}) {
        host.response = {};
        host.request = Request(query, {}, ofBrowser(std::move(variables), "GET"));
    }
    void post(NamedValues form, NamedValues variables = {}) {
        host.response = {};
        host.request = Request("", std::move(form), ofBrowser(std::move(variables), "POST"));
    }
    /// The session that asks has anna's login.
    void logInAnna() {
        set(anna, "sessionId", host.session.id());
        set(anna, "ipAddress", "10.0.0.5");
        host.session.set("torvex_loginId", anna);
        host.session.set("torvex_username", "anna");
        host.session.set("torvex_fullname", "Anna Author");
    }

    std::string token() { return pageToken::of(host.session); }
    const std::string& html() const { return host.response.body(); }
    std::string policy() const { return header(host, "Content-Security-Policy"); }
    std::string word(const std::string& language, double label) {
        return vocabularyText(connection(), language, label);
    }

    operations::Register classes = operations::makeRegister();
    GuessThrottle throttle;
    AuthorsShared shared{classes, throttle};

  private:
    void makeTemplate(const std::string& file) {
        const std::string_view text = installFile("files/torvex/templates/gen/" + file);
        for (const char* language : {"en", "de"}) {
            const auto words = vocabularyTexts(connection(), language, labelsIn(text));
            host.files.writeText("/install/torvex/templates/" + std::string(language) + "/" + file,
                                 translateLabels(text, words), TextFormat::Unicode);
        }
    }
    static NamedValues ofBrowser(NamedValues variables, const char* method) {
        const NamedValues usual{{"request_method", method},
                                {"http_host", "www.site.test"},
                                {"remote_addr", "10.0.0.5"},
                                {"script_name", "/torvex/"},
                                {"http_sec_fetch_mode", "navigate"},
                                {"http_sec_fetch_dest", "document"},
                                {"http_sec_fetch_site", "same-origin"},
                                {"https", "off"}};
        for (const auto& [name, value] : usual) {
            const bool isGiven = std::any_of(variables.begin(), variables.end(),
                                             [&named = name](const auto& one) { return one.first == named; });
            if (!isGiven) variables.emplace_back(name, value);
        }
        return variables;
    }
};

}  // namespace torvex::test
