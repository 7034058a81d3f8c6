#include "cli/SnapshotCommand.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <ostream>

#include "cli/OpenInstallation.h"
#include "cli/Progress.h"
#include "installation/Setup.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/LivePages.h"
#include "search/SnapshotFiles.h"
#include "search/Snapshots.h"
#include "search/StraySnapshots.h"

namespace torvex::cli {

namespace {

/// So many failures have a cause in common, and the rest would only repeat it.
constexpr std::size_t mostFailures = 100;

/// What went wrong, told as it happens.
class Failures {
  public:
    Failures(const Terminal& terminal, Progress* progress) : terminal_(terminal), progress_(progress) {}

    void operator()(const std::string& nodeId, const std::string& reason) {
        if (progress_ != nullptr) progress_->clear();
        terminal_.err << fmt::format("torvex: page {}: {}\n", nodeId, text::replaceAll(reason, "\r\n", ": "));
        if (++count_ == mostFailures) throw Error("too many pages failed; the others are as they were");
    }

    std::size_t count() const { return count_; }
    ExitCode code() const { return count_ == 0 ? ExitCode::Ok : ExitCode::Failed; }

  private:
    const Terminal& terminal_;
    Progress* progress_;
    std::size_t count_ = 0;
};

std::string counted(std::size_t number, std::string_view what) {
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

ExitCode renewAll(HostContext& host, db::Connection& connection, const Terminal& terminal) {
    std::size_t written = 0;
    Progress progress(terminal, static_cast<std::size_t>(countLivePages(connection)), "pages");
    Failures failures(terminal, &progress);
    Snapshots snapshots(host, connection, std::ref(failures));
    snapshots.begin();
    visitLivePages(connection, [&](const LivePage& page) {
        snapshots.renew(page);
        if (!page.isFolder()) ++written;
        progress.step();
    });
    snapshots.finish();
    progress.clear();
    const std::size_t removed = removeStraySnapshots(host, connection);
    terminal.out << fmt::format("Wrote {} to {}\n",
                                counted(written - std::min(written, failures.count()), "snapshot"),
                                snapshotRoot(host));
    if (removed > 0) terminal.out << fmt::format("Removed {} of pages that are gone\n", removed);
    return failures.code();
}

ExitCode renewOne(HostContext& host, db::Connection& connection, const std::string& ident,
                  const Terminal& terminal) {
    const PageIdentity asked = identify(connection, ident);
    if (!asked.isValid()) throw Error(fmt::format("there is no page \"{}\"", ident));
    std::optional<LivePage> found;
    visitLivePage(connection, asked.nodeId, [&](const LivePage& page) { found = page; });
    if (!found) {
        throw Error(
            fmt::format("page {} ({}) has no snapshot: only published pages outside of system branches do",
                        text::fromNumber(asked.pageId), asked.nodeId));
    }
    Failures failures(terminal, nullptr);
    Snapshots snapshots(host, connection, std::ref(failures));
    snapshots.begin();
    snapshots.renew(*found);
    snapshots.finish();
    if (failures.count() > 0) return failures.code();
    const std::string file = snapshotFile(host, found->nodeId);
    terminal.out << (found->isFolder() ? "A folder has no snapshot; there is none at " : "Wrote ") << file
                 << '\n';
    return ExitCode::Ok;
}

}  // namespace

ExitCode snapshot(const SnapshotOptions& options, const Environment& environment, const Terminal& terminal) {
    OpenInstallation opened(Installation::open(options.install, environment));
    ExitCode code = ExitCode::Ok;
    opened.runWithoutVisitor([&](HostContext& host) {
        Setup(host).deriveApplication();
        const auto connection = opened.installation.openCurrentDatabase(*opened.database);
        code = options.all ? renewAll(host, *connection, terminal)
                           : renewOne(host, *connection, options.page, terminal);
    });
    return code;
}

}  // namespace torvex::cli
