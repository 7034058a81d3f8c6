#include "cli/MigrateCommand.h"

#include <fmt/format.h>
#include <ostream>

#include "cli/InterfaceRenewal.h"
#include "cli/OpenInstallation.h"
#include "installation/Installation.h"
#include "installation/SchemaFiles.h"
#include "installation/Setup.h"
#include "platform/DateTime.h"
#include "platform/db/ConnectionSource.h"
#include "search/designs/PageIndex.h"

namespace torvex::cli {

namespace {

/// What the program's own steps add for pages that were there before them.
std::size_t indexPages(const MigrateOptions& options, const Environment& environment) {
    OpenInstallation opened(Installation::open(options.install, environment));
    std::size_t pages = 0;
    opened.runWithoutVisitor([&](HostContext& host) {
        Setup(host).deriveApplication();
        pages = indexMissingPages(host, *db::openOwn(host));
    });
    return pages;
}

}  // namespace

ExitCode migrate(const MigrateOptions& options, const Environment& environment, const Terminal& terminal) {
    const auto installation = Installation::open(options.install, environment);
    const auto& settings = installation.settings().database;
    const auto database = db::makeDatabase();
    const SystemClock clock;
    const Migration done = installedSchema().migrate(*database, clock, installation.databaseText(),
                                                     settings.user, settings.password);
    if (!done.backup.empty()) terminal.out << fmt::format("The database as it was is in {}\n", done.backup);
    for (const std::string& step : done.applied) terminal.out << fmt::format("Applied {}\n", step);
    const Renewed renewed = renewInterface(installation, *installation.openDatabase(*database));
    if (renewed.words > 0) terminal.out << fmt::format("Added {} words of the interface\n", renewed.words);
    if (renewed.files > 0) terminal.out << fmt::format("Renewed {} files of the program\n", renewed.files);
    const std::size_t pages = indexPages(options, environment);
    if (pages > 0) terminal.out << fmt::format("Took in the words and links of {} pages\n", pages);
    if (done.applied.empty() && renewed.isNothing() && pages == 0) {
        terminal.out << "The database is up to date; nothing was changed\n";
    }
    return ExitCode::Ok;
}

}  // namespace torvex::cli
