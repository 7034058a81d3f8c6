#include "cli/IndexCommand.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fmt/format.h>
#include <ostream>
#include <thread>

#include "cli/OpenInstallation.h"
#include "cli/Progress.h"
#include "cli/StopSignals.h"
#include "cli/UsageError.h"
#include "search/catalogue/CatalogueServer.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Reader.h"
#include "search/catalogue/Upkeep.h"

namespace torvex::cli {

namespace {

using namespace std::chrono_literals;
using catalogue::Differences;
using catalogue::Upkeep;

std::string counted(std::size_t number, std::string_view what) {
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

/// One run of the command on the catalogue of an installation.
class IndexRun {
  public:
    IndexRun(OpenInstallation& opened, const Terminal& terminal, const std::atomic<bool>& isStopped)
        : terminal_(terminal),
          isStopped_(isStopped),
          parts_(opened.upkeepParts()),
          upkeep_(std::in_place, parts_) {}

    ExitCode check() {
        const Differences differences = patiently([&] { return upkeep_->compare(); });
        upkeep_->rest();
        terminal_.out << fmt::format("{} new or changed, {} gone\n",
                                     counted(differences.changed.size(), "file"), differences.gone.size());
        return differences.count() == 0 ? ExitCode::Ok : ExitCode::Failed;
    }

    ExitCode takeIn(bool all) {
        Differences differences = patiently([&] {
            if (all) upkeep_->beginAnew();
            return upkeep_->compare();
        });
        const std::size_t count = differences.count();
        upkeep_->plan(std::move(differences));
        workOff(count);
        const std::size_t left = upkeep_->planned();
        upkeep_->rest();
        terminal_.out << fmt::format("Took in {} of {}\n", counted(count - left, "change"), count);
        if (left > 0) terminal_.out << "Stopped; \"torvex index\" goes on\n";
        return left == 0 ? ExitCode::Ok : ExitCode::Failed;
    }

  private:
    /// Waits for who writes, and removes what is damaged.
    template <typename Work>
    auto patiently(Work work) -> decltype(work()) {
        for (bool isTold = false;;) {
            try {
                return work();
            } catch (const catalogue::BusyError&) {
                if (isStopped_) throw;
                if (!isTold) terminal_.err << "waiting for the server, which is writing the catalogue\n";
                isTold = true;
                std::this_thread::sleep_for(100ms);
            } catch (const catalogue::DamagedError& error) {
                terminal_.err << fmt::format("torvex: {}; it is made anew\n", error.what());
                upkeep_.emplace(parts_);
                catalogue::removeDamaged(parts_.folder);
            }
        }
    }

    void workOff(std::size_t count) {
        Progress progress(terminal_, count, "files");
        std::size_t shown = 0;
        bool isMore = true;
        while (isMore && !isStopped_) {
            isMore = upkeep_->step(300ms);
            for (; shown < count - upkeep_->planned(); ++shown) progress.step();
        }
        progress.clear();
    }

    const Terminal& terminal_;
    const std::atomic<bool>& isStopped_;
    const catalogue::UpkeepParts parts_;
    std::optional<Upkeep> upkeep_;
};

ExitCode serveCatalogue(const std::string& at, OpenInstallation& opened, StopSignals& signals,
                        const Terminal& terminal) {
    ListenAddress address;
    try {
        address = parseListenAddress(at);
    } catch (const Error& error) {
        throw UsageError(fmt::format("--serve: {}", error.what()));
    }
    const catalogue::Reader reader(opened.upkeepParts().holdings.root());
    catalogue::CatalogueServer server(reader, address.address, address.port);
    terminal.err << fmt::format("offering the catalogue at {}:{}\n", address.address, server.port())
                 << std::flush;
    signals.watch([&] { server.stop(); });
    server.run();
    return ExitCode::Ok;
}

}  // namespace

ExitCode index(const IndexOptions& options, const Environment& environment, const Terminal& terminal) {
    StopSignals signals;
    OpenInstallation opened(Installation::open(options.install, environment));
    if (options.serve) return serveCatalogue(*options.serve, opened, signals, terminal);
    std::atomic<bool> isStopped = false;
    signals.watch([&] { isStopped = true; });
    IndexRun run(opened, terminal, isStopped);
    return options.check ? run.check() : run.takeIn(options.all);
}

}  // namespace torvex::cli
