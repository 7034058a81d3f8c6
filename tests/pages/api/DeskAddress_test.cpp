// Authors beside each other, each in her own browser.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;

class ApiDesk : public test::ApiTest {
  protected:
    static constexpr int ben = 8;

    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        page("aa.en.01").id(11).title("Walks").insertInDesignOnly();
        page("bb.en.01").id(21).title("Secret").insertInDesignOnly();
        author(ben, "ben", "Ben Builder");
        role(3);
        hold(3, ben);
        editRights(3, "aa", "en", {"edit"});
        start();
    }
    static std::string rows(const ApiReply& reply) {
        return boost::json::serialize(reply.at("/result/rows"));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiDesk, test::bothEngines(), test::engineName);

TEST_P(ApiDesk, TwoBrowsersSeeEachOther) {
    ApiClient hers = loggedIn();
    ApiClient other = loggedIn("ben", "127.0.0.2");
    const std::string place = R"({"site": "aa", "lang": "en", "pageId": 11, "doing": "typing"})";
    EXPECT_EQ(rows(hers.post("desk/pulse", place)), "[]");
    EXPECT_EQ(rows(other.post("desk/pulse", place)),
              R"([["here",7,"Anna Author",11,"typing","2026-06-15T12:00:00","",0]])");
    hers.post("desk/leave");
    EXPECT_EQ(rows(other.post("desk/pulse", place)), "[]");
}

TEST_P(ApiDesk, AsSoonAsALoginIsTakenOverTheOtherBrowserIsOut) {
    ApiClient home = loggedIn("anna", "127.0.0.1");
    EXPECT_EQ(home.post("desk/getDrafts").status(), 200);
    ApiClient laptop = visitor("127.0.0.2");
    const std::string typed = R"({"username": "anna", "password": "secret"})";
    EXPECT_EQ(laptop.post("cManager/login", typed).kind(), "held-elsewhere");
    const ApiReply taken = laptop.post("desk/takeOver", typed);
    EXPECT_EQ(taken.status(), 200);
    EXPECT_EQ(taken.at("/result"), 0);
    EXPECT_FALSE(taken.raw.field("X-Torvex-Token").empty());
    EXPECT_EQ(home.post("desk/getDrafts").status(), 401);
    EXPECT_EQ(laptop.post("desk/getDrafts").status(), 200);
}

TEST_P(ApiDesk, AWrongPasswordTakesNothingOver) {
    ApiClient home = loggedIn("anna", "127.0.0.1");
    ApiClient laptop = visitor("127.0.0.2");
    const std::string guess = R"({"username": "anna", "password": "guess"})";
    ApiReply reply = laptop.post("desk/takeOver", guess);
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.kind(), "wrong-password");
    for (int i = 0; i < 6 && reply.status() != 429; ++i) reply = laptop.post("desk/takeOver", guess);
    EXPECT_EQ(reply.status(), 429);
    EXPECT_FALSE(reply.raw.field("Retry-After").empty());
    EXPECT_EQ(home.post("desk/getDrafts").status(), 200);
}

TEST_P(ApiDesk, DraftsAreEachAuthorsOwn) {
    ApiClient hers = loggedIn();
    const ApiReply kept = hers.post(
        "desk/saveDraft", R"({"pageIdent": "11", "bodyId": 1, "html": "<p>Ten</p>", "base": "abc"})");
    EXPECT_EQ(kept.status(), 200);
    EXPECT_EQ(rows(hers.get("desk/getDrafts")),
              R"([[11,"aa","en","aa.en.01","Walks",1,"<p>Ten</p>","abc","2026-06-15T12:00:00"]])");
    ApiClient other = loggedIn("ben", "127.0.0.2");
    EXPECT_EQ(rows(other.get("desk/getDrafts")), "[]");
    EXPECT_EQ(rows(loggedIn("sa", "127.0.0.3").get("desk/getDrafts")), "[]");
}

TEST_P(ApiDesk, ARefusalHasItsSentence) {
    const ApiReply reply = loggedIn().post("desk/ask", R"({"pageIdent": "11"})");
    EXPECT_EQ(reply.kind(), "not-held") << reply.raw.body;
    EXPECT_EQ(reply.text("/detail"), "Nobody else has this page.");
}

TEST_P(ApiDesk, WhatIsNotLiveIsClosedWhereOneDoesNotWork) {
    ApiClient hers = loggedIn();
    const std::string draft = R"({"pageIdent": "21", "bodyId": 1, "html": "x", "base": ""})";
    EXPECT_EQ(hers.post("desk/saveDraft", draft).status(), 403);
    EXPECT_EQ(hers.post("desk/ask", R"({"pageIdent": "21"})").status(), 403);
    EXPECT_EQ(hers.get("cManager/getPage?pageIdent=21&mode=D").status(), 403);
    EXPECT_EQ(hers.get("cManager/getPage?pageIdent=11&mode=D").status(), 200);
    const ApiReply batch = hers.batch(
        R"({"on": "cManager", "set": "pgPageId", "to": 21}, {"on": "cManager", "set": "pgNodeId", "to": "aa.en.01"},
           {"on": "cManager", "do": "torvex_preparePage", "with": {"mode": "D"}})");
    EXPECT_EQ(batch.status(), 403);
    EXPECT_EQ(batch.at("/call"), 2);
}

}  // namespace
}  // namespace torvex
