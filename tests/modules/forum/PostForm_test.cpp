#include "modules/forum/PostForm.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const PostForm good{"Moss", "It grows.", "Ann", "ann@a.example"};

std::vector<PostFault> faults(const PostForm& form, Asked name = Asked::MustBeGiven,
                              Asked email = Asked::No) {
    ForumRecord forum;
    forum.visitorName = name;
    forum.visitorEmail = email;
    return faultsOf(form, forum);
}

std::string characters(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "ü";
    return text;
}

TEST(PostForm, AWholeFormHasNoFault) {
    EXPECT_THAT(faults(good), IsEmpty());
    EXPECT_THAT(faults(good, Asked::MustBeGiven, Asked::MustBeGiven), IsEmpty());
}

TEST(PostForm, EveryFaultIsToldAtOnce) {
    EXPECT_THAT(faults({}, Asked::MustBeGiven, Asked::MustBeGiven),
                ElementsAre(PostFault::TitleMissing, PostFault::TextMissing, PostFault::AuthorMissing,
                            PostFault::EmailMissing));
}

TEST(PostForm, LengthsCountCharacters) {
    EXPECT_THAT(faults({characters(120), characters(8000), characters(60), ""}), IsEmpty());
    EXPECT_THAT(faults({characters(121), characters(8001), characters(61), ""}),
                ElementsAre(PostFault::TitleTooLong, PostFault::TextTooLong, PostFault::AuthorTooLong));
}

TEST(PostForm, NameAndAddressAreDemandedAsTheForumAsks) {
    const PostForm without{"Moss", "It grows.", "", ""};
    EXPECT_THAT(faults(without), ElementsAre(PostFault::AuthorMissing));
    EXPECT_THAT(faults(without, Asked::MayBeGiven, Asked::MayBeGiven), IsEmpty());
    EXPECT_THAT(faults(without, Asked::No, Asked::MustBeGiven), ElementsAre(PostFault::EmailMissing));
}

TEST(PostForm, AnAddressThatIsGivenMustBeOne) {
    for (const std::string email :
         {"ann", "ann@", "@a.example", "a b@c.example", "a@b.example\nBcc: c@d.example", "<a@b.example>",
          "a@b.example,c@d.example"}) {
        EXPECT_THAT(faults({"Moss", "It grows.", "Ann", email}), ElementsAre(PostFault::EmailMalformed))
            << email;
    }
}

TEST(PostForm, WhereTheForumSaysSoEveryPostWaits) {
    ForumRecord forum;
    EXPECT_TRUE(needsModerator(good, forum));
    forum.showsAtOnce = true;
    EXPECT_FALSE(needsModerator(good, forum));
}

TEST(PostForm, AWordOfTheListMakesItWait) {
    ForumRecord forum;
    forum.showsAtOnce = true;
    forum.words = "casino, cheap pills ,ÖL,";
    EXPECT_FALSE(needsModerator({"Casinos", "uncheap pills", "", ""}, forum));
    EXPECT_TRUE(needsModerator({"The CASINO!", "x", "", ""}, forum));
    EXPECT_TRUE(needsModerator({"x", "buy cheap pills", "", ""}, forum));
    EXPECT_TRUE(needsModerator({"x", "x", "casino", ""}, forum));
    EXPECT_TRUE(needsModerator({"x", "das öl.", "", ""}, forum));
}

TEST(PostForm, AListWithoutWordsHoldsNobodyBack) {
    for (const auto* list : {"", ",", " , ,"}) EXPECT_FALSE(holdsWordOf(list, "any text, with commas"));
}

TEST(PostForm, ManyLinksMakeItWait) {
    ForumRecord forum;
    forum.showsAtOnce = true;
    std::string text = "http://a.example http://b.example http://c.example";
    EXPECT_FALSE(needsModerator({"x", text, "", ""}, forum));
    EXPECT_TRUE(needsModerator({"x", text + " http://d.example", "", ""}, forum));
}

TEST(PostForm, EachFaultLeadsToItsField) {
    EXPECT_EQ(fieldOf(PostFault::TitleTooLong), PostField::Title);
    EXPECT_EQ(fieldOf(PostFault::TextMissing), PostField::Text);
    EXPECT_EQ(fieldOf(PostFault::AuthorMissing), PostField::Author);
    EXPECT_EQ(fieldOf(PostFault::EmailMalformed), PostField::Email);
    EXPECT_EQ(fieldOf(PostFault::TooMany), PostField::Whole);
}

}  // namespace
}  // namespace torvex
