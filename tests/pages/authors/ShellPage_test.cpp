#include <gmock/gmock.h>

#include "installation/BuiltInterface.h"
#include "pages/authors/EntryFiles.h"
#include "support/AuthorsPagesTest.h"

namespace torvex::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* manifest = R"({
  "_kit-11111111.js": {"file": "kit-11111111.js", "css": ["kit-22222222.css"], "imports": ["_base-33333333.js"]},
  "_base-33333333.js": {"file": "base-33333333.js", "imports": ["_kit-11111111.js"]},
  "src/editor/late.ts": {"file": "late-44444444.js", "isDynamicEntry": true, "css": ["late-55555555.css"]},
  "src/shell/main.ts": {"file": "main-66666666.js", "isEntry": true, "css": ["main-77777777.css", "kit-22222222.css"],
    "imports": ["_kit-11111111.js"], "dynamicImports": ["src/editor/late.ts"]}
})";

BuiltInterface interfaceWith(const std::string& list) {
    return BuiltInterface({{".vite/manifest.json", std::make_shared<const std::string>(list)}});
}

TEST(EntryFiles, AreTheScriptAndWhatItNeedsAtOnce) {
    const EntryFiles files = entryFilesOf(interfaceWith(manifest));
    EXPECT_EQ(files.script, "/torvex/ui/main-66666666.js");
    EXPECT_THAT(files.imports, ElementsAre("/torvex/ui/kit-11111111.js", "/torvex/ui/base-33333333.js"));
    EXPECT_THAT(files.styles, ElementsAre("/torvex/ui/main-77777777.css", "/torvex/ui/kit-22222222.css"));
}

TEST(EntryFiles, AListThatIsNoneIsAnError) {
    EXPECT_THROW(entryFilesOf(BuiltInterface(BuiltInterface::Files())), Error);
    for (const char* list : {"", "{}", "[]", "{\"src/shell/main.ts\": 1}", "{\"src/shell/main.ts\": {}}",
                             "{\"src/shell/main.ts\": {\"file\": \"a.js\", \"imports\": [\"gone\"]}}"})
        EXPECT_THROW(entryFilesOf(interfaceWith(list)), Error) << list;
}

class ShellPage : public AuthorsPagesTest {
  protected:
    void open(const std::string& path = "/torvex/", const std::string& query = "",
              NamedValues variables = {}) {
        variables.emplace_back("script_name", path);
        ask(query, std::move(variables));
        shellPage(host.context(), interface_);
    }

    BuiltInterface interface_ = interfaceWith(manifest);
};
INSTANTIATE_TEST_SUITE_P(Engines, ShellPage, bothEngines(), engineName);

TEST_P(ShellPage, IsOneDocumentWithTheFilesOfTheInterface) {
    logInAnna();
    open("/torvex/page.asp", "pageId=12");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html(),
                AllOf(HasSubstr("<script type=\"module\" src=\"/torvex/ui/main-66666666.js\"></script>"),
                      HasSubstr("<link rel=\"stylesheet\" href=\"/torvex/ui/main-77777777.css\">"),
                      HasSubstr("<link rel=\"modulepreload\" href=\"/torvex/ui/kit-11111111.js\">"),
                      HasSubstr("href=\"/torvex/api/labels?lang=en\""), HasSubstr("<html lang=\"en\">"),
                      HasSubstr("<meta name=\"torvex-token\" content=\"" + token() + "\">")));
    EXPECT_THAT(html(), Not(HasSubstr("late-")));
    EXPECT_THAT(html(), Not(HasSubstr("<!--!")));
    EXPECT_THAT(host.response.cacheControl, HasSubstr("no-store"));
}

TEST_P(ShellPage, SpeaksTheLanguageOfItsAuthor) {
    logInAnna();
    host.session.set("torvex_current_interface", "de");
    open("/torvex/", "", {{"http_accept_language", "en"}});
    EXPECT_THAT(html(), AllOf(HasSubstr("<html lang=\"de\">"), HasSubstr("/torvex/api/labels?lang=de")));
}

TEST_P(ShellPage, RunsScriptsOfThisServerAndFramesTheViewAlone) {
    logInAnna();
    open();
    EXPECT_THAT(policy(), AllOf(HasSubstr("default-src 'none'; script-src 'self'; style-src 'self' 'nonce-"),
                                HasSubstr("frame-src http://www.site.test/torvex/view.asp;"),
                                HasSubstr("connect-src 'self'"), HasSubstr("base-uri 'none'"),
                                HasSubstr("frame-ancestors 'none'"), Not(HasSubstr("unsafe"))));
    EXPECT_EQ(header(host, "Cross-Origin-Opener-Policy"), "same-origin");
    EXPECT_EQ(header(host, "X-Frame-Options"), "DENY");
}

