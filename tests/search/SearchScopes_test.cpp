#include "search/SearchScopes.h"

#include <gmock/gmock.h>

#include "search/SearchError.h"
#include "support/TestHost.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SearchScopesTest : public ::testing::Test {
  protected:
    SearchScopesTest() {
        host.application.set("torvex_docDir", "docs/all/");
        search.page = {20, "aa.bb.09"};
        search.rootPath = "\\Install\\";
        search.pageScopes = "none";
        search.documentScopes = "none";
    }
    /// Paths, with a "+" behind those that are looked through in depth.
    std::vector<std::string> scopes() {
        std::vector<std::string> paths;
        for (const auto& [path, depth] : searchScopes(host.context(), search))
            paths.push_back(path + (depth == catalogue::Depth::Deep ? " +" : ""));
        return paths;
    }

    TestHost host;
    SearchParameters search;
};

TEST_F(SearchScopesTest, NoneIsNowhere) {
    EXPECT_THAT(scopes(), IsEmpty());
}

TEST_F(SearchScopesTest, PagesAreAllSnapshotsOrThoseOfTheSite) {
    for (const auto* all : {"allsites", "", "aa.bb.01++"}) {
        search.pageScopes = all;
        EXPECT_THAT(scopes(), ElementsAre("\\Install\\search\\html\\ +")) << all;
    }
    search.pageScopes = "currentsite";
    EXPECT_THAT(scopes(), ElementsAre("\\Install\\search\\html\\bb\\aa +"));
}

TEST_F(SearchScopesTest, DocumentsAreAllOrThoseOfTheSite) {
    search.documentScopes = "allsites";
    EXPECT_THAT(scopes(), ElementsAre("\\Install\\wwwroot\\docs\\all\\ +"));
    search.documentScopes = "currentsite";
    EXPECT_THAT(scopes(), ElementsAre("\\Install\\wwwroot\\docs\\all\\aa +"));
}

TEST_F(SearchScopesTest, ListedFoldersHaveTheirDepth) {
    for (const auto* folder : {"aa/001", "aa/002", "bb"})
        host.files.createFolder(std::string("/Install/wwwroot/docs/all/") + folder);
    search.documentScopes = " AA\\001 , aa\\002+,, bb++, \\install\\wwwroot\\docs\\all\\bb";
    EXPECT_THAT(
        scopes(),
        ElementsAre("\\Install\\wwwroot\\docs\\all\\aa\\001", "\\Install\\wwwroot\\docs\\all\\aa\\002 +",
                    "\\Install\\wwwroot\\docs\\all\\bb +", "\\Install\\wwwroot\\docs\\all\\bb"));
}

TEST_F(SearchScopesTest, FoldersThatAreGoneAreLeftOut) {
    search.documentScopes = "aa\\001,..\\..\\secret";
    EXPECT_THAT(scopes(), IsEmpty());
    search.pageScopes = "allsites";
    EXPECT_THAT(scopes(), ElementsAre("\\Install\\search\\html\\ +"));
}

TEST_F(SearchScopesTest, TheFoldersOfAnotherServerAreItsOwnAffair) {
    search.isRemote = true;
    search.rootPath = "\\\\box\\share\\";
    search.documentScopes = "aa\\001+";
    EXPECT_THAT(scopes(), ElementsAre("\\\\box\\share\\wwwroot\\docs\\all\\aa\\001 +"));
}

TEST_F(SearchScopesTest, ABrokenDiskIsTold) {
    class Broken final : public FileSystem {
      public:
        bool fileExists(const std::string&) const override { throw Error("broken"); }
        bool folderExists(const std::string&) const override { throw Error("broken"); }
        std::optional<std::string> readText(const std::string&, TextFormat) const override { return {}; }
        std::optional<std::string> readBytes(const std::string&) const override { return {}; }
        std::optional<std::string> readRange(const std::string&, std::uint64_t, std::size_t) const override {
            return {};
        }
        std::optional<std::uint64_t> fileSize(const std::string&) const override { return {}; }
        void writeText(const std::string&, std::string_view, TextFormat) override {}
        void writeBytes(const std::string&, std::string_view) override {}
        void createFolder(const std::string&) override {}
        void copyFile(const std::string&, const std::string&) override {}
        void deleteFile(const std::string&) override {}
        void deleteFolder(const std::string&) override {}
        std::vector<std::string> files(const std::string&) const override { return {}; }
        std::vector<std::string> subfolders(const std::string&) const override { return {}; }
    } broken;
    HostContext context{host.services().with(static_cast<FileSystem&>(broken)), host.request, host.response,
                        host.session};
    search.documentScopes = "aa";
    try {
        searchScopes(context, search);
        ADD_FAILURE() << "no error";
    } catch (const SearchError& thrown) {
        EXPECT_STREQ(thrown.what(), "Error adding document scope !");
    }
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_NE(host.log.lines[0].find("broken"), std::string::npos);
}

}  // namespace
}  // namespace torvex::test
