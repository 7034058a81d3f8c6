#include "platform/db/ScopeMemory.h"

#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

constexpr std::string_view question = "which?";
constexpr std::string_view otherQuestion = "where?";

std::string answerOf(ScopeMemory& memory, std::string_view asked, std::string_view about) {
    const std::string* answer = memory.find(asked, about);
    return answer == nullptr ? "unknown" : *answer;
}

TEST(ScopeMemory, KnowsWhatWasKeptByQuestionAndSubject) {
    ScopeMemory memory;
    EXPECT_EQ(answerOf(memory, question, "1"), "unknown");
    memory.keep(question, "1", "one", {});
    memory.keep(question, "2", "", {});
    EXPECT_EQ(answerOf(memory, question, "1"), "one");
    EXPECT_EQ(answerOf(memory, question, "2"), "");
    EXPECT_EQ(answerOf(memory, question, "3"), "unknown");
    EXPECT_EQ(answerOf(memory, otherQuestion, "1"), "unknown");
}

TEST(ScopeMemory, WhatIsRememberedCountsAsReadFromTheSameTables) {
    ScopeMemory memory;
    TableSet tables;
    tables.set(7);
    memory.keep(question, "1", "one", tables);
    EXPECT_TRUE(memory.tablesRead().none());
    answerOf(memory, question, "1");
    EXPECT_EQ(memory.tablesRead(), tables);
}

TEST(ScopeMemory, TellsWhatIsReadWithinFromWhatWasReadBefore) {
    ScopeMemory memory;
    memory.tablesRead().set(1);
    {
        const ReadsOf reads(memory);
        memory.tablesRead().set(2);
        EXPECT_TRUE(reads.tables().test(2));
        EXPECT_FALSE(reads.tables().test(1));
    }
    EXPECT_TRUE(memory.tablesRead().test(1));
    EXPECT_TRUE(memory.tablesRead().test(2));
}

TEST(ScopeMemory, KeepsTheLatest) {
    ScopeMemory memory;
    for (int i = 0; i < 100; ++i) memory.keep(question, std::to_string(i), "kept", {});
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

TEST(LastingMemory, HoldsUntilAnotherStateIsRead) {
    LastingMemory memory;
    memory.readsState(1);
    memory.keep("a", {"one", {}});
    memory.readsState(1);
    ASSERT_NE(memory.find("a"), nullptr);
    EXPECT_EQ(memory.find("a")->text, "one");
    EXPECT_EQ(memory.find("b"), nullptr);
    memory.readsState(2);
    EXPECT_EQ(memory.find("a"), nullptr);
}

TEST(LastingMemory, TakesNoMoreThanItMay) {
    LastingMemory memory;
    const std::string large(300 * 1024, 'x');
    memory.keep("a", {large, {}});
    memory.keep("b", {large, {}});
    EXPECT_EQ(memory.find("a"), nullptr);
    ASSERT_NE(memory.find("b"), nullptr);
    memory.keep("c", {large + large, {}});
    EXPECT_EQ(memory.find("c"), nullptr);
    EXPECT_NE(memory.find("b"), nullptr);
}

/// What is made of a count that lies in the database.
class LastingAnswers : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        connection().execute("create table torvex_lasting (number integer)");
        connection().execute("insert into torvex_lasting (number) values (1)");
    }
    /// Counts how often it was made, too.
    std::string asked(const std::string& key = "k") {
        const ReadScope scope(connection());
        number();
        return rememberedWhileUnchanged(connection(), key, [this] {
            ++made_;
            return number();
        });
    }
    std::string number() {
        auto rows = connection().query("select number from torvex_lasting");
        rows.next();
        return rows.text("number");
    }
    int made_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, LastingAnswers, test::bothEngines(), test::engineName);

TEST_P(LastingAnswers, AreMadeOnceForManyScopesWhereTheEngineTellsChanges) {
    EXPECT_EQ(asked(), "1");
    EXPECT_EQ(asked(), "1");
    EXPECT_EQ(made_, connection().engine() == Engine::Sqlite ? 1 : 2);
    asked("other");
    EXPECT_EQ(made_, connection().engine() == Engine::Sqlite ? 2 : 3);
}

TEST_P(LastingAnswers, EndWithAChangeOfTheSameConnection) {
    asked();
    connection().execute("update torvex_lasting set number = 2");
    EXPECT_EQ(asked(), "2");
}

TEST_P(LastingAnswers, EndWithAChangeOfAnotherConnection) {
    asked();
    {
        const auto other = openAnother();
        other->execute("update torvex_lasting set number = 3");
    }
    EXPECT_EQ(asked(), "3");
}

TEST_P(LastingAnswers, AreNotUsedBeforeTheScopeHasReadAnything) {
    asked();
    {
        const auto other = openAnother();
        other->execute("update torvex_lasting set number = 4");
    }
    const ReadScope scope(connection());
    EXPECT_EQ(rememberedWhileUnchanged(connection(), "k", [this] { return number(); }), "4");
}

}  // namespace
}  // namespace torvex::db
