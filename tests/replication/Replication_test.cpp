#include "replication/Replication.h"

#include <filesystem>
#include <fstream>
#include <future>
#include <gmock/gmock.h>

#include "platform/files/DiskFileSystem.h"
#include "support/SiteTest.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// A mount that hangs until it is let go; shared with a thread that may outlive the test.
struct Hanging {
    std::promise<void> letGo;
    std::shared_future<void> free = letGo.get_future().share();
    std::string share;
};

/// An acting server in a folder of its own, and the shares of others mounted beside it, on a real disk.
class ReplicationTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        fs::create_directories(install() + "wwwroot/documents");
        fs::create_directories(folder_.path() + "/mounts");
        host.application.set("torvex_install_path", install());
        host.application.set("torvex_loadBalancing_shareName", " www ");
        host.application.set("torvex_replication_root", folder_.path() + "/mounts");
        disk_ = std::make_unique<DiskFileSystem>(std::vector<std::string>{install()});
        put(install() + "wwwroot/documents/x.txt", "new");
    }
    void TearDown() override {
        if (hanging_) hanging_->letGo.set_value();
        SiteTest::TearDown();
    }

    std::string install() const { return folder_.path() + "/a/"; }
    std::string document() const { return install() + "wwwroot/documents/x.txt"; }
    std::string share(const std::string& server) const {
        return folder_.path() + "/mounts/" + server + "/www/";
    }
    /// A server's row, and its share.
    void server(const std::string& name) {
        serverWithoutShare(name);
        fs::create_directories(share(name));
    }
    void serverWithoutShare(const std::string& name) { row("TORVEX_SERVERS", {{"serverName", " " + name}}); }
    void hang(const std::string& name) {
        hanging_ = std::make_shared<Hanging>();
        hanging_->share = share(name);
        hanging_->share.pop_back();
    }

    static void put(const std::string& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
    }
    static std::string contentOf(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        if (!stream) return "nothing there";
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static std::vector<std::string> namesIn(const std::string& folder) {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            names.push_back(fs::relative(entry.path(), folder).string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    HostContext context() {
        const Services seen{host.application, *disk_,    host.clock, host.http, host.xml,
                            host.database,    host.hits, shares_,    host.log};
        return {seen, host.request, host.response, host.session};
    }
    bool file(const std::string& path, FileChange change) {
        HostContext seen = context();
        return replicateFile(seen, path, change);
    }
    bool folder(const std::string& path, FolderChange change) {
        HostContext seen = context();
        return replicateFolder(seen, path, change);
    }

  private:
    TemporaryFolder folder_;
    std::unique_ptr<DiskFileSystem> disk_;
    std::shared_ptr<Hanging> hanging_;
    ServerShares shares_{[this](const std::string& share, const std::string& install) {
        const auto hanging = hanging_;
        if (hanging && hanging->share == share) hanging->free.wait();
        return openDiskShare(share, install);
    }};
};
INSTANTIATE_TEST_SUITE_P(Engines, ReplicationTest, bothEngines(), engineName);

TEST_P(ReplicationTest, WithoutAShareNameNothingHappensAndTheDatabaseIsNotAsked) {
    server("b");
    host.application.set("torvex_loadBalancing_shareName", "  ");
    host.database.target = nullptr;
    EXPECT_FALSE(file(document(), FileChange::Add));
    EXPECT_FALSE(file(document(), FileChange::Remove));
    EXPECT_FALSE(folder(install() + "wwwroot", FolderChange::Make));
    EXPECT_FALSE(folder(install() + "wwwroot", FolderChange::Remove));
    EXPECT_THAT(namesIn(share("b")), IsEmpty());
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, AFileGoesToEveryOtherServerWithItsChainOfFolders) {
    server("b");
    server("c");
    EXPECT_TRUE(file(document(), FileChange::Add));
    for (const auto* name : {"b", "c"}) {
        EXPECT_THAT(namesIn(share(name)),
                    ElementsAre("wwwroot", "wwwroot/documents", "wwwroot/documents/x.txt"));
        EXPECT_EQ(contentOf(share(name) + "wwwroot/documents/x.txt"), "new");
    }
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, BackslashesAndBlanksAreAsGood) {
    server("b");
    std::string path = document();
    std::replace(path.begin(), path.end(), '/', '\\');
    EXPECT_TRUE(file("  " + path + " ", FileChange::Add));
    EXPECT_EQ(contentOf(share("b") + "wwwroot/documents/x.txt"), "new");
}

TEST_P(ReplicationTest, TheOwnServerIsSkippedWhateverItsCase) {
    std::string own = ownServerName();
    ASSERT_FALSE(own.empty());
    std::transform(own.begin(), own.end(), own.begin(), [](char c) { return std::toupper(c); });
    server(own);
    EXPECT_TRUE(file(document(), FileChange::Add));
    EXPECT_THAT(namesIn(share(own)), IsEmpty());
}

TEST_P(ReplicationTest, WhatLiesOutsideOfTheInstallationStays) {
    server("b");
    host.database.target = nullptr;
    const std::string top = install().substr(0, install().size() - 2);
    put(top + "secret.txt", "secret");
    for (const std::string& path :
         {top + "secret.txt", install() + "../secret.txt", install() + "wwwroot/../../secret.txt",
          std::string("/etc/passwd"), std::string("wwwroot/documents/x.txt"), install() + "..",
          install().substr(0, install().size() - 1) + "bc/x.txt"}) {
        EXPECT_FALSE(file(path, FileChange::Add)) << path;
        EXPECT_FALSE(file(path, FileChange::Remove)) << path;
        EXPECT_FALSE(folder(path, FolderChange::Make)) << path;
        EXPECT_FALSE(folder(path, FolderChange::Remove)) << path;
    }
    EXPECT_THAT(namesIn(share("b")), IsEmpty());
}

TEST_P(ReplicationTest, AFileWithoutAFolderOrANameIsNone) {
    server("b");
    host.database.target = nullptr;
    for (const std::string& path : {std::string(), std::string("  "), std::string("x.txt"),
                                    install() + "wwwroot/documents/", std::string("/")}) {
        EXPECT_FALSE(file(path, FileChange::Add)) << path;
    }
    EXPECT_FALSE(folder("  ", FolderChange::Make));
}

TEST_P(ReplicationTest, AFileThatIsThereIsReplacedOnlyWhenAskedFor) {
    server("b");
    fs::create_directories(share("b") + "wwwroot/documents");
    put(share("b") + "wwwroot/documents/x.txt", "old");
    EXPECT_TRUE(file(document(), FileChange::Add));
    EXPECT_EQ(contentOf(share("b") + "wwwroot/documents/x.txt"), "old");
    EXPECT_TRUE(file(document(), FileChange::Replace));
    EXPECT_EQ(contentOf(share("b") + "wwwroot/documents/x.txt"), "new");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, AFileIsRemovedThereAndOneThatIsntThereIsNoFailure) {
    server("b");
    server("c");
    fs::create_directories(share("b") + "wwwroot/documents");
    put(share("b") + "wwwroot/documents/x.txt", "old");
    EXPECT_TRUE(file(document(), FileChange::Remove));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("wwwroot", "wwwroot/documents"));
    EXPECT_THAT(namesIn(share("c")), IsEmpty()) << "removing makes no folders";
    EXPECT_EQ(contentOf(document()), "new");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, WildCardsRemoveTheFilesOfTheFolderThatMatch) {
    server("b");
    server("c");
    fs::create_directories(share("b") + "wwwroot/documents/sub");
    for (const auto* name : {"a.txt", "b.txt", "c.doc", "sub/a.txt"}) {
        put(share("b") + "wwwroot/documents/" + name, "old");
    }
    EXPECT_TRUE(file(install() + "wwwroot/documents/?.txt", FileChange::Remove));
    EXPECT_THAT(namesIn(share("b") + "wwwroot/documents"), ElementsAre("c.doc", "sub", "sub/a.txt"));
    EXPECT_TRUE(file(install() + "wwwroot/documents/*.*", FileChange::Remove));
    EXPECT_THAT(namesIn(share("b") + "wwwroot/documents"), ElementsAre("sub", "sub/a.txt"));
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, AFolderIsMadeWithItsChainAndWithoutItsFiles) {
    server("b");
    EXPECT_TRUE(folder(install() + "wwwroot/documents", FolderChange::Make));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("wwwroot", "wwwroot/documents"));
    EXPECT_TRUE(folder(install() + "wwwroot/documents/", FolderChange::Make));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("wwwroot", "wwwroot/documents"));
}

