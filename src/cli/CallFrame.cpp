#include "cli/CallFrame.h"

#include <ostream>

#include "cli/CallCommand.h"
#include "cli/Services.h"
#include "installation/Setup.h"
#include "operations/calls/Batch.h"
#include "operations/register/Reference.h"

namespace torvex::cli {

ExitCode call(const CallFrameOptions& options, const Environment& environment, const Terminal& terminal) {
    Services services(Installation::open(options.install, environment));
    // The values alone: a server beside this program keeps its authors logged in.
    services.runWithoutVisitor([](HostContext& host) { Setup(host).deriveApplication(); });
    const auto classes = operations::makeRegister();
    operations::BatchEngine engine(
        classes, {services.application, services.files, services.clock, services.http, *services.database,
                  services.directHits, services.shares, services.operatorLog});
    if (options.batch) {
        operations::runBatch(engine, terminal.in, terminal.out);
        return ExitCode::Ok;
    }
    const CallOptions one{options.target, options.arguments, options.login, options.json};
    return runCall(engine, one, terminal.out, terminal.err) == 0 ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode reference(const Terminal& terminal) {
    terminal.out << operations::referenceMarkdown(operations::makeRegister());
    return ExitCode::Ok;
}

}  // namespace torvex::cli
