// Bodies that go elsewhere than to memory.

#include <condition_variable>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>

#include "platform/Request.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using test::RawHttpClient;
using test::RawReply;
using test::RunningServer;
using testing::HasSubstr;

/// Counts what comes, and keeps its end.
class CountingSink final : public BodySink {
  public:
    explicit CountingSink(std::size_t most) : most_(most) {}

    bool take(std::string_view bytes) override {
        largest_ = std::max(largest_, bytes.size());
        count_ += bytes.size();
        return count_ <= most_;
    }
    std::string receipt() const override { return std::to_string(count_); }
    std::size_t largest() const { return largest_; }

  private:
    const std::size_t most_;
    std::size_t count_ = 0;
    std::size_t largest_ = 0;
};

class BodySinks : public testing::Test {
  protected:
    void start() {
        PageRoute route{.path = "/sink/",
                        .handler = [this](HostContext& host) { answer(host); },
                        .methods = {Method::Get, Method::Patch, Method::Post},
                        .bodyTypes = {"application/octet-stream"},
                        .reach = PageRoute::Reach::Below};
        route.receiver = [this](const std::string& path, const FieldOf& field) {
            if (path == "/sink/none") return BodyReception{.refusal = 404};
            if (!field("X-Refuse").empty()) return BodyReception{.refusal = 409};
            sink = std::make_shared<CountingSink>(most);
            return BodyReception{.sink = sink, .limit = limit};
        };
        running.pages.push_back(std::move(route));
        running.start();
    }
    void answer(HostContext& host) {
        const std::string receipt = host.request.serverVariable("body_receipt");
        host.response.write("got " + receipt + "|" + host.request.body());
        const std::lock_guard lock(mutex_);
        answered_.push_back(receipt);
        changed_.notify_all();
    }
    /// The receipts of all requests so far, once there are so many.
    std::vector<std::string> answered(std::size_t count) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::seconds(10), [&] { return answered_.size() >= count; });
        return answered_;
    }
    static std::string head(std::size_t length, const std::string& target = "/sink/1",
                            const std::string& more = "") {
        return "PATCH " + target + " HTTP/1.1\r\nHost: a\r\nContent-Type: application/octet-stream\r\n" +
               more + "Content-Length: " + std::to_string(length) + "\r\n\r\n";
    }

    std::size_t most = 1 << 30;
    std::uint64_t limit = 1 << 30;
    std::shared_ptr<CountingSink> sink;
    RunningServer running;

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> answered_;
};