TEST_P(ReplicationTest, AFolderIsRemovedWithAllThatIsInIt) {
    server("b");
    fs::create_directories(share("b") + "wwwroot/documents/sub");
    put(share("b") + "wwwroot/documents/sub/a.txt", "old");
    EXPECT_TRUE(folder(install() + "wwwroot/documents/", FolderChange::Remove));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("wwwroot"));
    EXPECT_TRUE(folder(install() + "wwwroot/documents", FolderChange::Remove));
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(ReplicationTest, TheInstallationItselfIsNeverRemovedThere) {
    server("b");
    put(share("b") + "torvex.toml", "");
    EXPECT_TRUE(folder(install(), FolderChange::Remove));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("torvex.toml"));
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_P(ReplicationTest, ServersThatAreGoneOrBrokenOrHangDontKeepTheOthersFromIt) {
    serverWithoutShare("b");
    server("c");
    put(share("c") + "wwwroot", "a file where a folder should be");
    server("d");
    hang("d");
    server("e");
    host.session.set("torvex_scriptTimeout_long", 0.3);
    EXPECT_TRUE(file(document(), FileChange::Add));
    EXPECT_EQ(contentOf(share("e") + "wwwroot/documents/x.txt"), "new");
    EXPECT_THAT(namesIn(share("c")), ElementsAre("wwwroot"));
    EXPECT_THAT(
        host.log.lines,
        ElementsAre(
            AllOf(StartsWith("server \"b\": wwwroot/documents/x.txt was not copied: "),
                  HasSubstr("No such file or directory"), EndsWith(". Do it there by hand.")),
            StartsWith("server \"c\": wwwroot/documents/x.txt was not copied: "),
            "server \"d\": wwwroot/documents/x.txt was not copied: no answer within 0.3 seconds. Do it "
            "there by hand."));
}

