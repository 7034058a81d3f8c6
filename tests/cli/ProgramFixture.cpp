#include "cli/ProgramFixture.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "platform/text/Text.h"

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

std::unique_ptr<RunningProgram> ProgramTest::serve(const std::string& listen,
                                                   const std::map<std::string, std::string>& variables) {
    auto program = std::make_unique<RunningProgram>(
        folder(), Arguments{"serve", "--install", site(), "--listen", listen}, "", variables);
    program->waitForError("serving ");
    return program;
}

void ProgramTest::addSettings(const std::string& section, const std::string& lines) {
    const std::string head = "\n[" + section + "]\n";
    const std::string before = content("site/torvex.toml");
    ASSERT_NE(before.find(head), std::string::npos) << section;
    std::ofstream(site() + "/torvex.toml") << text::replaceAll(before, head, head + lines + "\n");
}

std::string addressOf(const RunningProgram& server) {
    const std::string said = server.err();
    std::smatch found;
    return std::regex_search(said, found, std::regex(R"(https?://127\.[0-9.]+:\d+/)")) ? found.str() : "";
}

std::uint16_t portOf(const std::string& address) {
    return static_cast<std::uint16_t>(std::stoi(address.substr(address.rfind(':') + 1)));
}

std::uint16_t portOf(const RunningProgram& server) {
    return portOf(addressOf(server));
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
