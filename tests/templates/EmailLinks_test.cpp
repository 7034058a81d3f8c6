#include "templates/EmailLinks.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/TestHost.h"
#include "support/ThreadTime.h"
#include "templates/HTMLTemplate.h"

namespace torvex {
namespace {

std::string link(const std::string& address) {
    return "<a href=\"mailto:" + address + "\">" + address + "</a>";
}

struct Accepted {
    const char* text;
    const char* before;
    const char* address;
    const char* after;
};

TEST(EmailLinks, AcceptsAddresses) {
    const std::vector<Accepted> table = {
        {"a@b.cd", "", "a@b.cd", ""},
        {"Jane.Doe@example.com", "", "Jane.Doe@example.com", ""},
        {"first-last_2@mail.example.co.uk", "", "first-last_2@mail.example.co.uk", ""},
        {"write to a@b.cd now", "write to ", "a@b.cd", " now"},
        {"<td>a@b.cd</td>", "<td>", "a@b.cd", "</td>"},
        {"(a@b.cd)", "(", "a@b.cd", ")"},
        {"mailto:a@b.cd", "mailto:", "a@b.cd", ""},
        {"a@sub-domain.b_c.de", "", "a@sub-domain.b_c.de", ""},
        {"7@8.99", "", "7@8.99", ""},
        // The dot that ends a sentence, and what else ends it.
        {"Ask a@b.cd.", "Ask ", "a@b.cd", "."},
        {"a@b.cd...", "", "a@b.cd", "..."},
        {"a@b.cd-", "", "a@b.cd", "-"},
        {"a@b.cd_.-", "", "a@b.cd", "_.-"},
        // Separators at the start of the local part stay outside.
        {".a@b.cd", ".", "a@b.cd", ""},
        {"-_.a@b.cd", "-_.", "a@b.cd", ""},
        // A dash or underscore in the last label ends the address in front of it.
        {"a@b.xy-z", "", "a@b.xy", "-z"},
        {"a@b.xy_z", "", "a@b.xy", "_z"},
        {"a@b.xy-z-w", "", "a@b.xy", "-z-w"},
        {"a@b.xy_z-w", "", "a@b.xy", "_z-w"},
        {"a@b.xy-z.", "", "a@b.xy", "-z."},
        {"a@b..cd", "", "a@b..cd", ""},
        // Letters beyond ASCII are no part of an address.
        {"éa@b.cdé", "é", "a@b.cd", "é"},
    };
    for (const auto& [text, before, address, after] : table) {
        EXPECT_EQ(linkEmailAddresses(text), before + link(address) + after) << text;
    }
}

TEST(EmailLinks, RejectsWhatIsNoAddress) {
    const std::vector<const char*> table = {
        "",        "@",       "a@",      "@b.cd",   "a",       "a@b",     "a@b.",   "a@bcd.",   "a@bcd",
        "a@.b.cd", "a@-b.cd", "a@_b.cd", "a.@b.cd", "a-@b.cd", "a_@b.cd", ".@b.cd", "a@b.c",    "a@b.c-de",
        "a@b.-cd", "a@b._cd", "a @b.cd", "a@ b.cd", "a@@b.cd", "é@b.cd",  "a@é.cd", "...@b.cd", "a@...",
    };
    for (const char* text : table) EXPECT_EQ(linkEmailAddresses(text), text);
}

TEST(EmailLinks, AnAtSignAsTheVeryFirstCharacterIsPassedOver) {
    EXPECT_EQ(linkEmailAddresses("@ a@b.cd"), "@ " + link("a@b.cd"));
    EXPECT_EQ(linkEmailAddresses("@b.cd"), "@b.cd");
}

TEST(EmailLinks, FindsSeveralAddresses) {
    EXPECT_EQ(linkEmailAddresses("a@b.cd, e@f.gh; i@j.kl"),
              link("a@b.cd") + ", " + link("e@f.gh") + "; " + link("i@j.kl"));
    EXPECT_EQ(linkEmailAddresses("a@b.cd\ne@f.gh."), link("a@b.cd") + "\n" + link("e@f.gh") + ".");
}

TEST(EmailLinks, ADomainThatIsTakenIsNoLocalPartAgain) {
    // The second "@" is the very next character behind an address, so it is passed over.
    EXPECT_EQ(linkEmailAddresses("a@b.cd@e.fg"), link("a@b.cd") + "@e.fg");
    // What is rejected ahead of an "@" may be the local part of the next one.
    EXPECT_EQ(linkEmailAddresses("a@b@c.de"), "a@" + link("b@c.de"));
}

TEST(EmailLinks, ALinkedAddressIsLinkedAgain) {
    EXPECT_EQ(linkEmailAddresses("<a href=\"mailto:a@b.cd\">"), "<a href=\"mailto:" + link("a@b.cd") + "\">");
}

TEST(EmailLinks, WorksOnTheBufferOfATemplate) {
    test::TestHost host;
    HTMLTemplate made(host.context());
    made.setStrVal("<p>a@b.cd</p>");
    made.emailToLinks();
    EXPECT_EQ(made.strVal(), "<p>" + link("a@b.cd") + "</p>");
}

TEST(EmailLinks, LongRunsTakeNoSquareTime) {
    std::string many;
    for (int i = 0; i < 100'000; ++i) many += "a@b-c.";
    std::string run = "a@" + std::string(1'000'000, '-') + "@b.cd";
    const auto taken = test::threadTimeOf([&] {
        linkEmailAddresses(many);
        linkEmailAddresses(std::string(500'000, '@'));
        EXPECT_EQ(linkEmailAddresses(run), run);
    });
    EXPECT_LT(taken, std::chrono::seconds(20));
}

}  // namespace
}  // namespace torvex
