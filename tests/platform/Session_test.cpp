#include "platform/Session.h"

#include <gtest/gtest.h>

namespace torvex::test {
namespace {

struct Kept final : SessionObject {
    explicit Kept(int value) : number(value) {}
    int number;
};

TEST(Session, KeepsAnObjectByItsKeyInAnyCase) {
    Session session("id");
    EXPECT_EQ(session.object("torvex_search_query"), nullptr);
    session.setObject("torvex_search_query", std::make_shared<Kept>(1));
    session.setObject("other", std::make_shared<Kept>(2));
    const auto kept = std::dynamic_pointer_cast<const Kept>(session.object("TORVEX_Search_Query"));
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->number, 1);
}

TEST(Session, ALaterObjectTakesThePlaceOfAnEarlierOne) {
    Session session("id");
    const auto first = std::make_shared<Kept>(1);
    session.setObject("key", first);
    session.setObject("KEY", std::make_shared<Kept>(2));
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(std::dynamic_pointer_cast<const Kept>(session.object("key"))->number, 2);
}

TEST(Session, LetsAnObjectGo) {
    Session session("id");
    const auto object = std::make_shared<Kept>(1);
    session.setObject("key", object);
    session.setObject("key", nullptr);
    EXPECT_EQ(session.object("key"), nullptr);
    EXPECT_EQ(object.use_count(), 1);
}

TEST(Session, ObjectsAndValuesHaveKeysOfTheirOwn) {
    Session session("id");
    session.set("key", "value");
    session.setObject("key", std::make_shared<Kept>(1));
    EXPECT_EQ(session.text("key"), "value");
    session.setObject("key", nullptr);
    EXPECT_EQ(session.text("key"), "value");
}

}  // namespace
}  // namespace torvex::test
