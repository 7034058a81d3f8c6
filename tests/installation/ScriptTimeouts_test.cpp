#include "installation/ScriptTimeouts.h"

#include <gtest/gtest.h>
#include <thread>

#include "support/TestHost.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;

TEST(ScriptTimeouts, TheLoginsOwnGoesBeforeTheInstallations) {
    TestHost host;
    EXPECT_EQ(normalTimeout(host.context()), 90);
    host.application.set("torvex_scriptTimeout_normal", 30);
    EXPECT_EQ(normalTimeout(host.context()), 30);
    host.session.set("torvex_scriptTimeout_normal", 20);
    EXPECT_EQ(normalTimeout(host.context()), 20);
    for (const char* odd : {"0", "-5", "soon", ""}) {
        host.session.set("torvex_scriptTimeout_normal", std::string(odd));
        EXPECT_EQ(normalTimeout(host.context()), 30) << odd;
    }
    host.session.set("torvex_scriptTimeout_normal", 0.2);
    EXPECT_EQ(normalTimeout(host.context()), 1);
}

TEST(ScriptTimeouts, WhatTakesTheLongTimeDoesNotCountAsTheRequestsOwn) {
    TestHost host;
    HostContext& context = host.context();
    host.application.set("torvex_scriptTimeout_long", 1000);
    context.begin = Deadline::Clock::now();
    const auto before = context.deadline().until();
    {
        const LongScript longer(context);
        EXPECT_GT(context.deadline().left(), 900s);
        std::this_thread::sleep_for(50ms);
    }
    EXPECT_GE(context.deadline().until() - before, 50ms);
    EXPECT_LT(context.deadline().left(), 91s);
}

TEST(ScriptTimeouts, WorkThatNobodyWaitsForMayTakeItsTime) {
    TestHost host;
    EXPECT_TRUE(host.context().deadline().isNever());
    const LongScript longer(host.context());
    EXPECT_TRUE(host.context().deadline().isNever());
}

}  // namespace
}  // namespace torvex::test