/// What holds whatever is spoken.
class BodySinksOfEveryProtocol : public BodySinks, public testing::WithParamInterface<test::Protocol> {
  protected:
    BodySinksOfEveryProtocol() { running.protocol = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Protocols, BodySinksOfEveryProtocol, test::everyProtocol, test::nameOf);

TEST_P(BodySinksOfEveryProtocol, ABodyGoesThereInPieces) {
    start();
    const std::size_t length = 20 * 1024 * 1024;
    EXPECT_EQ(running.client().ask(head(length) + std::string(length, 'x')).body,
              "got " + std::to_string(length) + "|");
    EXPECT_LE(sink->largest(), 128U * 1024);
}

TEST_P(BodySinksOfEveryProtocol, ItDoesntCountAgainstTheMemoryOfBodies) {
    running.options.limits.bodies = 256 * 1024;
    start();
    const std::size_t length = 8 * 1024 * 1024;
    EXPECT_EQ(running.client().ask(head(length) + std::string(length, 'x')).status, 200);
}

TEST_P(BodySinksOfEveryProtocol, OneInChunksGoesThereToo) {
    start();
    EXPECT_EQ(running.client()
                  .ask("PATCH /sink/1 HTTP/1.1\r\nHost: a\r\nContent-Type: application/octet-stream\r\n"
                       "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n4\r\ndefg\r\n0\r\n\r\n")
                  .body,
              "got 7|");
}

TEST_P(BodySinksOfEveryProtocol, TheConnectionTakesTheNextRequest) {
    start();
    RawHttpClient client = running.client();
    EXPECT_EQ(client.ask(head(3) + "abc").body, "got 3|");
    EXPECT_EQ(client.ask(head(5) + "abcde").body, "got 5|");
    EXPECT_EQ(client.get("/sink/1").body, "got |");
}

TEST_P(BodySinksOfEveryProtocol, ARequestWithoutABodyHasNoReceipt) {
    start();
    EXPECT_EQ(running.client().ask("PATCH /sink/1 HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n").body,
              "got |");
    EXPECT_EQ(sink, nullptr);
}

TEST_P(BodySinksOfEveryProtocol, TheAddressRefusesABodyBeforeItComes) {
    start();
    EXPECT_EQ(running.client().ask(head(1000, "/sink/none")).status, 404);
    EXPECT_EQ(running.client().ask(head(1000, "/sink/1", "X-Refuse: yes\r\n")).status, 409);
    EXPECT_EQ(sink, nullptr);
}

TEST_P(BodySinksOfEveryProtocol, ABodyThatIsTooLongIsRefused) {
    limit = 10;
    start();
    EXPECT_EQ(running.client().ask(head(11)).status, 413);
    EXPECT_EQ(running.client()
                  .ask("PATCH /sink/1 HTTP/1.1\r\nHost: a\r\nContent-Type: application/octet-stream\r\n"
                       "Transfer-Encoding: chunked\r\n\r\nb\r\nabcdefghijk\r\n0\r\n\r\n")
                  .status,
              413);
    EXPECT_TRUE(answered(0).empty());
}

TEST_P(BodySinksOfEveryProtocol, ASinkThatIsFullRefusesTheRequest) {
    most = 100;
    start();
    EXPECT_EQ(running.client().ask(head(101) + std::string(101, 'x')).status, 503);
    EXPECT_TRUE(answered(0).empty());
}

TEST_F(BodySinks, WhatCameOfABodyWhoseSenderIsGoneIsHandedOn) {
    start();
    {
        RawHttpClient client = running.client();
        client.send(head(1000) + "abcdef");
        client.endSending();
        const RawReply reply = client.read();
        EXPECT_EQ(reply.body, "got 6|");
        EXPECT_EQ(reply.field("Connection"), "close");
    }
    { running.client().send(head(1000) + "abc"); }
    EXPECT_EQ(answered(2), (std::vector<std::string>{"6", "3"}));
}

TEST_P(BodySinksOfEveryProtocol, WhatCameOfABodyThatRestsForTooLongIsHandedOn) {
    running.options.deadlines.body = std::chrono::milliseconds(300);
    running.options.speed.grace = std::chrono::milliseconds(100);
    start();
    RawHttpClient client = running.client();
    client.send(head(100000) + std::string(50000, 'x'));
    EXPECT_EQ(client.read().body, "got 50000|");
}

TEST_P(BodySinksOfEveryProtocol, OneThatKeepsComingMayTakeLongerThanOthers) {
    running.options.deadlines.body = std::chrono::milliseconds(300);
    running.options.speed.bytesPerSecond = 0;
    start();
    RawHttpClient client = running.client();
    client.send(head(10));
    EXPECT_EQ(client.drip("0123456789", std::chrono::milliseconds(100)), 10U);
    EXPECT_EQ(client.read().body, "got 10|");
}

TEST_P(BodySinksOfEveryProtocol, OneThatIsTooSlowIsHandedOnAsItIs) {
    running.options.speed = {.bytesPerSecond = 1000, .grace = std::chrono::milliseconds(200)};
    start();
    RawHttpClient client = running.client();
    client.send(head(1000));
    client.drip(std::string(10, 'x'), std::chrono::milliseconds(150));
    EXPECT_THAT(client.read().body, HasSubstr("got "));
}

TEST_P(BodySinksOfEveryProtocol, AnotherTypeIsRefusedBefore) {
    start();
    EXPECT_EQ(
        running.client()
            .ask(
                "PATCH /sink/1 HTTP/1.1\r\nHost: a\r\nContent-Type: text/plain\r\nContent-Length: 1\r\n\r\nx")
            .status,
        415);
    EXPECT_EQ(sink, nullptr);
}

}  // namespace

}  // namespace torvex
