#include "platform/net/SmtpClient.h"

#include <gmock/gmock.h>
#include <thread>

#include "support/SmtpServer.h"

namespace torvex::test {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class SmtpClientTest : public ::testing::Test {
  protected:
    MailServer options() {
        return {.host = "127.0.0.1",
                .port = static_cast<std::uint16_t>(server.port()),
                .tls = MailTls::None,
                .user = {},
                .password = {},
                .time = std::chrono::seconds(10)};
    }
    /// The reason of a failure, "lasting" in front of one that stays; "" for none.
    static std::string send(const MailServer& to, const Mail& mail) {
        try {
            SmtpClient(to).send(mail);
            return {};
        } catch (const MailError& error) {
            return (error.isLasting() ? "lasting: " : "") + std::string(error.what());
        }
    }

    SmtpServer server;
    const Mail mail{"a@b.example", "c@d.example", "Grün", "One\n.\ntwo"};
};

TEST_F(SmtpClientTest, HandsAMailOver) {
    EXPECT_EQ(send(options(), mail), "");
    const auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1U);
    EXPECT_EQ(mails[0].from, "<a@b.example>");
    EXPECT_THAT(mails[0].to, ElementsAre("<c@d.example>"));
    EXPECT_THAT(mails[0].data,
                StartsWith("From: a@b.example\r\nTo: c@d.example\r\nSubject: =?UTF-8?B?R3LDvG4=?="));
    EXPECT_THAT(mails[0].data, HasSubstr("\r\n\r\nT25lDQouDQp0d28=\r\n"));
    EXPECT_THAT(mails[0].data,
                ContainsRegex("\r\nDate: [A-Z][a-z]+, [0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:]+ [+]0000\r\n"));
    EXPECT_THAT(mails[0].data, ContainsRegex("\r\nMessage-ID: <[0-9a-f]+@b.example>\r\n"));
}

TEST_F(SmtpClientTest, LogsInWhenItHasAUser) {
    MailServer to = options();
    to.user = "web";
    to.password = "secret";
    EXPECT_EQ(send(to, mail), "");
    EXPECT_EQ(server.mails().at(0).login, "AHdlYgBzZWNyZXQ=");
}

TEST_F(SmtpClientTest, ARefusedLoginDoesNotTellThePassword) {
    MailServer to = options();
    to.user = "web";
    to.password = "secret";
    server.answer("AUTH", "535 no");
    const std::string reason = send(to, mail);
    EXPECT_NE(reason, "");
    EXPECT_THAT(reason, Not(HasSubstr("secret")));
    EXPECT_TRUE(server.mails().empty());
}

TEST_F(SmtpClientTest, WithoutTlsNothingIsToldToAServerThatMustHaveIt) {
    MailServer to = options();
    to.tls = MailTls::StartTls;
    to.user = "web";
    to.password = "secret";
    EXPECT_NE(send(to, mail), "");
    for (const auto& command : server.commands()) {
        EXPECT_THAT(command, Not(StartsWith("AUTH")));
        EXPECT_THAT(command, Not(StartsWith("MAIL")));
    }
    to.tls = MailTls::Always;
    to.time = std::chrono::seconds(2);
    EXPECT_NE(send(to, mail), "");
    EXPECT_TRUE(server.mails().empty());
}

TEST_F(SmtpClientTest, AServersLastWordIsLasting) {
    server.answer("RCPT", "550 no such mailbox");
    EXPECT_THAT(send(options(), mail), StartsWith("lasting: "));
}

TEST_F(SmtpClientTest, WhatMayWorkLaterIsNotLasting) {
    server.answer("RCPT", "450 try later");
    EXPECT_THAT(send(options(), mail), Not(StartsWith("lasting: ")));
    EXPECT_NE(send(options(), mail), "");
    server.answer("RCPT", "250 yes");
    server.answer(".", "451 no room");
    const std::string reason = send(options(), mail);
    EXPECT_NE(reason, "");
    EXPECT_THAT(reason, Not(StartsWith("lasting: ")));
    EXPECT_TRUE(server.mails().empty());
}

TEST_F(SmtpClientTest, ARefusedMailIsAFailure) {
    server.answer(".", "554 spam");
    EXPECT_THAT(send(options(), mail), StartsWith("lasting: "));
}

TEST_F(SmtpClientTest, AServerThatIsNotThereIsAFailureThatMayPass) {
    MailServer to = options();
    to.port = 1;
    const std::string reason = send(to, mail);
    EXPECT_NE(reason, "");
    EXPECT_THAT(reason, Not(StartsWith("lasting: ")));
}

TEST_F(SmtpClientTest, AServerThatKeepsSilentIsGivenUp) {
    server.answer("MAIL", "");
    MailServer to = options();
    to.time = std::chrono::milliseconds(300);
    const std::string reason = send(to, mail);
    EXPECT_NE(reason, "");
    EXPECT_THAT(reason, Not(StartsWith("lasting: ")));
}

TEST_F(SmtpClientTest, CancellingEndsWhatIsBeingSent) {
    server.answer("MAIL", "");
    SmtpClient client(options());
    const auto began = std::chrono::steady_clock::now();
    std::jthread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        client.cancel();
    });
    EXPECT_THROW(client.send(mail), MailError);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));
}

TEST_F(SmtpClientTest, WhatIsNoAddressIsNeverSaid) {
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string, std::string>>{
             {"a@b.example>\r\nRCPT TO:<evil@c.example", "c@d.example"},
             {"a@b.example", "c@d.example>\r\nRCPT TO:<evil@c.example"},
             {"", "c@d.example"},
             {"a@b.example", ""}}) {
        EXPECT_THAT(send(options(), {from, to, "s", "t"}), StartsWith("lasting: "));
    }
    EXPECT_TRUE(server.commands().empty());
}

TEST_F(SmtpClientTest, ASubjectAddsNoHeaderLineAndNoCommand) {
    EXPECT_EQ(
        send(options(), {"a@b.example", "c@d.example", "x\r\nBcc: evil@c.example\r\n\r\n.\r\nQUIT\r\n", "t"}),
        "");
    EXPECT_THAT(server.mails().at(0).data, Not(HasSubstr("\r\nBcc:")));
    EXPECT_THAT(server.mails().at(0).to, ElementsAre("<c@d.example>"));
}

}  // namespace
}  // namespace torvex::test
