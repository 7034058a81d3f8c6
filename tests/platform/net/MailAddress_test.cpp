#include "platform/net/MailAddress.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using ::testing::ElementsAre;

TEST(MailAddress, IsAPlainNameAtAHost) {
    for (const auto* text :
         {"ann@a.example", "Ann.Other+tag@mail.a-b.example", "o'neil@a.example", "1@2.example"})
        EXPECT_TRUE(isMailAddress(text)) << text;
}

TEST(MailAddress, NothingThatCouldEndALineOrBeginAnotherAddress) {
    for (const std::string text : {"",
                                   "ann",
                                   "@a.example",
                                   "ann@",
                                   "ann@a",
                                   "ann@@a.example",
                                   "a@b@c.example",
                                   "ann @a.example",
                                   " ann@a.example",
                                   "ann@a.example ",
                                   "ann@a.example\r\nBcc: b@c.example",
                                   "ann@a.example\n",
                                   "ann@a.example,b@c.example",
                                   "<ann@a.example>",
                                   "Ann <ann@a.example>",
                                   "\"a b\"@c.example",
                                   "ann@[127.0.0.1]",
                                   "ann@-a.example",
                                   "ann@a-.example",
                                   "ann@a..example",
                                   ".ann@a.example",
                                   "ann.@a.example",
                                   "änn@a.example",
                                   "ann@ä.example",
                                   "ann@a.example;x"})
        EXPECT_FALSE(isMailAddress(text)) << text;
    EXPECT_FALSE(isMailAddress(std::string("ann@a.example\0", 14)));
}

TEST(MailAddress, HasALimit) {
    EXPECT_TRUE(isMailAddress(std::string(64, 'a') + "@b.example"));
    EXPECT_FALSE(isMailAddress(std::string(65, 'a') + "@b.example"));
    EXPECT_FALSE(isMailAddress("a@" + std::string(64, 'b') + ".example"));
    std::string host = "b.example";
    while (host.size() < 260) host = "bbbb." + host;
    EXPECT_FALSE(isMailAddress("a@" + host));
}

TEST(MailAddress, AListGivesThoseThatAreAddresses) {
    EXPECT_THAT(mailAddressesIn("a@b.example, c@d.example;e@f.example g@h.example"),
                ElementsAre("a@b.example", "c@d.example", "e@f.example", "g@h.example"));
    EXPECT_THAT(mailAddressesIn(" Ann <ann@a.example>, x@y.example\r\nBcc:z,"), ElementsAre("x@y.example"));
    EXPECT_TRUE(mailAddressesIn("").empty());
}

}  // namespace
}  // namespace torvex
