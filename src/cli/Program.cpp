#include <fmt/format.h>
#include <ostream>
#include <sodium.h>

#include "cli/CommandLine.h"
#include "cli/UsageError.h"
#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

/// Carries out whichever command was asked for.
struct Runner {
    const Environment& environment;
    const Terminal& terminal;

    ExitCode operator()(const InitOptions& options) const { return init(options, environment, terminal); }
    ExitCode operator()(const ServeOptions& options) const { return serve(options, environment); }
    ExitCode operator()(const SqlOptions& options) const { return sql(options, environment, terminal); }
    ExitCode operator()(const MigrateOptions& options) const {
        return migrate(options, environment, terminal);
    }
    ExitCode operator()(const CallFrameOptions& options) const {
        return call(options, environment, terminal);
    }
    ExitCode operator()(const SnapshotOptions& options) const {
        return snapshot(options, environment, terminal);
    }
    ExitCode operator()(const IndexOptions& options) const { return index(options, environment, terminal); }
    ExitCode operator()(const ImportUsersOptions& options) const {
        return importUsers(options, environment, terminal);
    }
    ExitCode operator()(const ExportUsersOptions& options) const {
        return exportUsers(options, environment, terminal);
    }
    ExitCode operator()(const ReferenceOptions& options) const { return reference(options, terminal); }
    ExitCode operator()(const ShowText& show) const {
        terminal.out << show.text;
        return ExitCode::Ok;
    }
};

void complain(std::ostream& err, const std::string& description) {
    err << "torvex: " << text::replaceAll(description, "\r\n", "\n") << '\n';
}

}  // namespace

ExitCode runProgram(int count, const char* const* arguments, const Environment& environment,
                    const Terminal& terminal) try {
    if (sodium_init() < 0) throw Error("the system gives no random numbers");
    const ExitCode code = std::visit(Runner{environment, terminal}, parseCommandLine(count, arguments));
    // A full disk or a closed pipe shows here at the latest.
    if (!terminal.out.flush()) throw Error("the output can't be written");
    return code;
} catch (const UsageError& error) {
    complain(terminal.err, error.what());
    return ExitCode::WrongUsage;
} catch (const std::exception& error) {
    complain(terminal.err, error.what());
    return ExitCode::Failed;
}

}  // namespace torvex::cli
