#include "cli/OpenInstallation.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"

namespace torvex::cli {

namespace {

std::unique_ptr<spdlog::logger> makeLog(const std::string& level) {
    auto log = std::make_unique<spdlog::logger>("torvex", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    log->set_pattern("%Y-%m-%d %H:%M:%S.%e %l %v");
    log->set_level(spdlog::level::from_str(level));
    log->flush_on(spdlog::level::info);
    return log;
}

}  // namespace

OpenInstallation::OpenInstallation(Installation opened)
    : installation(std::move(opened)),
      database(db::makeDatabase()),
      files(std::vector<std::string>{installation.folder().string()}),
      directHits(*database, application),
      shares(openDiskShare),
      log(makeLog(installation.settings().logLevel)),
      operatorLog(*log) {
    installation.openCurrentDatabase(*database);
    installation.startValues(application);
}

OpenInstallation::~OpenInstallation() = default;

Services OpenInstallation::services() {
    return {application, files, clock, http, *database, directHits, shares, operatorLog};
}

void OpenInstallation::runWithoutVisitor(const std::function<void(HostContext&)>& work) {
    Request request;
    Response response;
    Session session("");
    HostContext host{services(), request, response, session};
    work(host);
}

}  // namespace torvex::cli
