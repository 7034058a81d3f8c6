#include <fstream>
#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;

class Program : public ProgramTest {};

TEST_F(Program, VersionIsShown) {
    EXPECT_THAT(output({"--version"}), testing::StartsWith("torvex 0."));
}

TEST_F(Program, HelpNamesEveryCommandWithExamples) {
    const std::string help = output({"--help"});
    for (const auto* command : {"init", "serve", "sql", "call", "migrate", "reference", "Examples:"}) {
        EXPECT_THAT(help, HasSubstr(command));
    }
}

TEST_F(Program, EveryCommandHasHelpWithExamples) {
    for (const auto* command : {"init", "serve", "sql", "call", "migrate", "reference"}) {
        EXPECT_THAT(output({command, "--help"}), HasSubstr(std::string("torvex ") + command)) << command;
        EXPECT_THAT(output({command, "--help"}), HasSubstr("Examples:")) << command;
    }
}

TEST_F(Program, WrongUsageGivesTwoAndNamesTheHelp) {
    const std::vector<Arguments> wrong = {{},
                                          {"dance"},
                                          {"serve", "--prot", "80"},
                                          {"init"},
                                          {"init", "site", "--demo", "--empty"},
                                          {"init", "site", "--demo", "--title", "x"},
                                          {"call"},
                                          {"migrate", "further"}};
    for (const Arguments& arguments : wrong) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.code, 2) << result.err;
        EXPECT_THAT(result.err, HasSubstr("--help"));
        EXPECT_EQ(result.out, "");
    }
    EXPECT_FALSE(exists("site"));
}

TEST_F(Program, WithoutAnInstallationSaysHowToNameOne) {
    for (const auto* command : {"serve", "migrate"}) {
        const ProgramResult result = run({command});
        EXPECT_EQ(result.code, 1);
        EXPECT_THAT(result.err, HasSubstr("--install DIR"));
        EXPECT_THAT(result.err, HasSubstr("torvex init"));
    }
}

TEST_F(Program, FolderWithoutSettingsIsNoInstallation) {
    const ProgramResult result = run({"sql", "--install", folder(), "select 1"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, HasSubstr("there is no installation in " + folder()));
}

TEST_F(Program, InstallationIsFoundByVariableAndByCurrentFolder) {
    output({"init", ".", "--empty", "--admin-password", "word"});
    EXPECT_EQ(output({"sql", "--json", "select 1 as one"}), "{\"one\":1}\n");
    const TemporaryFolder elsewhere;
    RunningProgram program(elsewhere.path(), {"sql", "--json", "select 2 as two"}, "",
                           {{"TORVEX_INSTALL", folder()}});
    const ProgramResult result = program.wait();
    EXPECT_EQ(result.out, "{\"two\":2}\n") << result.err;
}

TEST_F(Program, BrokenSettingsAreNamedWithTheirLine) {
    output({"init", site(), "--empty", "--admin-password", "word"});
    std::ofstream(site() + "/torvex.toml", std::ios::app) << "\n[server]\nlisten = 3\n";
    const ProgramResult result = run({"serve", "--install", site()});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, HasSubstr("torvex.toml:"));
}

TEST_F(Program, ReferenceListsTheClasses) {
    EXPECT_THAT(output({"reference"}), HasSubstr("cServer"));
}

TEST_F(Program, OperationIsCalledOnTheInstallation) {
    output({"init", site(), "--admin-password", "word"});
    EXPECT_EQ(output({"call", "--install", site(), "cServer.getNodeId", "pageId=2"}), "ws.en.01\n");
}

TEST_F(Program, UnknownOperationFailsWithOne) {
    output({"init", site(), "--admin-password", "word"});
    EXPECT_EQ(run({"call", "--install", site(), "cServer.dance"}).code, 1);
}

TEST_F(Program, BatchAnswersEachLine) {
    output({"init", site(), "--admin-password", "word"});
    const std::string line = R"({"calls":[{"on":"cServer","do":"getNodeId","with":{"pageId":3}}]})";
    EXPECT_THAT(output({"call", "--install", site(), "--batch"}, line + "\n"), HasSubstr("[\"ws.en.02\"]"));
}

TEST_F(Program, BatchOnAnUnknownClassIsAnsweredWithAnError) {
    output({"init", site(), "--admin-password", "word"});
    const ProgramResult result = run({"call", "--install", site(), "--batch"},
                                     R"({"calls":[{"on":"dancer","do":"turn"}]})"
                                     "\n"
                                     R"({"calls":[{"on":"cServer","do":"getNodeId","with":{"pageId":3}}]})");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("there is no class \\\"dancer\\\"; the classes are cServer, cManager"));
    EXPECT_THAT(result.out, HasSubstr("[\"ws.en.02\"]"));
}

TEST_F(Program, CallDoesNotEndTheSessionsOfAuthors) {
    output({"init", site(), "--admin-password", "word"});
    output({"sql", "--install", site(), "update TORVEX_LOGINS set sessionId = 'held'"});
    output({"call", "--install", site(), "cServer.getNodeId", "pageId=2"});
    EXPECT_EQ(output({"sql", "--install", site(), "--json", "select sessionId from TORVEX_LOGINS"}),
              "{\"sessionId\":\"held\"}\n");
}

}  // namespace
}  // namespace torvex::test