TEST_P(ReplicationTest, TheWaitWithoutProgressIsASetting) {
    server("b");
    hang("b");
    host.application.set("torvex_replication_wait", 0.2);
    EXPECT_TRUE(folder(install() + "wwwroot/documents", FolderChange::Remove));
    EXPECT_THAT(host.log.lines, ElementsAre("server \"b\": folder wwwroot/documents/ was not removed: no "
                                            "answer within 0.2 seconds. Do it there by hand."));
}

TEST_P(ReplicationTest, WhatCantBeWrittenLeavesNothingHalfDone) {
    server("b");
    fs::create_directories(share("b") + "wwwroot/documents/x.txt/sub");
    EXPECT_TRUE(file(document(), FileChange::Replace));
    EXPECT_THAT(namesIn(share("b") + "wwwroot/documents"), ElementsAre("x.txt", "x.txt/sub"));
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_P(ReplicationTest, AFileThatIsntThereIsNotCopied) {
    server("b");
    EXPECT_TRUE(file(install() + "wwwroot/none.txt", FileChange::Add));
    EXPECT_THAT(namesIn(share("b")), ElementsAre("wwwroot"));
    EXPECT_THAT(host.log.lines, ElementsAre(StartsWith("server \"b\": wwwroot/none.txt was not copied: ")));
}

TEST_P(ReplicationTest, NamesThatLeadOutOfTheRootReachNoServer) {
    const std::string mounts = host.application.text("torvex_replication_root");
    for (const auto* name : {"..", ".", "../mounts/b", "b/../b", "b\\x", ""}) serverWithoutShare(name);
    fs::create_directories(mounts + "/b/www");
    EXPECT_TRUE(file(document(), FileChange::Add));
    EXPECT_THAT(namesIn(mounts), ElementsAre("b", "b/www"));
    EXPECT_EQ(host.log.lines.size(), 6U);

    host.log.lines.clear();
    connection().execute("delete from TORVEX_SERVERS");
    serverWithoutShare("b");
    for (const auto* name : {"..", "../b/www", "a/b", "."}) {
        host.application.set("torvex_loadBalancing_shareName", name);
        EXPECT_TRUE(file(document(), FileChange::Add)) << name;
    }
    EXPECT_THAT(namesIn(mounts), ElementsAre("b", "b/www"));
    EXPECT_EQ(host.log.lines.size(), 4U);
}

TEST_P(ReplicationTest, LinksOutOfAShareAreNotFollowed) {
    server("b");
    const std::string elsewhere = install().substr(0, install().size() - 2) + "elsewhere";
    fs::create_directories(elsewhere + "/documents");
    fs::create_symlink(elsewhere, share("b") + "wwwroot");
    put(elsewhere + "/documents/x.txt", "theirs");
    EXPECT_TRUE(file(document(), FileChange::Replace));
    EXPECT_TRUE(file(document(), FileChange::Remove));
    EXPECT_EQ(contentOf(elsewhere + "/documents/x.txt"), "theirs");
}

TEST_P(ReplicationTest, WithoutARootNoServerCanBeReached) {
    server("b");
    host.application.set("torvex_replication_root", "");
    EXPECT_TRUE(file(document(), FileChange::Add));
    EXPECT_THAT(namesIn(share("b")), IsEmpty());
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("torvex_replication_root")));
}

