#include "cli/CallFrame.h"

#include <ostream>

#include "cli/OpenInstallation.h"
#include "installation/Setup.h"
#include "operations/calls/Batch.h"
#include "operations/register/Reference.h"

namespace torvex::cli {

ExitCode call(const CallFrameOptions& options, const Environment& environment, const Terminal& terminal) {
    OpenInstallation opened(Installation::open(options.install, environment));
    // The values alone: a server beside this program keeps its authors logged in.
    opened.runWithoutVisitor([](HostContext& host) { Setup(host).deriveApplication(); });
    const auto classes = operations::makeRegister();
    operations::BatchEngine engine(classes, opened.services());
    if (options.batch) {
        operations::runBatch(engine, terminal.in, terminal.out);
        return ExitCode::Ok;
    }
    return runCall(engine, options.one, terminal.out, terminal.err) == 0 ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode reference(const ReferenceOptions& options, const Terminal& terminal) {
    const auto classes = operations::makeRegister();
    terminal.out << (options.json ? operations::referenceJson(classes)
                                  : operations::referenceMarkdown(classes));
    return ExitCode::Ok;
}

}  // namespace torvex::cli
