#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>

#include "platform/files/Descriptor.h"
#include "search/catalogue/Backend.h"

namespace torvex::catalogue {

/// Offers a catalogue to other servers (see `RemoteBackend`). Whoever reaches the address may ask for
/// everything that the catalogue holds: rights are tested by who asks.
class CatalogueServer {
  public:
    /// Listens from now on; port 0 takes a free one. `backend` must outlive this. Throws `Error`.
    CatalogueServer(const Backend& backend, const std::string& address, std::uint16_t port);
    CatalogueServer(const CatalogueServer&) = delete;
    CatalogueServer& operator=(const CatalogueServer&) = delete;
    /// Waits for the answers that are being made.
    ~CatalogueServer();

    std::uint16_t port() const;
    /// Answers until it is stopped.
    void run();
    /// From any thread.
    void stop();

  private:
    void answer(Descriptor socket);
    void begin();
    void end();

    const Backend& backend_;
    Descriptor listener_;
    std::atomic<bool> isStopping_ = false;
    std::mutex mutex_;
    std::condition_variable changed_;
    unsigned busy_ = 0;
};

}  // namespace torvex::catalogue
