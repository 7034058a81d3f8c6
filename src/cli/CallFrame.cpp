#include "cli/CallFrame.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <ostream>
#include <thread>

#include "cli/OpenInstallation.h"
#include "installation/Setup.h"
#include "operations/calls/Batch.h"
#include "operations/register/Reference.h"

namespace torvex::cli {

namespace {

/// Tells a server beside this program of changed files while a batch goes on.
class QueueFeeder {
  public:
    explicit QueueFeeder(OpenInstallation& opened)
        : thread_([&opened](const std::stop_token& stop) {
              std::mutex mutex;
              std::condition_variable_any waiting;
              std::unique_lock lock(mutex);
              while (!waiting.wait_for(lock, stop, pause, [] { return false; }) && !stop.stop_requested())
                  opened.queueChangedFiles();
          }) {}

  private:
    static constexpr std::chrono::milliseconds pause{200};

    std::jthread thread_;
};

}  // namespace

ExitCode call(const CallFrameOptions& options, const Environment& environment, const Terminal& terminal) {
    OpenInstallation opened(Installation::open(options.install, environment));
    // The values alone: a server beside this program keeps its authors logged in.
    opened.runWithoutVisitor([](HostContext& host) { Setup(host).deriveApplication(); });
    const auto classes = operations::makeRegister();
    operations::BatchEngine engine(classes, opened.services());
    if (options.batch) {
        const QueueFeeder feeder(opened);
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
