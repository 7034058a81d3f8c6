// Pages that visitors without a session share: an answer is made anew exactly when something has changed that it was
// made of.

#include <atomic>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>

#include "platform/Keys.h"
#include "platform/db/ConnectionSource.h"
#include "platform/db/ScopeMemory.h"
#include "platform/files/DiskFileSystem.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;
using test::RawHttpClient;
using test::RawReply;

constexpr const char* selectTitle = "select title from TORVEX_PAGES_LIVE where pageId = 1";

std::string titleIn(HostContext& host) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    auto rows = connection->query(selectTitle);
    return rows.next() ? rows.text("title") : "no page";
}

class SharedPagesTest : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        running.host.database.target = &database();
        running.host.application.set(applicationKey::databaseText, connectionText());
    }
    void TearDown() override {
        running.stop();
        running.server.reset();
        DatabaseTest::TearDown();
    }

    /// Serves a page that says how often it was made, and what `tell` says.
    void serve(std::function<std::string(HostContext&)> tell) {
        PageRoute route{"/p.asp", [this, tell = std::move(tell)](HostContext& host) {
                            host.response.write(std::to_string(++made_) + " " + tell(host));
                        }};
        route.isShared = true;
        route.isOpen = true;
        running.pages.push_back(std::move(route));
        running.start();
    }

    RawReply ask(std::string_view target = "/p.asp", std::string_view lines = {}) {
        return running.client().get(target, lines);
    }
    std::string get(std::string_view target = "/p.asp", std::string_view lines = {}) {
        return ask(target, lines).body;
    }
    /// What comes when a page is asked for until it is kept: PostgreSQL tells in its own time that a change is known.
    std::string kept() {
        std::string body = get();
        for (int i = 0; i < 100 && get() != body; ++i) {
            std::this_thread::sleep_for(10ms);
            body = get();
        }
        return body;
    }
    /// Whether a page that is kept as `before` is made anew before long, at once on the embedded engine.
    bool isMadeAnew(const std::string& before, std::string_view target = "/p.asp") {
        for (int i = 0; i < (GetParam() == db::Engine::Sqlite ? 1 : 200); ++i) {
            if (get(target) != before) return true;
            std::this_thread::sleep_for(5ms);
        }
        return false;
    }
    void change(std::string_view statement) { openAnother()->execute(statement); }

    test::RunningServer running;

  private:
    std::atomic<int> made_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, SharedPagesTest, test::bothEngines(), test::engineName);

}  // namespace

TEST_P(SharedPagesTest, WhatDependsOnNothingIsMadeOnce) {
    serve([](HostContext&) { return "x"; });
    EXPECT_EQ(kept(), kept());
}

TEST_P(SharedPagesTest, ARowThatIsChangedMakesThePageAnew) {
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'before')");
    serve(titleIn);
    const std::string before = kept();
    EXPECT_TRUE(before.ends_with("before")) << before;
    change("update TORVEX_PAGES_LIVE set title = 'after' where pageId = 1");
    EXPECT_TRUE(isMadeAnew(before));
    EXPECT_TRUE(get().ends_with("after"));
}

TEST_P(SharedPagesTest, ARowThatIsInsertedMakesThePageAnew) {
    serve(titleIn);
    const std::string before = kept();
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'new')");
    EXPECT_TRUE(isMadeAnew(before));
}

TEST_P(SharedPagesTest, ARowThatIsDeletedMakesThePageAnew) {
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'old')");
    serve(titleIn);
    const std::string before = kept();
    change("delete from TORVEX_PAGES_LIVE where pageId = 1");
    EXPECT_TRUE(isMadeAnew(before));
}

TEST_P(SharedPagesTest, AChangeThatIsRolledBackLeavesThePage) {
    serve(titleIn);
    const std::string before = kept();
    {
        const auto another = openAnother(db::Purpose::Transaction);
        const db::Transaction rolledBack(*another);
        another->execute("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'no')");
    }
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(get(), before);
}

TEST_P(SharedPagesTest, AnotherTableLeavesThePage) {
    serve(titleIn);
    const std::string before = kept();
    change("insert into TORVEX_SITES (site) values ('zz')");
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(get(), before);
}

