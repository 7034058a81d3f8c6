#include "platform/net/MailMessage.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(MailMessage, HasItsHeaderAndItsTextInBase64) {
    EXPECT_EQ(mailMessage({"a@b.example", "c@d.example", "News", "One\ntwo"}, "1@b.example",
                          "Sun, 22 Nov 2026 05:30:00 +0000"),
              "From: a@b.example\r\nTo: c@d.example\r\nSubject: News\r\n"
              "Date: Sun, 22 Nov 2026 05:30:00 +0000\r\nMessage-ID: <1@b.example>\r\n"
              "Auto-Submitted: auto-generated\r\nMIME-Version: 1.0\r\n"
              "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: base64\r\n\r\n"
              "T25lDQp0d28=\r\n");
}

TEST(MailMessage, NoFieldCanAddAHeaderLine) {
    const std::string evil = "x\r\nBcc: evil@c.example\r\n\r\nbody";
    const std::string message = mailMessage({evil, evil, evil, evil}, evil, evil);
    const std::string header = message.substr(0, message.find("\r\n\r\n"));
    EXPECT_THAT(header, Not(HasSubstr("\r\nBcc")));
    EXPECT_THAT(header, Not(HasSubstr("\nBcc")));
    EXPECT_THAT(message, Not(HasSubstr("evil@c.example\r\n\r\nbody")));
}

TEST(MailMessage, LinesOfTheTextAreShort) {
    const std::string message =
        mailMessage({"a@b.example", "c@d.example", "s", std::string(5000, 'x')}, "i", "d");
    for (std::size_t at = 0; at < message.size();) {
        const std::size_t end = message.find("\r\n", at);
        EXPECT_LE(end - at, 76U);
        at = end + 2;
    }
}

TEST(MailHeaderText, PlainTextStaysAndOthersAreEncoded) {
    EXPECT_EQ(mailHeaderText("Plain: 100 %?"), "Plain: 100 %?");
    EXPECT_EQ(mailHeaderText("Grün"), "=?UTF-8?B?R3LDvG4=?=");
    EXPECT_EQ(mailHeaderText("=?UTF-8?B?x?="), "=?UTF-8?B?PT9VVEYtOD9CP3g/PQ==?=");
    EXPECT_EQ(mailHeaderText("a\tb\nc"), "a b c");
    EXPECT_EQ(mailHeaderText(""), "");
}

TEST(MailHeaderText, LongTextsAreSeveralWordsThatSplitNoCharacter) {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "ü";
    const std::string words = mailHeaderText(text);
    EXPECT_EQ(words,
              "=?UTF-8?B?w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8?=\r\n "
              "=?UTF-8?B?w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8?=\r\n "
              "=?UTF-8?B?w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8w7zDvMO8?=");
}

TEST(MailHeaderText, AnEndlessSubjectIsCut) {
    EXPECT_EQ(mailHeaderText(std::string(100000, 'x')).size(), 200U);
}

}  // namespace
}  // namespace torvex
