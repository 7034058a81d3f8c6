#include "platform/db/ScopeMemory.h"

#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

constexpr std::string_view question = "which?";
constexpr std::string_view otherQuestion = "where?";

std::string answerOf(const ScopeMemory& memory, std::string_view asked, std::string_view about) {
    const std::string* answer = memory.find(asked, about);
    return answer == nullptr ? "unknown" : *answer;
}

TEST(ScopeMemory, KnowsWhatWasKeptByQuestionAndSubject) {
    ScopeMemory memory;
    EXPECT_EQ(answerOf(memory, question, "1"), "unknown");
    memory.keep(question, "1", "one");
    memory.keep(question, "2", "");
    EXPECT_EQ(answerOf(memory, question, "1"), "one");
    EXPECT_EQ(answerOf(memory, question, "2"), "");
    EXPECT_EQ(answerOf(memory, question, "3"), "unknown");
    EXPECT_EQ(answerOf(memory, otherQuestion, "1"), "unknown");
}

TEST(ScopeMemory, KeepsTheLatest) {
    ScopeMemory memory;
    for (int i = 0; i < 100; ++i) memory.keep(question, std::to_string(i), "kept");
    EXPECT_EQ(answerOf(memory, question, "99"), "kept");
    EXPECT_EQ(answerOf(memory, question, "97"), "kept");
    EXPECT_EQ(answerOf(memory, question, "0"), "unknown");
}

class ScopeMemoryTest : public test::DatabaseTest {
  protected:
    std::string asked() {
        return remembered(connection(), question, "1", [this] { return std::to_string(++count_); });
    }

  private:
    int count_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, ScopeMemoryTest, test::bothEngines(), test::engineName);

TEST_P(ScopeMemoryTest, AConnectionHasOneOnlyWhileItReadsOneState) {
    EXPECT_EQ(connection().memory(), nullptr);
    {
        const ReadScope scope(connection());
        EXPECT_NE(connection().memory(), nullptr);
    }
    EXPECT_EQ(connection().memory(), nullptr);
    connection().beginReading();
    connection().commit();
    EXPECT_EQ(connection().memory(), nullptr);
    const Transaction transaction(connection());
    EXPECT_EQ(connection().memory(), nullptr);
}

TEST_P(ScopeMemoryTest, WithinAScopeAQuestionIsAnsweredOnce) {
    const ReadScope scope(connection());
    EXPECT_EQ(asked(), "1");
    EXPECT_EQ(asked(), "1");
}

TEST_P(ScopeMemoryTest, AnotherScopeBeginsAnew) {
    {
        const ReadScope scope(connection());
        asked();
    }
    const ReadScope scope(connection());
    EXPECT_EQ(asked(), "2");
}

TEST_P(ScopeMemoryTest, OutsideOfAScopeEveryQuestionIsAnswered) {
    EXPECT_EQ(asked(), "1");
    EXPECT_EQ(asked(), "2");
}

}  // namespace
}  // namespace torvex::db
