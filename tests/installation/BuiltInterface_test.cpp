#include "installation/BuiltInterface.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "support/RunningServer.h"
#include "support/SourceFolder.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

TEST(BuiltInterface, TheProgramCarriesWhatWasBuilt) {
    const fs::path built = fs::path(test::sourceFolder()) / "ui/dist";
    const BuiltInterface interface;
    EXPECT_TRUE(interface.isFixed());
    EXPECT_EQ(interface.isEmpty(), !fs::exists(built));
    if (!fs::exists(built)) return;
    for (const auto& entry : fs::recursive_directory_iterator(built)) {
        if (!entry.is_regular_file()) continue;
        const std::string name = fs::relative(entry.path(), built).generic_string();
        const auto bytes = interface.file(name);
        ASSERT_TRUE(bytes) << name;
        EXPECT_TRUE(*bytes == contentOf(entry.path())) << name;
    }
}

class InterfaceInAFolder : public testing::Test {
  protected:
    test::PublicFolder folder_;
    BuiltInterface interface_{fs::path(folder_.path()) / "dist"};
};

TEST_F(InterfaceInAFolder, IsReadAnewEachTime) {
    EXPECT_FALSE(interface_.file("main-abcdefgh.js"));
    folder_.write("dist/main-abcdefgh.js", "one");
    EXPECT_EQ(*interface_.file("main-abcdefgh.js"), "one");
    folder_.write("dist/main-abcdefgh.js", "two");
    EXPECT_EQ(*interface_.file("main-abcdefgh.js"), "two");
    EXPECT_FALSE(interface_.isFixed());
    EXPECT_FALSE(interface_.isEmpty());
}

TEST_F(InterfaceInAFolder, NothingOutsideItIsRead) {
    folder_.write("dist/a.js", "a");
    folder_.write("secret.js", "secret");
    const std::string absolute = folder_.path() + "/secret.js";
    for (const std::string& name : {std::string("../secret.js"), absolute, std::string(""), std::string("."),
                                    std::string("a.js/../../secret.js"), std::string("a.js\0x", 6)})
        EXPECT_FALSE(interface_.file(name)) << name;
}

}  // namespace
}  // namespace torvex
