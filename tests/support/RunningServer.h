#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/HttpServer.h"
#include "host/LineLog.h"
#include "support/RawHttpClient.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace spdlog {
class logger;
}

namespace torvex::test {

/// A server on a free port of this machine for as long as the object lives. Fill `options`, `pages`, `guards`
/// and `startSession`, then `start`.
class RunningServer {
  public:
    RunningServer();
    ~RunningServer();

    void page(std::string path, PageHandler handler) {
        pages.push_back({std::move(path), std::move(handler)});
    }
    void form(std::string path, PageHandler handler) {
        pages.push_back({std::move(path), std::move(handler), methods::form});
    }

    void start();
    /// Waits until it has stopped.
    void stop();

    RawHttpClient client() const { return clientFrom("127.0.0.1"); }
    RawHttpClient clientFrom(const std::string& address) const {
        return RawHttpClient(server->port(), address, protocol);
    }
    /// What was logged, a line each.
    std::vector<std::string> logged() const;

    /// What its clients speak. Over TLS, the server has a certificate that it has signed itself.
    Protocol protocol = Protocol::Http1;
    ServerOptions options;
    std::vector<PageRoute> pages;
    std::vector<FileGuard> guards;
    std::shared_ptr<const BuiltInterface> interface;
    std::function<void(HostContext&)> startSession = [](HostContext&) {};
    TestHost host;
    std::optional<Services> services{};  ///< in place of the host's, when the test has its own
    std::unique_ptr<HttpServer> server;

  private:
    class Lines;
    void makeCertificate();

    std::shared_ptr<Lines> lines_;
    std::shared_ptr<spdlog::logger> logger_;
    LineLog log_;
    std::optional<TemporaryFolder> certificates_{};
    std::thread thread_;
};

/// A temporary folder of public files.
class PublicFolder {
  public:
    const std::string& path() const { return folder_.path(); }
    /// Writes a file, with the folders it needs.
    void write(const std::string& name, std::string_view bytes) const;

  private:
    TemporaryFolder folder_;
};

}  // namespace torvex::test