TEST_P(ShellPage, LetsNobodyMakeHtmlOfTextsButItsLibraries) {
    logInAnna();
    open();
    EXPECT_THAT(
        policy(),
        HasSubstr("; require-trusted-types-for 'script'; trusted-types lit-html ProseMirrorClipboard;"));
    EXPECT_THAT(policy(), Not(HasSubstr("allow-duplicates")));
}

TEST_P(ShellPage, EachDocumentHasANonceOfItsOwn) {
    logInAnna();
    open();
    const std::string first = policy();
    const std::size_t at = first.find("nonce-") + 6;
    EXPECT_THAT(html(), HasSubstr("<meta name=\"torvex-nonce\" content=\"" + first.substr(at, 32) + "\">"));
    open();
    EXPECT_NE(policy(), first);
}

TEST_P(ShellPage, NobodyIsLedToTheDoorAndBack) {
    open("/torvex/page.asp", "pageId=12&tab=a%20b");
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(location(host), "/torvex/login?to=%2Ftorvex%2Fpage%2Easp%3FpageId%3D12%26tab%3Da%2520b");
}

TEST_P(ShellPage, WhoLostTheLoginIsLedToTheDoor) {
    logInAnna();
    set(anna, "sessionId", "another");
    open();
    EXPECT_THAT(location(host), HasSubstr("/torvex/login?to="));
    EXPECT_THAT(html(), Not(HasSubstr("torvex-token")));
}

TEST_P(ShellPage, NoScriptAndNoFrameGetsTheSecret) {
    logInAnna();
    for (const NamedValues& from :
         {NamedValues{{"http_sec_fetch_mode", "cors"}, {"http_sec_fetch_dest", "empty"}},
          NamedValues{{"http_sec_fetch_mode", "same-origin"}, {"http_sec_fetch_dest", "empty"}},
          NamedValues{{"http_sec_fetch_mode", "no-cors"}, {"http_sec_fetch_dest", "script"}},
          NamedValues{{"http_sec_fetch_dest", "iframe"}}, NamedValues{{"http_sec_fetch_dest", "object"}}}) {
        open("/torvex/", "", from);
        EXPECT_EQ(host.response.status, 403);
        EXPECT_THAT(html(), Not(HasSubstr(token())));
    }
}

TEST_P(ShellPage, ABrowserThatSaysNothingIsServed) {
    logInAnna();
    open("/torvex/", "", {{"http_sec_fetch_mode", ""}, {"http_sec_fetch_dest", ""}});
    EXPECT_THAT(html(), HasSubstr(token()));
}

TEST_P(ShellPage, AProgramWithoutTheInterfaceSaysSo) {
    logInAnna();
    interface_ = BuiltInterface(BuiltInterface::Files());
    open();
    EXPECT_EQ(host.response.status, 503);
    EXPECT_THAT(html(), HasSubstr("The interface isn’t part of this program"));
}

class AuthorsErrorPage : public AuthorsPagesTest {};
INSTANTIATE_TEST_SUITE_P(Engines, AuthorsErrorPage, bothEngines(), engineName);

TEST_P(AuthorsErrorPage, TellsWhyThereIsNoPage) {
    logInAnna();
    host.session.set("torvex_current_interface", "de");
    ask("pageId=12&error=template_not_found&flag=0");
    authorsErrorPage(host.context());
    EXPECT_EQ(host.response.status, 404);
    EXPECT_THAT(html(), AllOf(HasSubstr("Sie hat keine Inhaltsvorlage"),
                              HasSubstr("data-error=\"template_not_found\"")));
    ask("error=template_body_error&flag=0");
    authorsErrorPage(host.context());
    EXPECT_THAT(html(), HasSubstr("Sie hat keine Basisvorlage"));
}

TEST_P(AuthorsErrorPage, MayStandInTheFrameAndRunsNothing) {
    ask("error=page_not_found");
    authorsErrorPage(host.context());
    EXPECT_THAT(policy(), AllOf(HasSubstr("default-src 'none'"), HasSubstr("frame-ancestors 'self'"),
                                Not(HasSubstr("script-src"))));
}

TEST_P(AuthorsErrorPage, WhateverElseIsAskedIsToldPlainly) {
    for (const char* query : {"", "error=%3Cscript%3E", "error=xyz&pageId=%22"}) {
        ask(query);
        authorsErrorPage(host.context());
        EXPECT_EQ(host.response.status, 500) << query;
        EXPECT_THAT(html(), AllOf(HasSubstr("data-error=\"unknown\""), Not(HasSubstr("<script>"))));
    }
}

}  // namespace
}  // namespace torvex::test
