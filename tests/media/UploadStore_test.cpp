#include "media/UploadStore.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/TestDatabase.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = UploadStore::Entrance::Kind;

const sys_seconds noon = sys_days(std::chrono::year(2026) / 6 / 15) + hours(12);

class UploadStoreTest : public testing::Test {
  protected:
    std::string path() const { return folder_.path() + "/uploads"; }
    UploadStore open() const { return UploadStore(path(), {.bytesOfLogin = 1000, .ofLogin = 3}); }
    static UploadPlan plan(std::uint64_t length, int loginId = 7) {
        return {.loginId = loginId,
                .file = {{MediaKind::Images, "aa", "001002"}, "r\xC3\xB6se.gif"},
                .title = "A \"rose\"",
                .replaces = true,
                .length = length,
                .metadata = "site YWE="};
    }
    /// What becomes of a piece that arrives whole.
    static std::optional<Upload> add(UploadStore& store, const std::string& id, std::uint64_t offset,
                                     std::string_view bytes, sys_seconds now = noon) {
        const auto entrance = store.enter(id, offset);
        if (!entrance.writer || !entrance.writer->write(bytes)) return std::nullopt;
        return store.keep(id, entrance.writer->receipt(), now);
    }
    static std::string content(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(path(), none))
            names.push_back(entry.path().filename().string());
        return names;
    }

  private:
    test::TemporaryFolder folder_;
};

TEST_F(UploadStoreTest, AFileComesInPieces) {
    UploadStore store = open();
    const auto begun = store.begin(plan(10), noon);
    ASSERT_TRUE(begun);
    EXPECT_EQ(begun->offset, 0U);
    EXPECT_EQ(add(store, begun->id, 0, "01234")->offset, 5U);
    const auto whole = add(store, begun->id, 5, "56789");
    ASSERT_TRUE(whole);
    EXPECT_TRUE(whole->isWhole());
    EXPECT_EQ(content(store.pathOf(*whole)), "0123456789");
    EXPECT_EQ(store.read(*whole, 2, 4), "2345");
    EXPECT_EQ(store.read(*whole, 8, 100), "89");
}