TEST_P(ReplicationTest, ManyChangesGoTogether) {
    server("b");
    HostContext seen = context();
    Replication replication(seen);
    EXPECT_TRUE(replication.addFolder(install() + "baseTemplates/aa", FolderChange::Make));
    EXPECT_TRUE(replication.addFile(document(), FileChange::Add));
    EXPECT_FALSE(replication.addFile("/elsewhere/x", FileChange::Add));
    EXPECT_THAT(namesIn(share("b")), IsEmpty());
    replication.run();
    EXPECT_THAT(namesIn(share("b")), ElementsAre("baseTemplates", "baseTemplates/aa", "wwwroot",
                                                 "wwwroot/documents", "wwwroot/documents/x.txt"));
}

TEST_P(ReplicationTest, TheRequestMayTakeLongMeanwhileAndTheNormalTimeAfterwards) {
    server("b");
    host.session.set("torvex_scriptTimeout_normal", 77);
    HostContext seen = context();
    EXPECT_TRUE(replicateFile(seen, document(), FileChange::Add));
    EXPECT_EQ(seen.scriptTimeout, 77);
}

TEST_P(ReplicationTest, ServersThatCantBeListedAreAnError) {
    drop("TORVEX_SERVERS");
    EXPECT_TRUE(errorOf([&] { file(document(), FileChange::Add); }).starts_with(chain({"replicateFile !"})));
    EXPECT_TRUE(
        errorOf([&] { folder(install(), FolderChange::Make); }).starts_with(chain({"replicateFolder !"})));
}

TEST_P(ReplicationTest, WhatAServerHasMissedIsKeptUntilItHasIt) {
    HostContext seen = context();
    server("b");
    serverWithoutShare("c");
    const auto missed = [&] {
        std::vector<std::string> lines;
        auto rows = connection().query(
            "select serverName, path, task, moment from TORVEX_SERVERS_MISSED order by missedId");
        while (rows.next())
            lines.push_back(rows.text("serverName") + "|" + rows.text("path") + "|" + rows.text("task") +
                            "|" + rows.value("moment").toText());
        return lines;
    };
    EXPECT_TRUE(torvex::replicateFile(seen, document(), FileChange::Replace));
    EXPECT_TRUE(torvex::replicateFile(seen, document(), FileChange::Replace));
    EXPECT_THAT(missed(), ElementsAre("c|wwwroot/documents/x.txt|write|2026-06-15T12:00:00"));
    EXPECT_TRUE(torvex::replicateFolder(seen, install() + "wwwroot/old", FolderChange::Remove));
    EXPECT_THAT(missed(), testing::SizeIs(2));
    fs::create_directories(share("c"));
    EXPECT_TRUE(torvex::replicateFile(seen, document(), FileChange::Replace));
    EXPECT_THAT(missed(), ElementsAre("c|wwwroot/old/|remove|2026-06-15T12:00:00"));
}

}  // namespace
}  // namespace torvex::test
