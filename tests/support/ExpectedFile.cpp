#include "support/ExpectedFile.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string_view>

#include "support/SourceFolder.h"

namespace torvex::test {

namespace {

std::string pathOf(const std::string& name) {
    return sourceFolder() + "/tests/" + name;
}

bool accepting() {
    const char* accept = std::getenv("TORVEX_ACCEPT");
    return accept != nullptr && std::string_view(accept) == "1";
}

}  // namespace

std::string testFile(const std::string& name) {
    std::ifstream file(pathOf(name), std::ios::binary);
    EXPECT_TRUE(file) << "there is no " << pathOf(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

void expectFile(const std::string& name, const std::string& actual) {
    if (accepting()) {
        std::ofstream(pathOf(name), std::ios::binary) << actual;
        return;
    }
    EXPECT_EQ(actual, testFile(name)) << "in " << name << "; run again with TORVEX_ACCEPT=1 to accept it";
}

}  // namespace torvex::test