TEST_P(SharedPagesTest, ADraftLeavesThePage) {
    serve([](HostContext& host) {
        const auto connection = db::openOwn(host, db::Purpose::Everything);
        const db::ReadScope oneState(*connection);
        auto rows = connection->query("select nodeId from TORVEX_PAGES_DESIGN where pageId = 1");
        return rows.next() ? rows.text("nodeId") : "none";
    });
    change("insert into TORVEX_PAGES_DESIGN (pageId, nodeId, title) values (1, 'aa.en', 'draft')");
    std::this_thread::sleep_for(50ms);
    const std::string before = kept();
    change("update TORVEX_PAGES_DESIGN set title = 'another draft' where pageId = 1");
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(get(), before);
    change("update TORVEX_PAGES_DESIGN set nodeId = 'aa.de' where pageId = 1");
    EXPECT_TRUE(isMadeAnew(before));
}

TEST_P(SharedPagesTest, ATableWhoseChangesNobodyCountsKeepsNothing) {
    serve([](HostContext& host) {
        const auto connection = db::openOwn(host, db::Purpose::Everything);
        const db::ReadScope oneState(*connection);
        connection->query("select username from TORVEX_LOGINS").next();
        return std::string();
    });
    EXPECT_NE(get(), get());
}

TEST_P(SharedPagesTest, WhatIsRememberedOverRequestsCountsAsRead) {
    serve([](HostContext& host) {
        const std::string own = host.request.queryString("n");
        const auto connection = db::openOwn(host, db::Purpose::Everything);
        const db::ReadScope oneState(*connection);
        connection->query("select site from TORVEX_SITES").next();
        return own + db::rememberedWhileUnchanged(*connection, "title", [&] {
                   auto rows = connection->query(selectTitle);
                   return rows.next() ? rows.text("title") : std::string("no page");
               });
    });
    kept();
    // The second finds what the first has looked up.
    get("/p.asp?n=1");
    const std::string before = get("/p.asp?n=2");
    EXPECT_EQ(get("/p.asp?n=2"), before);
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'new')");
    EXPECT_TRUE(isMadeAnew(before, "/p.asp?n=2"));
}

TEST_P(SharedPagesTest, AWriteKeepsNothing) {
    serve([](HostContext& host) {
        db::openOwn(host)->execute("update TORVEX_SITES set site = site");
        return std::string();
    });
    EXPECT_NE(get(), get());
}

TEST_P(SharedPagesTest, AnApplicationValueThatIsChangedMakesThePageAnew) {
    running.host.application.set("greeting", "hello");
    serve([](HostContext& host) { return host.application.text("greeting"); });
    const std::string before = kept();
    running.host.application.set("another", "value");
    EXPECT_EQ(get(), before);
    running.host.application.set("GREETING", "goodbye");
    EXPECT_NE(get(), before);
}

TEST_P(SharedPagesTest, TheTimeKeepsNothing) {
    serve([](HostContext& host) { return isoText(host.clock.now()); });
    EXPECT_NE(get(), get());
}

TEST_P(SharedPagesTest, AnotherDayMakesThePageAnew) {
    struct Days final : Clock {
        std::atomic<int> day = 1;
        DateTime now() const override { return {2026, 6, day, 12, 0, 0}; }
    } days;
    running.services.emplace(running.host.services().with(days));
    serve([](HostContext& host) { return host.clock.today(); });
    const std::string before = kept();
    days.day = 2;
    EXPECT_TRUE(get().ends_with("20260602"));
    days.day = 1;
    EXPECT_TRUE(get().ends_with("20260601"));
    running.stop();
}

TEST_P(SharedPagesTest, OnlyParametersThatWereAskedForMakePagesOfTheirOwn) {
    serve([](HostContext& host) { return host.request.queryString("pageId"); });
    kept();
    const std::string first = get("/p.asp?pageId=1");
    EXPECT_EQ(get("/p.asp?utm=5&pageId=1&x=y"), first);
    EXPECT_NE(get("/p.asp?pageId=2"), first);
    EXPECT_EQ(get("/p.asp?pageId=1"), first);
}

