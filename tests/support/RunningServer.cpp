#include "support/RunningServer.h"

#include <filesystem>
#include <fstream>
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>

#include "support/Certificate.h"

namespace torvex::test {

class RunningServer::Lines final : public spdlog::sinks::base_sink<std::mutex> {
  public:
    std::vector<std::string> all() {
        const std::scoped_lock guard(mutex_);
        return lines_;
    }

  private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        lines_.emplace_back(message.payload.data(), message.payload.size());
    }
    void flush_() override {}

    std::vector<std::string> lines_;
};

RunningServer::RunningServer()
    : lines_(std::make_shared<Lines>()),
      logger_(std::make_shared<spdlog::logger>("test", lines_)),
      log_(*logger_) {
    options.loops = 2;
    options.workers = 4;
}

RunningServer::~RunningServer() {
    stop();
}

void RunningServer::makeCertificate() {
    certificates_.emplace();
    options.tls = {certificates_->path() + "/server.crt", certificates_->path() + "/server.key"};
    writeCertificate(options.tls.certificate, options.tls.key);
}

void RunningServer::start() {
    if (protocol != Protocol::Http1) makeCertificate();
    server = std::make_unique<HttpServer>(options, services ? *services : host.services(), log_,
                                          ServedPages{startSession, pages, guards, interface});
    thread_ = std::thread([this] { server->run(); });
}

void RunningServer::stop() {
    if (!thread_.joinable()) return;
    server->stop();
    thread_.join();
}

std::vector<std::string> RunningServer::logged() const {
    return lines_->all();
}

void PublicFolder::write(const std::string& name, std::string_view bytes) const {
    const std::filesystem::path file = std::filesystem::path(path()) / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

}  // namespace torvex::test
