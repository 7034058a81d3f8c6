// Every list of the register, on the demo: its grids are what its row says.

#include <map>
#include <optional>
#include <set>

#include "cli/OpenInstallation.h"
#include "cli/ProgramFixture.h"
#include "installation/Setup.h"
#include "operations/calls/CallRun.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"

namespace torvex::operations {
namespace {

/// What stands for an argument of this name that must be given.
Value sampleFor(const Argument& argument) {
    static const std::map<std::string, Value, std::less<>> samples{
        {"site", "bg"}, {"lang", "en"}, {"pageIdent", "bg.en.01"}, {"nodeId", "bg.en.01"}, {"listType", 2}};
    const auto found = samples.find(argument.name);
    return found == samples.end() ? Value(1) : found->second;
}

bool fits(const Value& cell, ColumnType type) {
    if (cell.isEmpty()) return true;
    switch (type) {
        case ColumnType::Text:
            return cell.isText();
        case ColumnType::Number:
            return cell.isNumber();
        case ColumnType::Boolean:
            return cell.isBoolean();
        case ColumnType::Date:
            return cell.isDate();
    }
    return false;
}

void expectColumns(const ResultGrid& grid, const std::vector<Column>& columns) {
    ASSERT_GE(grid.columns(), columns.size());
    for (std::size_t row = 0; row < grid.rows(); ++row) {
        for (std::size_t column = 0; column < grid.columns(); ++column) {
            const Value& cell = grid.at(column, row);
            if (column >= columns.size()) {
                EXPECT_TRUE(cell.isEmpty()) << "column " << column << " isn't named";
            } else {
                EXPECT_TRUE(fits(cell, columns[column].type)) << columns[column].name;
            }
        }
    }
}

class GridColumnsTest : public test::ProgramDatabaseTest {
  protected:
    void SetUp() override {
        init({"--demo", "--admin-password", "word"});
        sql("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 1, "
            "lockingDate = '2026-06-15 12:00:00' where pageId = 1");
        sql("insert into TORVEX_SERVERS (serverName, serverDescription, serverIP) "
            "values ('east', 'In the east', '10.0.0.2')");
        sql("insert into TORVEX_IMAGES (img_site, img_title, img_filename, img_size, img_width, img_height) "
            "values ('bg', 'A palm', 'palm.jpg', 10, 20, 30)");
        sql("update TORVEX_PAGES_DESIGN set type = 'F' where nodeId = 'bg.en.99.01'");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, GridColumnsTest, test::bothEngines(), test::engineName);

TEST_P(GridColumnsTest, EveryListGivesTheColumnsThatItsRowNames) {
    const Environment environment = [](const std::string&) { return std::nullopt; };
    cli::OpenInstallation opened(Installation::open(site(), environment));
    const Register classes = makeRegister();
    std::set<std::string> filled;
    opened.runWithoutVisitor([&](HostContext& host) {
        torvex::Setup(host).deriveApplication();
        torvex::Setup(host).initSession();
        for (const auto& entry : classes.classes()) {
            for (const auto& operation : entry.operations) {
                if (operation.columns.empty()) continue;
                SCOPED_TRACE(entry.name + "." + operation.name);
                Call call{entry.name, operation.name, {}};
                for (const auto& argument : operation.arguments) {
                    if (!argument.defaultValue)
                        call.arguments.emplace_back(argument.name, sampleFor(argument));
                }
                const Value result = CallRun(classes, host, CommandLine{}).run(call).result;
                if (!result.isGrid()) continue;
                filled.insert(operation.name);
                expectColumns(result.grid(), operation.columns);
            }
        }
    });
    for (const auto* name :
         {"getMetaTags", "getAdvList", "getRoleAdvancedRights", "getServerList", "getSites", "getLanguages",
          "getCharsets", "getWebsites", "getPageList", "getPageGroups", "getLockList", "getTemplateList",
          "getBaseTemplateList", "getStylesheetList", "getFolderGroups", "getSystemFolders", "getImageList",
          "getDocumentList"}) {
        EXPECT_TRUE(filled.contains(name)) << name << " has no rows here: nothing was tested";
    }
}

}  // namespace
}  // namespace torvex::operations
