#include "pages/Token.h"

#include <gtest/gtest.h>

#include "platform/Session.h"

namespace torvex {
namespace {

TEST(PageToken, ASessionHasOneOfItsOwn) {
    Session session("a");
    Session other("b");
    const std::string token = pageToken::of(session);
    EXPECT_EQ(token.size(), 43U);
    EXPECT_EQ(pageToken::of(session), token);
    EXPECT_TRUE(pageToken::isOf(session, token));
    EXPECT_NE(pageToken::of(other), token);
    EXPECT_FALSE(pageToken::isOf(other, token));
}

TEST(PageToken, OneThatWasNeverMadeIsNotMetByNothing) {
    const Session session("a");
    EXPECT_FALSE(pageToken::isOf(session, ""));
}

TEST(PageToken, ItEndsWithTheLogin) {
    Session session("a");
    const std::string visitors = pageToken::of(session);
    session.set("torvex_username", "anna");
    EXPECT_FALSE(pageToken::isOf(session, visitors));
    const std::string annas = pageToken::of(session);
    EXPECT_NE(annas, visitors);
    session.set("torvex_username", "basil");
    EXPECT_FALSE(pageToken::isOf(session, annas));
}

TEST(PageToken, ARenewedOneIsAnother) {
    Session session("a");
    const std::string before = pageToken::of(session);
    pageToken::renew(session);
    EXPECT_FALSE(pageToken::isOf(session, before));
    EXPECT_NE(pageToken::of(session), before);
}

TEST(PageToken, NoValueOfTheSessionHasIt) {
    Session session("a");
    pageToken::of(session);
    EXPECT_TRUE(session.ownValues().empty());
}

}  // namespace
}  // namespace torvex
