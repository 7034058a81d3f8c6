#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/RunningProgram.h"
#include "support/TestDatabase.h"

namespace torvex::test {

/// The base of tests that drive the program from outside, in a folder of their own.
class ProgramTest : public testing::Test {
  protected:
    using Arguments = std::vector<std::string>;

    ProgramResult run(const Arguments& arguments, const std::string& input = "",
                      const std::map<std::string, std::string>& variables = {}) {
        return RunningProgram(folder(), arguments, input, variables).wait();
    }
    /// Runs what must succeed; gives its output.
    std::string output(const Arguments& arguments, const std::string& input = "");

    /// Serves `site()` at a free port, unless `listen` names one, and comes back when it does.
    std::unique_ptr<RunningProgram> serve(const std::string& listen = "127.0.0.1:0",
                                          const std::map<std::string, std::string>& variables = {});
    /// Puts lines at the beginning of a section of the settings.
    void addSettings(const std::string& section, const std::string& lines);

    const std::string& folder() const { return folder_.path(); }
    std::string site() const { return folder() + "/site"; }
    bool exists(const std::string& name) const;
    std::string content(const std::string& name) const;

  private:
    TemporaryFolder folder_;
};

/// "http://127.0.0.1:PORT/", or https, as a server has said; "" when it hasn't.
std::string addressOf(const RunningProgram& server);
std::uint16_t portOf(const std::string& address);
std::uint16_t portOf(const RunningProgram& server);

/// The same on both engines; `database` is what "--database" names.
class ProgramDatabaseTest : public ProgramTest, public testing::WithParamInterface<db::Engine> {
  protected:
    ProgramDatabaseTest();

    std::string init(const Arguments& further = {"--empty", "--admin-password", "word"});
    std::string sql(const std::string& statement);

    std::unique_ptr<TestDatabase> postgres_;
    std::string database = "sqlite:data";
};

}  // namespace torvex::test
