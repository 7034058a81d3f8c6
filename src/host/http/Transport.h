#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <optional>
#include <utility>

namespace torvex {

namespace asio = boost::asio;
using Socket = asio::basic_stream_socket<asio::ip::tcp, asio::io_context::executor_type>;

/// A connection's bytes, plain or encrypted. For the sources of the event loop only.
class Transport {
  public:
    Transport(Socket socket, asio::ssl::context* tls) : socket_(std::move(socket)) {
        if (tls) tls_.emplace(socket_, *tls);
    }

    // The encrypting stream refers to the socket beside it.
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    bool isEncrypted() const { return tls_.has_value(); }
    Socket& socket() { return socket_; }

    /// Once the encryption stands: whether both sides have agreed on HTTP/2.
    bool speaksHttp2() const {
        if (!tls_) return false;
        const unsigned char* name = nullptr;
        unsigned size = 0;
        SSL_get0_alpn_selected(tls_->native_handle(), &name, &size);
        return size == 2 && name[0] == 'h' && name[1] == '2';
    }

    template <class Handler>
    void handshake(Handler&& handler) {
        tls_->async_handshake(asio::ssl::stream_base::server, std::forward<Handler>(handler));
    }
    template <class Handler>
    void read(asio::mutable_buffer space, Handler&& handler) {
        if (tls_) {
            tls_->async_read_some(space, std::forward<Handler>(handler));
        } else {
            socket_.async_read_some(space, std::forward<Handler>(handler));
        }
    }
    template <class Handler>
    void writeEncrypted(asio::const_buffer bytes, Handler&& handler) {
        tls_->async_write_some(bytes, std::forward<Handler>(handler));
    }

  private:
    Socket socket_;
    mutable std::optional<asio::ssl::stream<Socket&>> tls_;  // it gives out its handle only to change
};

}  // namespace torvex
