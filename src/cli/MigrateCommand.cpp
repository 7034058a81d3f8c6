#include "cli/MigrateCommand.h"

#include <fmt/format.h>
#include <ostream>

#include "cli/InterfaceRenewal.h"
#include "installation/Installation.h"
#include "installation/SchemaFiles.h"
#include "platform/DateTime.h"

namespace torvex::cli {

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
    if (done.applied.empty() && renewed.isNothing()) {
        terminal.out << "The database is up to date; nothing was changed\n";
    }
    return ExitCode::Ok;
}

}  // namespace torvex::cli
