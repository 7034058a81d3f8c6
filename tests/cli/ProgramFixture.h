#pragma once

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

    const std::string& folder() const { return folder_.path(); }
    std::string site() const { return folder() + "/site"; }
    bool exists(const std::string& name) const;
    std::string content(const std::string& name) const;

  private:
    TemporaryFolder folder_;
};

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