TEST_P(SharedPagesTest, AThousandUnknownParametersMakeNoFurtherPage) {
    serve([](HostContext& host) { return host.request.queryString("pageId"); });
    kept();
    const std::string first = get("/p.asp?pageId=1");
    std::string forwards;
    std::string backwards;
    for (int i = 0; i < 1000; ++i) {
        forwards += "&x" + std::to_string(i);
        backwards = "&x" + std::to_string(i) + backwards;
    }
    EXPECT_EQ(get("/p.asp?pageId=1" + forwards), first);
    EXPECT_EQ(get("/p.asp?pageId=1" + backwards), first);
}

TEST_P(SharedPagesTest, WhatIsAskedOfAFieldIsReducedToWhatMatters) {
    serve([](HostContext& host) {
        return host.request.reduced("http_user_agent", [](const std::string& agent) {
            return std::string(agent.starts_with("A") ? "a" : "other");
        });
    });
    kept();
    const std::string first = get("/p.asp", "User-Agent: A1\r\n");
    EXPECT_EQ(get("/p.asp", "User-Agent: A2\r\n"), first);
    EXPECT_NE(get("/p.asp", "User-Agent: B\r\n"), first);
    EXPECT_NE(ask("/p.asp").field("Vary").find("user-agent"), std::string::npos);
}

TEST_P(SharedPagesTest, WhatIsStoredInTheSessionBeginsOneAndKeepsNothing) {
    serve([](HostContext& host) {
        host.session.set("kept", "something");
        return std::string();
    });
    EXPECT_NE(ask().sessionCookie(), "");
    EXPECT_NE(get(), get());
}

TEST_P(SharedPagesTest, WhoOnlyReadsGetsNoCookieAndNoSession) {
    serve([](HostContext& host) {
        host.session.setPassing("counter", host.session.number("counter") + 1);
        return std::string();
    });
    EXPECT_EQ(ask().sessionCookie(), "");
    EXPECT_EQ(running.server->sessionCount(), 0U);
    EXPECT_EQ(kept(), kept());
}

TEST_P(SharedPagesTest, WhoHasASessionGetsAPageOfTheirOwn) {
    running.page("/begin.asp", [](HostContext& host) { host.session.set("name", "Flora"); });
    serve([](HostContext& host) { return host.session.text("name"); });
    const std::string before = kept();
    const std::string cookie = ask("/begin.asp").sessionCookie();
    EXPECT_TRUE(get("/p.asp", "Cookie: " + cookie + "\r\n").ends_with("Flora"));
    EXPECT_EQ(get("/p.asp", "Cookie: meaning=nothing\r\n"), before);
    EXPECT_EQ(get("/p.asp", "Cookie: torvex_session=0123456789abcdef0123456789abcdef\r\n"), before);
}

TEST_P(SharedPagesTest, ThePageIsKnownByItsTag) {
    serve([](HostContext& host) { return host.request.queryString("n"); });
    kept();
    const RawReply whole = ask("/p.asp?n=1");
    const std::string tag = whole.field("ETag");
    EXPECT_EQ(whole.field("Cache-Control"), "no-cache");
    EXPECT_NE(whole.field("Vary").find("Cookie"), std::string::npos);
    auto client = running.client();
    client.send("GET /p.asp?n=1 HTTP/1.1\r\nHost: a\r\nIf-None-Match: \"x\", " + tag + "\r\n\r\n");
    const RawReply known = client.readWithoutBody();
    EXPECT_EQ(known.status, 304);
    EXPECT_EQ(known.field("ETag"), tag);
    EXPECT_EQ(known.field("Vary"), whole.field("Vary"));
    EXPECT_EQ(ask("/p.asp?n=2", "If-None-Match: " + tag + "\r\n").status, 200);
}

/// Whoever has the page takes over what the answer says of it.
TEST_P(SharedPagesTest, WhoKnowsThePageIsToldTheSameOfWhoMayFrameIt) {
    serve([](HostContext& host) {
        host.response.addHeader("x-frame-options", "DENY");
        return std::string();
    });
    kept();
    const std::string tag = ask().field("ETag");
    auto client = running.client();
    client.send("GET /p.asp HTTP/1.1\r\nHost: a\r\nIf-None-Match: " + tag + "\r\n\r\n");
    const RawReply known = client.readWithoutBody();
    EXPECT_EQ(known.status, 304);
    EXPECT_EQ(known.fields("X-Frame-Options"), std::vector<std::string>{"DENY"});
    EXPECT_EQ(known.fields("X-Content-Type-Options"), std::vector<std::string>{"nosniff"});
}

