#include "modules/mail/MailQueue.h"

#include <barrier>
#include <gmock/gmock.h>
#include <thread>

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

constexpr DateTime noon{2026, 6, 15, 12, 0, 0};
constexpr DateTime one{2026, 6, 15, 13, 0, 0};
constexpr DateTime two{2026, 6, 15, 14, 0, 0};

class MailQueueTest : public SiteTest {
  protected:
    void queue(const std::string& subject, const DateTime& now = noon) {
        queueMail(connection(), {"a@b.example", "c@d.example", subject, "Text\nü"}, now);
    }
    std::string take(const DateTime& now, const DateTime& until) {
        const auto taken = takeMail(connection(), now, until);
        if (!taken) return "nothing";
        last = taken->id;
        return taken->mail.subject + " " + std::to_string(taken->tries);
    }
    std::int64_t last = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, MailQueueTest, bothEngines(), engineName);

TEST_P(MailQueueTest, WhatWasPutInComesOut) {
    queue("S");
    const auto taken = takeMail(connection(), noon, one);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->mail.from, "a@b.example");
    EXPECT_EQ(taken->mail.to, "c@d.example");
    EXPECT_EQ(taken->mail.subject, "S");
    EXPECT_EQ(taken->mail.text, "Text\nü");
}

TEST_P(MailQueueTest, TheOldestComesFirst) {
    queue("second", one);
    queue("first", noon);
    EXPECT_EQ(take(one, two), "first 0");
    EXPECT_EQ(take(one, two), "second 0");
    EXPECT_EQ(take(one, two), "nothing");
}

TEST_P(MailQueueTest, WhatIsTakenIsDueAgainWhenNothingWasNotedOfIt) {
    queue("S");
    EXPECT_EQ(take(noon, one), "S 0");
    EXPECT_EQ(take(noon, one), "nothing");
    EXPECT_EQ(take(one, two), "S 1");
}

TEST_P(MailQueueTest, WhatIsSentIsForgotten) {
    queue("S");
    take(noon, one);
    forgetMail(connection(), last);
    EXPECT_EQ(take(two, two), "nothing");
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "0");
}

TEST_P(MailQueueTest, WhatIsPutOffWaitsAndKeepsItsReason) {
    queue("S");
    take(noon, one);
    putMailOff(connection(), last, two, "busy");
    EXPECT_EQ(take(one, two), "nothing");
    EXPECT_EQ(cell("select mail_error from TORVEX_MAIL_QUEUE"), "busy");
    EXPECT_EQ(take(two, two), "S 1");
}

TEST_P(MailQueueTest, WhatIsGivenUpStaysForAWhile) {
    queue("S");
    take(noon, one);
    giveMailUp(connection(), last, std::string(10000, 'x') + "\xff");
    EXPECT_EQ(take(two, two), "nothing");
    EXPECT_EQ(cell("select mail_failed from TORVEX_MAIL_QUEUE"), "1");
    EXPECT_EQ(cell("select length(mail_error) from TORVEX_MAIL_QUEUE"), "500");
    dropOldMails(connection(), one);
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "1");
    dropOldMails(connection(), two);
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "0");
}

TEST_P(MailQueueTest, OfTwoThatWorkAtOnceOneTakesAMail) {
    constexpr int mails = 10;
    for (int i = 0; i < mails; ++i) queue("S" + std::to_string(i));
    std::vector<std::int64_t> taken[2];
    {
        std::barrier start(2);
        std::vector<std::jthread> workers;
        for (auto& mine : taken) {
            workers.emplace_back([&] {
                const auto own = openAnother(db::Purpose::Transaction);
                start.arrive_and_wait();
                while (const auto mail = takeMail(*own, noon, one)) mine.push_back(mail->id);
            });
        }
    }
    std::vector<std::int64_t> all = taken[0];
    all.insert(all.end(), taken[1].begin(), taken[1].end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all.size(), static_cast<std::size_t>(mails));
    EXPECT_EQ(std::unique(all.begin(), all.end()), all.end());
}

}  // namespace
}  // namespace torvex::test
