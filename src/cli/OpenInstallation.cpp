#include "cli/OpenInstallation.h"

#include <algorithm>
#include <fmt/format.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <thread>

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/net/PublicAddress.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Queue.h"

namespace torvex::cli {

namespace {

std::unique_ptr<spdlog::logger> makeLog(const std::string& level) {
    auto log = std::make_unique<spdlog::logger>("torvex", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    log->set_pattern("%Y-%m-%d %H:%M:%S.%e %l %v");
    log->set_level(spdlog::level::from_str(level));
    log->flush_on(spdlog::level::info);
    return log;
}

HttpLimits fetchLimits(const FeedSettings& feeds) {
    HttpLimits limits;
    limits.step = limits.total = feeds.time;
    if (!feeds.privateAddresses) limits.mayReach = isPublicAddress;
    return limits;
}

/// One source leaves some of the places that feeds have to the others.
SharingLimits sharingLimits(const Settings& settings) {
    SharingLimits limits;
    limits.waitingForSource = std::max(settings.server.mostWorkers * 3 / 16, 1U);
    limits.patience = settings.feeds.time;
    return limits;
}

XmlWorkersLimits workersLimits(const FeedSettings& feeds) {
    XmlWorkersLimits limits;
    limits.workers = std::clamp(std::thread::hardware_concurrency(), 2U, 4U);
    limits.patience = feeds.time;
    return limits;
}

}  // namespace

OpenInstallation::OpenInstallation(Installation opened)
    : installation(std::move(opened)),
      database(db::makeDatabase()),
      files(std::vector<std::string>{installation.folder().string()}),
      changedFiles({installation.folder().string(), installation.settings().paths.documents}),
      watchedFiles(files, [this](const std::string& path) { changedFiles.note(path); }),
      feedPlaces(std::max(installation.settings().server.mostWorkers / 4, 1U)),
      fetcher(fetchLimits(installation.settings().feeds)),
      http(fetcher, feedPlaces, sharingLimits(installation.settings())),
      xml("/proc/self/exe", feedPlaces, workersLimits(installation.settings().feeds)),
      directHits(*database, application),
      shares(openDiskShare),
      log(makeLog(installation.settings().logLevel)),
      operatorLog(*log),
      extractor("/proc/self/exe") {
    installation.openCurrentDatabase(*database);
    installation.startValues(application);
}

OpenInstallation::~OpenInstallation() {
    queueChangedFiles();
}

catalogue::UpkeepParts OpenInstallation::upkeepParts() {
    const std::string folder = installation.folder().string();
    return {catalogue::databaseFolder(folder),
            {folder, installation.settings().paths.documents},
            files,
            extractor,
            operatorLog,
            clock,
            [this] { return installation.openDatabase(*database); }};
}

void OpenInstallation::queueChangedFiles() noexcept try {
    const std::vector<std::string> paths = changedFiles.take();
    if (!paths.empty()) catalogue::enqueue(*installation.openDatabase(*database), clock, paths);
} catch (const std::exception& error) {
    operatorLog.warn(
        fmt::format("the search hears of changed files at its next comparison only: {}", error.what()));
}

Services OpenInstallation::services() {
    return {application, watchedFiles, clock, http, xml, *database, directHits, shares, operatorLog};
}

void OpenInstallation::runWithoutVisitor(const std::function<void(HostContext&)>& work) {
    Request request;
    Response response;
    Session session("");
    HostContext host{services(), request, response, session};
    work(host);
}

}  // namespace torvex::cli