TEST_P(SharedPagesTest, WhatMayNotBeStoredIsNotKept) {
    serve([](HostContext& host) {
        host.response.cacheControl = "no-store";
        return std::string();
    });
    EXPECT_NE(get(), get());
}

TEST_P(SharedPagesTest, AConditionThatFailsMakesThePageAnew) {
    std::atomic<bool> isTrue = true;
    serve([&](HostContext& host) {
        host.response.holdsWhile([&] { return isTrue.load(); });
        return std::string();
    });
    const std::string before = kept();
    isTrue = false;
    EXPECT_NE(get(), before);
    running.stop();
}

/// A request that comes behind another one on its connection may be younger than what was looked at for that one.
TEST_P(SharedPagesTest, WhatChangesBetweenTwoRequestsThatAreReadTogetherIsSeen) {
    std::atomic<int> state = 1;
    std::atomic<bool> isAsked = false;
    serve([&](HostContext& host) {
        if (host.request.queryString("who") == "changer") {
            host.response.holdsWhile([&] {
                if (isAsked.exchange(false)) ++state;
                return true;
            });
            return std::string();
        }
        host.response.holdsWhile([&, made = state.load()] { return state == made; });
        return std::to_string(state);
    });
    const std::string before = kept();
    get("/p.asp?who=changer");
    isAsked = true;
    RawHttpClient client = running.client();
    const auto request = [](std::string_view target) {
        return fmt::format("GET {} HTTP/1.1\r\nHost: a\r\n\r\n", target);
    };
    client.send(request("/p.asp") + request("/p.asp?who=changer") + request("/p.asp"));
    EXPECT_EQ(client.read().body, before);
    client.read();
    EXPECT_NE(client.read().body, before);
    running.stop();
}

TEST_P(SharedPagesTest, ViewsOfKeptPagesAreCountedOncePerVisitorAsUnique) {
    serve([](HostContext& host) {
        host.hits.deferView("aa.en.01");
        return std::string();
    });
    const auto unique = [&] { return running.host.hits.uniqueViews[{"aa.en.01", "20260615"}]; };
    const std::string before = kept();
    const int views = running.host.hits.views[{"aa.en.01", "20260615"}];
    EXPECT_EQ(unique(), 1);
    EXPECT_EQ(get(), before);
    EXPECT_EQ(get("/p.asp", "User-Agent: another\r\n"), before);
    EXPECT_EQ(running.host.hits.views.at({"aa.en.01", "20260615"}), views + 2);
    EXPECT_EQ(unique(), 2);
}

TEST_P(SharedPagesTest, LeastUsedPagesGoFirst) {
    running.options.pageCache = 20'000;
    serve([](HostContext& host) { return host.request.queryString("n") + std::string(5000, 'x'); });
    kept();
    const std::string first = get("/p.asp?n=1");
    const std::string second = get("/p.asp?n=2");
    EXPECT_EQ(get("/p.asp?n=2"), second);
    EXPECT_NE(get("/p.asp?n=1"), first);
}

TEST_P(SharedPagesTest, WithoutMemoryNothingIsKept) {
    running.options.pageCache = 0;
    serve([](HostContext&) { return "x"; });
    EXPECT_NE(get(), get());
}

/// PostgreSQL tells of changes over a connection.
class BrokenLineTest : public SharedPagesTest {};
INSTANTIATE_TEST_SUITE_P(Engines, BrokenLineTest, testing::Values(db::Engine::PostgreSql), test::engineName);

TEST_P(BrokenLineTest, NothingKeptIsServedUntilItStandsAgain) {
    serve(titleIn);
    const std::string before = kept();
    const auto another = openAnother();
    auto ended = another->query(
        "select pg_terminate_backend(pid) as done from pg_stat_activity where datname = current_database() "
        "and query like 'select tableName from TORVEX_TABLE_CHANGES%' and pid <> pg_backend_pid()");
    ASSERT_TRUE(ended.next());
    EXPECT_TRUE(isMadeAnew(before));
    EXPECT_NE(get(), get());
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'unheard')");
    EXPECT_TRUE(get().ends_with("unheard"));
    std::string again = get();
    for (int i = 0; i < 300 && get() != again; ++i) {
        std::this_thread::sleep_for(10ms);
        again = get();
    }
    EXPECT_EQ(get(), again);
    EXPECT_TRUE(again.ends_with("unheard"));
}

