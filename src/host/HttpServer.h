#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "installation/ServerOptions.h"
#include "pages/PageRoute.h"
#include "platform/Services.h"

namespace torvex {

class LineLog;

/// The HTTP server: listens, answers public files on its event loops and pages on a pool of workers.
class HttpServer {
  public:
    /// Services and log outlive the server. Listens from here on; requests are answered once `run` is called.
    /// Throws `Error` when the address is taken, or the folder or certificate can't be read.
    HttpServer(ServerOptions options, const Services& services, LineLog& log, ServedPages served);
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    /// Waits for pages that still run.
    ~HttpServer();

    std::uint16_t port() const;
    /// Of https beside http; 0 when only one of them is spoken.
    std::uint16_t tlsPort() const;

    /// Serves until `stop`. To be called once.
    void run();
    /// Waits, behind `run`, for pages that still run although nobody gets their answers any more.
    void finish();
    /// Accepts no more, lets running requests finish (up to the stop deadline) and makes `run` return. Safe
    /// from any thread, and to call again; not from a signal handler.
    void stop();

    /// Sessions that are kept at the moment.
    std::size_t sessionCount() const;

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace torvex
