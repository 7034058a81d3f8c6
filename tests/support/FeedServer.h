#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "support/LocalListener.h"

namespace torvex::test {

/// A small HTTP server on 127.0.0.1 that does what a test tells it, wrong things too. Each connection has a
/// thread and serves one request. All of it ends with the object.
class FeedServer {
  public:
    /// One connection, behind the request's header.
    class Peer {
      public:
        Peer(int socket, const FeedServer& server) : socket_(socket), server_(server) {}

        /// False when the other side has gone or the server is to end.
        bool send(std::string_view bytes);
        /// Sends the piece again and again while anybody listens, with a pause behind each.
        void sendForEver(std::string_view piece, std::chrono::milliseconds pause = {});
        /// Keeps silent until the other side goes away.
        void waitForClose();

      private:
        int socket_;
        const FeedServer& server_;
    };

    using Script = std::function<void(Peer&)>;

    /// What happens at a path, whatever query follows it; 404 "Not Found" anywhere else.
    void at(const std::string& path, Script script);
    /// A whole answer: the status line behind "HTTP/1.1 ", header lines each ended by CR LF, and the body.
    void answer(const std::string& path, const std::string& status, const std::string& header,
                const std::string& body);

    std::string url(const std::string& target) const;
    /// The targets asked for so far, in order.
    std::vector<std::string> targets() const;
    /// The header of the last request.
    std::string lastRequest() const;

  private:
    void serve(int socket);
    Script scriptFor(const std::string& request);

    mutable std::mutex mutex_;  ///< guards what follows
    std::map<std::string, Script> scripts_;
    std::vector<std::string> targets_;
    std::string lastRequest_;
    LocalListener listener_{[this](int socket) { serve(socket); }};  ///< last: it uses all else
};

/// A complete answer as it goes over the wire.
std::string answerText(const std::string& status, const std::string& header, const std::string& body);

}  // namespace torvex::test
