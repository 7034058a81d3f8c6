#include "cli/CallCommand.h"

#include <sstream>

#include "operations/calls/BatchFixture.h"

namespace torvex::cli {
namespace {

class CallTest : public operations::BatchFixture {
  protected:
    int call(const std::string& target, std::vector<std::string> arguments, bool json = false,
             const std::string& login = "") {
        return runCall(*engine_, {target, std::move(arguments), login, json}, out_, err_);
    }

    std::ostringstream out_;
    std::ostringstream err_;
};

INSTANTIATE_TEST_SUITE_P(Engines, CallTest, test::bothEngines(), test::engineName);

TEST_P(CallTest, PrintsATextAsALine) {
    EXPECT_EQ(call("cServer.urlencode", {"queryString=a=1&b=c d"}), 0);
    EXPECT_EQ(out_.str(), "a=1&b=c+d\n");
    EXPECT_EQ(err_.str(), "");
}

TEST_P(CallTest, PrintsNothingForAnEmptyResult) {
    EXPECT_EQ(call("HTMLTemplate.removeTags", {}), 0);
    EXPECT_EQ(out_.str(), "");
}

TEST_P(CallTest, PrintsAGridAsATable) {
    connection().execute(
        "insert into TORVEX_METADATA (metaData_site, metaData_name, metaData_description) "
        "values ('ab', 'author', 'who'), ('ab', 'description', 'what')");
    EXPECT_EQ(call("cServer.getMetaTags", {"site=ab"}), 0);
    EXPECT_NE(out_.str().find("  author       who\n"), std::string::npos) << out_.str();
    EXPECT_NE(out_.str().find("  description  what\n"), std::string::npos) << out_.str();
}

TEST_P(CallTest, PrintsTheAnswerAsJsonIfWanted) {
    EXPECT_EQ(call("cServer.isPage", {"pageIdent=999999"}, true), 0);
    EXPECT_EQ(out_.str(), "{\"results\":[false]}\n");
}

TEST_P(CallTest, PrintsWhatTheOperationAnsweredTheBrowser) {
    EXPECT_EQ(call("HTMLTemplate.extractBlock", {"tag=missing"}), 0);
    EXPECT_NE(out_.str().find("missing"), std::string::npos);
}

TEST_P(CallTest, AnErrorIsOneAndItsChainOnTheErrorStream) {
    EXPECT_EQ(call("Probe.fail", {}), 1);
    EXPECT_EQ(out_.str(), "");
    EXPECT_TRUE(err_.str().starts_with("Error in function fail !\n")) << err_.str();
    EXPECT_TRUE(err_.str().ends_with("\n"));
}

TEST_P(CallTest, RunsAsAnAuthor) {
    connection().execute("insert into TORVEX_LOGINS (username, name) values ('anna', 'Anna')");
    EXPECT_EQ(call("Probe.now", {}, false, "anna"), 0);
    EXPECT_EQ(call("Probe.now", {}, false, "nobody"), 1);
    EXPECT_EQ(err_.str(), "there is no login \"nobody\"\n");
}

TEST_P(CallTest, AnOperationIsNamedWithItsClass) {
    EXPECT_EQ(call("getPage", {}), 1);
    EXPECT_EQ(err_.str(), "an operation is named as CLASS.OPERATION, not getPage\n");
}

TEST_P(CallTest, AnArgumentIsGivenByName) {
    EXPECT_EQ(call("cServer.isPage", {"12"}), 1);
    EXPECT_EQ(err_.str(), "an argument is given as name=value, not 12\n");
}

}  // namespace
}  // namespace torvex::cli