TEST_F(UploadStoreTest, NumbersCantBeGuessedAndFilesAreNobodyElses) {
    UploadStore store = open();
    const auto one = store.begin(plan(1), noon);
    const auto two = store.begin(plan(1), noon);
    EXPECT_THAT(one->id, testing::MatchesRegex("[0-9a-f]{32}"));
    EXPECT_NE(one->id, two->id);
    struct stat status {};
    ASSERT_EQ(::stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(UploadStoreTest, NothingIsMadeBeforeItIsNeeded) {
    UploadStore store = open();
    EXPECT_FALSE(store.find("x"));
    EXPECT_FALSE(fs::exists(path()));
}

TEST_F(UploadStoreTest, APieceBeginsWhereTheLastOneEnded) {
    UploadStore store = open();
    const std::string id = store.begin(plan(10), noon)->id;
    add(store, id, 0, "01234");
    EXPECT_EQ(store.enter(id, 0).kind, Kind::OtherOffset);
    EXPECT_EQ(store.enter(id, 6).kind, Kind::OtherOffset);
    EXPECT_EQ(store.enter("00000000000000000000000000000000", 0).kind, Kind::Gone);
    EXPECT_EQ(store.enter("../x", 0).kind, Kind::Gone);
    EXPECT_EQ(store.enter(id, 5).room, 5U);
}

TEST_F(UploadStoreTest, NoMoreBytesComeThanWereSaid) {
    UploadStore store = open();
    const std::string id = store.begin(plan(5), noon)->id;
    const auto entrance = store.enter(id, 0);
    EXPECT_FALSE(entrance.writer->write("012345"));
    EXPECT_TRUE(entrance.writer->write("01234"));
    EXPECT_FALSE(entrance.writer->write("5"));
}

TEST_F(UploadStoreTest, BytesThatWerentKeptDontCount) {
    UploadStore store = open();
    const std::string id = store.begin(plan(5), noon)->id;
    store.enter(id, 0).writer->write("xxx");
    EXPECT_EQ(store.find(id)->offset, 0U);
    EXPECT_EQ(add(store, id, 0, "01234")->offset, 5U);
    EXPECT_EQ(content(store.pathOf(*store.find(id))), "01234");
}

TEST_F(UploadStoreTest, ThePieceThatCameLastCounts) {
    UploadStore store = open();
    const std::string id = store.begin(plan(5), noon)->id;
    const auto first = store.enter(id, 0);
    const auto second = store.enter(id, 0);
    EXPECT_FALSE(first.writer->write("xxxxx"));
    EXPECT_TRUE(second.writer->write("012"));
    EXPECT_FALSE(store.keep(id, first.writer->receipt(), noon));
    EXPECT_EQ(store.keep(id, second.writer->receipt(), noon)->offset, 3U);
    EXPECT_FALSE(store.keep(id, second.writer->receipt(), noon)) << "a piece counts once";
    EXPECT_FALSE(second.writer->write("34"));
}

TEST_F(UploadStoreTest, TheNextServerGoesOn) {
    std::string id;
    {
        UploadStore store = open();
        id = store.begin(plan(10), noon)->id;
        add(store, id, 0, "01234", noon + hours(1));
        store.enter(id, 5).writer->write("xx");
    }
    UploadStore store = open();
    const auto found = store.find(id);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, 5U);
    EXPECT_EQ(found->changed, noon + hours(1));
    EXPECT_EQ(found->plan.loginId, 7);
    EXPECT_EQ(found->plan.file.relative(), "001/002/r\xC3\xB6se.gif");
    EXPECT_EQ(found->plan.file.folder.site, "aa");
    EXPECT_EQ(found->plan.file.folder.kind, MediaKind::Images);
    EXPECT_EQ(found->plan.title, "A \"rose\"");
    EXPECT_TRUE(found->plan.replaces);
    EXPECT_EQ(found->plan.metadata, "site YWE=");
    const auto whole = add(store, id, 5, "56789");
    EXPECT_EQ(content(store.pathOf(*whole)), "0123456789");
}

TEST_F(UploadStoreTest, WhatIsOfNoUseIsClearedAway) {
    fs::create_directories(path());
    const std::string id = "0123456789abcdef0123456789abcdef";
    const auto put = [&](const std::string& name, const std::string& bytes) {
        std::ofstream(path() + "/" + name) << bytes;
    };
    put(id + ".part", "bytes without a note");
    put("1" + id.substr(1) + ".json", "{}");
    put("2" + id.substr(1) + ".json", "no note at all");
    put("readme.txt", "somebody else's");
    UploadStore store = open();
    EXPECT_FALSE(store.find(id));
    EXPECT_THAT(files(), testing::ElementsAre("readme.txt"));
}

TEST_F(UploadStoreTest, ANoteThatPromisesMoreThanThereIsIsOfNoUse) {
    std::string id;
    {
        UploadStore store = open();
        id = store.begin(plan(10), noon)->id;
        add(store, id, 0, "01234");
        fs::resize_file(store.pathOf(*store.find(id)), 3);
    }
    EXPECT_FALSE(open().find(id));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(UploadStoreTest, ALoginHasABoundedNumberOfBytesUnderWay) {
    UploadStore store = open();
    EXPECT_FALSE(store.begin(plan(1001), noon));
    const auto first = store.begin(plan(900), noon);
    ASSERT_TRUE(first);
    EXPECT_FALSE(store.begin(plan(101), noon));
    EXPECT_TRUE(store.begin(plan(100), noon));
    EXPECT_TRUE(store.begin(plan(1000, 8), noon)) << "another's don't count";
    store.remove(first->id);
    EXPECT_TRUE(store.begin(plan(900), noon));
}

TEST_F(UploadStoreTest, ALoginHasABoundedNumberOfUploads) {
    UploadStore store = open();
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(store.begin(plan(1), noon));
    EXPECT_FALSE(store.begin(plan(1), noon));
    EXPECT_THAT(files(), SizeIs(6));
}

TEST_F(UploadStoreTest, OneThatIsRemovedLeavesNothing) {
    UploadStore store = open();
    const std::string id = store.begin(plan(10), noon)->id;
    const auto entrance = store.enter(id, 0);
    store.remove(id);
    EXPECT_FALSE(store.find(id));
    EXPECT_FALSE(entrance.writer->write("x"));
    EXPECT_FALSE(store.keep(id, entrance.writer->receipt(), noon));
    EXPECT_THAT(files(), IsEmpty());
    store.remove("../../etc/passwd");
}

TEST_F(UploadStoreTest, OneThatRestsForADayIsRemoved) {
    UploadStore store = open();
    const std::string old = store.begin(plan(10), noon)->id;
    const std::string moved = store.begin(plan(10), noon)->id;
    add(store, moved, 0, "x", noon + hours(1));
    store.removeExpired(noon + hours(24) - std::chrono::seconds(1));
    EXPECT_TRUE(store.find(old));
    store.removeExpired(noon + hours(24));
    EXPECT_FALSE(store.find(old));
    EXPECT_TRUE(store.find(moved));
    EXPECT_THAT(files(), SizeIs(2));
}

TEST_F(UploadStoreTest, OneThatIsBeingWrittenIsntRemoved) {
    UploadStore store = open();
    const std::string id = store.begin(plan(10), noon)->id;
    const auto entrance = store.enter(id, 0);
    store.removeExpired(noon + hours(48));
    EXPECT_TRUE(store.keep(id, entrance.writer->receipt(), noon + hours(48)));
}

}  // namespace
}  // namespace torvex
