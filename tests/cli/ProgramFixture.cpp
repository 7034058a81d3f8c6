#include "cli/ProgramFixture.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace torvex::test {

std::string ProgramTest::output(const Arguments& arguments, const std::string& input) {
    const ProgramResult result = run(arguments, input);
    EXPECT_EQ(result.code, 0) << result.err;
    return result.out;
}

bool ProgramTest::exists(const std::string& name) const {
    return std::filesystem::exists(folder() + '/' + name);
}

std::string ProgramTest::content(const std::string& name) const {
    std::ifstream stream(folder() + '/' + name, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

ProgramDatabaseTest::ProgramDatabaseTest() {
    if (GetParam() != db::Engine::PostgreSql) return;
    postgres_ = makeEmptyTestDatabase(db::Engine::PostgreSql);
    database = postgres_->connectionText();
}

std::string ProgramDatabaseTest::init(const Arguments& further) {
    Arguments arguments{"init", site(), "--database", database};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return output(arguments);
}

std::string ProgramDatabaseTest::sql(const std::string& statement) {
    return output({"sql", "--install", site(), "--json", statement});
}

}  // namespace torvex::test
