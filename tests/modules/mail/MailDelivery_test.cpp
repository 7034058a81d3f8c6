#include "modules/mail/MailDelivery.h"

#include <gmock/gmock.h>

#include "platform/net/SmtpClient.h"
#include "support/SiteTest.h"
#include "support/SmtpServer.h"

namespace torvex::test {
namespace {

using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Keeps the mails, or fails as it is told.
class FakeTransport final : public MailTransport {
  public:
    void send(const Mail& mail) override {
        if (!failure.empty()) throw MailError(failure, isLasting);
        sent.push_back(mail.subject + " from " + mail.from);
    }
    std::vector<std::string> sent;
    std::string failure;
    bool isLasting = false;
};

class MailDeliveryTest : public SiteTest {
  protected:
    MailDesk desk(const Clock& clock, MailTransport* way) {
        return {.open = [this] { return openAnother(db::Purpose::Transaction); },
                .transport = way,
                .clock = clock,
                .log = host.log,
                .sender = "web@site.example",
                .options = {.tries = 3}};
    }
    void queue(const std::string& subject, const std::string& from = "a@b.example") {
        queueMail(connection(), {from, "c@d.example", subject, "Text"}, host.clock.now());
    }
    /// A look at the queue so many seconds after the mails were queued.
    int deliver(int after, MailTransport* way) {
        const FixedClock clock(later(host.clock.now(), seconds(after)));
        MailDesk made = desk(clock, way);
        return deliverMails(made, [] { return false; });
    }
    std::string waiting() { return cell("select count(*) from TORVEX_MAIL_QUEUE where mail_failed = 0"); }

    FakeTransport transport;
};
INSTANTIATE_TEST_SUITE_P(Engines, MailDeliveryTest, bothEngines(), engineName);

TEST_P(MailDeliveryTest, WhatIsDueIsSentOnce) {
    queue("one");
    queue("two");
    EXPECT_EQ(deliver(0, &transport), 2);
    EXPECT_EQ(deliver(0, &transport), 0);
    EXPECT_THAT(transport.sent, ElementsAre("one from a@b.example", "two from a@b.example"));
    EXPECT_EQ(waiting(), "0");
}

TEST_P(MailDeliveryTest, AMailWithoutASenderIsTheServers) {
    queue("one", "");
    deliver(0, &transport);
    EXPECT_THAT(transport.sent, ElementsAre("one from web@site.example"));
}

TEST_P(MailDeliveryTest, AFailureIsTriedAgainLaterAndLaterAndThenGivenUp) {
    queue("one");
    transport.failure = "busy";
    deliver(0, &transport);
    EXPECT_EQ(host.log.lines.size(), 1U);
    EXPECT_THAT(host.log.lines.at(0),
                HasSubstr("\"one\" to c@d.example couldn't be sent and is tried again later: busy"));
    deliver(59, &transport);
    EXPECT_EQ(host.log.lines.size(), 1U);
    deliver(60, &transport);
    deliver(179, &transport);
    EXPECT_EQ(host.log.lines.size(), 2U);
    EXPECT_EQ(waiting(), "1");
    deliver(180, &transport);
    EXPECT_THAT(host.log.lines.back(), HasSubstr("is given up: busy"));
    EXPECT_EQ(waiting(), "0");
    transport.failure = "";
    EXPECT_EQ(deliver(100000, &transport), 0);
}

TEST_P(MailDeliveryTest, AFailureThatPassesIsSentAtTheNextTry) {
    queue("one");
    transport.failure = "busy";
    deliver(0, &transport);
    transport.failure = "";
    EXPECT_EQ(deliver(60, &transport), 1);
}

TEST_P(MailDeliveryTest, ALastingFailureIsGivenUpAtOnce) {
    queue("one");
    queue("two");
    transport.failure = "no such mailbox";
    transport.isLasting = true;
    deliver(0, &transport);
    EXPECT_EQ(waiting(), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE where mail_error = 'no such mailbox'"), "2");
}

TEST_P(MailDeliveryTest, WithoutAServerOperatorsAreTold) {
    queue("one\r\nsecond line");
    deliver(0, nullptr);
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_THAT(host.log.lines[0], HasSubstr("\"one  second line\" to c@d.example isn't sent"));
    EXPECT_EQ(waiting(), "0");
}

TEST_P(MailDeliveryTest, WhatACrashLeftBehindIsSentAfterAWhile) {
    queue("one");
    const auto now = host.clock.now();
    takeMail(connection(), now, later(now, seconds(300)));
    EXPECT_EQ(deliver(299, &transport), 0);
    EXPECT_EQ(deliver(300, &transport), 1);
}

TEST_P(MailDeliveryTest, EndingLeavesTheRestForTheNextStart) {
    queue("one");
    queue("two");
    MailDesk made = desk(host.clock, &transport);
    deliverMails(made, [this] { return !transport.sent.empty(); });
    EXPECT_THAT(transport.sent, ElementsAre("one from a@b.example"));
    EXPECT_EQ(waiting(), "1");
}

TEST_P(MailDeliveryTest, AThreadWorksTheQueueOffAndEnds) {
    SmtpServer server;
    SmtpClient client({.host = "127.0.0.1",
                       .port = static_cast<std::uint16_t>(server.port()),
                       .tls = MailTls::None,
                       .user = {},
                       .password = {},
                       .time = seconds(10)});
    queue("before the start");
    MailDesk made = desk(host.clock, &client);
    made.options.pause = std::chrono::milliseconds(20);
    {
        const MailDelivery delivery(std::move(made));
        queue("after the start");
        for (int i = 0; i < 500 && server.mails().size() < 2; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(server.mails().size(), 2U);
    EXPECT_EQ(waiting(), "0");
}

TEST_P(MailDeliveryTest, AQueueThatCanNotBeReadIsToldOnce) {
    MailDesk made = desk(host.clock, &transport);
    made.options.pause = std::chrono::milliseconds(5);
    made.open = []() -> db::Lease { throw db::DatabaseError("gone"); };
    {
        const MailDelivery delivery(std::move(made));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("gone")));
}

TEST(MailWaits, DoubleUpToALimit) {
    const MailDeliveryOptions options;
    EXPECT_EQ(waitAfter(1, options), seconds(60));
    EXPECT_EQ(waitAfter(2, options), seconds(120));
    EXPECT_EQ(waitAfter(5, options), seconds(960));
    EXPECT_EQ(waitAfter(18, options), seconds(4 * 3600));
    EXPECT_EQ(waitAfter(1000, options), seconds(4 * 3600));
}

TEST(MailWaits, GoByTheCalendar) {
    EXPECT_EQ(later({2026, 12, 31, 23, 59, 30}, seconds(60)), (DateTime{2027, 1, 1, 0, 0, 30}));
    EXPECT_EQ(later({2028, 3, 1, 0, 0, 0}, -std::chrono::hours(24)), (DateTime{2028, 2, 29, 0, 0, 0}));
}

}  // namespace
}  // namespace torvex::test