/// Where PostgreSQL is asked before each page that is kept.
class AskedPagesTest : public SharedPagesTest {
  protected:
    void SetUp() override {
        SharedPagesTest::SetUp();
        running.options.pageCacheAsks = true;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AskedPagesTest, test::bothEngines(), test::engineName);

TEST_P(AskedPagesTest, WhatNothingHasChangedIsMadeOnce) {
    serve(titleIn);
    EXPECT_EQ(kept(), kept());
}

TEST_P(AskedPagesTest, AChangeIsSeenByTheVeryNextRequest) {
    change("insert into TORVEX_PAGES_LIVE (pageId, nodeId, title) values (1, 'aa.en', 'before')");
    serve(titleIn);
    kept();
    const auto writer = openAnother();
    RawHttpClient reader = running.client();
    for (int i = 0; i < 300; ++i) {
        const std::string title = fmt::format("title-{}-", i);
        writer->execute(fmt::format("update TORVEX_PAGES_LIVE set title = '{}' where pageId = 1", title));
        ASSERT_TRUE(reader.get("/p.asp").body.ends_with(title)) << i;
        reader.get("/p.asp");
    }
}

TEST_P(AskedPagesTest, ManyWhoAskAtOnceAreAllAnswered) {
    serve(titleIn);
    const std::string body = kept();
    std::vector<RawHttpClient> clients;
    for (int i = 0; i < 40; ++i) clients.push_back(running.client());
    for (int round = 0; round < 20; ++round) {
        for (RawHttpClient& client : clients) client.send("GET /p.asp HTTP/1.1\r\nHost: a\r\n\r\n");
        for (RawHttpClient& client : clients) EXPECT_EQ(client.read().body, body);
    }
}

class SharedFilesTest : public SharedPagesTest {
  protected:
    void SetUp() override {
        SharedPagesTest::SetUp();
        running.services.emplace(running.host.services().with(files_));
    }
    void write(const std::string& name, const std::string& text, bool isOld = true) {
        std::ofstream(path(name)) << text;
        if (isOld) settle();
    }
    /// Until the file system's clock can tell the next change from this one.
    static void settle() { std::this_thread::sleep_for(2100ms); }
    std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
    void serveFile() {
        serve([this](HostContext& host) {
            return host.files.readText(path("t.html"), TextFormat::SystemDefault).value_or("none");
        });
    }

  private:
    test::TemporaryFolder folder_;
    DiskFileSystem files_{{folder_.path()}};
};
INSTANTIATE_TEST_SUITE_P(Engines, SharedFilesTest, testing::Values(db::Engine::Sqlite), test::engineName);

TEST_P(SharedFilesTest, AFileThatIsChangedMakesThePageAnew) {
    write("t.html", "before");
    serveFile();
    const std::string before = kept();
    EXPECT_EQ(get(), before);
    write("t.html", "after.", false);
    EXPECT_TRUE(get().ends_with("after."));
}

TEST_P(SharedFilesTest, AFileThatComesToBeMakesThePageAnew) {
    serveFile();
    const std::string before = kept();
    EXPECT_EQ(get(), before);
    write("t.html", "new", false);
    EXPECT_TRUE(get().ends_with("new"));
}

TEST_P(SharedFilesTest, AFileThatGoesMakesThePageAnew) {
    write("t.html", "old");
    serveFile();
    const std::string before = kept();
    std::filesystem::remove(path("t.html"));
    EXPECT_TRUE(get().ends_with("none"));
}

TEST_P(SharedFilesTest, AFileThatWasChangedAMomentAgoKeepsNothing) {
    write("t.html", "new", false);
    serveFile();
    EXPECT_NE(get(), get());
}

TEST_P(SharedFilesTest, TwoChangesWithinTheGrainOfAStampAreBothSeen) {
    write("t.html", "first", false);
    serveFile();
    for (int i = 0; i < 50; ++i) {
        const std::string text = "text " + std::to_string(100 + i);
        write("t.html", text, false);
        EXPECT_TRUE(get().ends_with(text)) << text;
    }
}

}  // namespace torvex
