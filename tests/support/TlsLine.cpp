#include "support/TlsLine.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>

namespace torvex::test {

TlsLine::TlsLine(Descriptor socket, std::string_view protocols)
    : socket_(std::move(socket)), context_(SSL_CTX_new(TLS_client_method())), ssl_(SSL_new(context_.get())) {
    std::signal(SIGPIPE, SIG_IGN);  // the library writes to connections that the server has closed
    SSL_set_fd(ssl_.get(), socket_.number());
    SSL_clear_mode(ssl_.get(), SSL_MODE_AUTO_RETRY);
    if (!protocols.empty())
        SSL_set_alpn_protos(ssl_.get(), reinterpret_cast<const unsigned char*>(protocols.data()),
                            static_cast<unsigned>(protocols.size()));
}

std::string TlsLine::protocol() const {
    const unsigned char* name = nullptr;
    unsigned size = 0;
    SSL_get0_alpn_selected(ssl_.get(), &name, &size);
    return {reinterpret_cast<const char*>(name), size};
}

void TlsLine::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t size = std::min<std::size_t>(bytes.size(), 1 << 20);
        const int count = SSL_write(ssl_.get(), bytes.data(), static_cast<int>(size));
        if (count <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::optional<std::string> TlsLine::receive(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    std::array<char, 16384> space;
    while (true) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd wait{socket_.number(), POLLIN, 0};
        const int patience = static_cast<int>(std::max<std::int64_t>(left.count(), 0));
        if (SSL_pending(ssl_.get()) == 0 && ::poll(&wait, 1, patience) <= 0) return std::nullopt;
        const int count = SSL_read(ssl_.get(), space.data(), static_cast<int>(space.size()));
        if (count > 0) return std::string(space.data(), static_cast<std::size_t>(count));
        // What is no data of ours, as a ticket, has been read; the rest is still to come.
        if (SSL_get_error(ssl_.get(), count) != SSL_ERROR_WANT_READ) return std::string();
    }
}

void TlsLine::endSending() {
    ::shutdown(socket_.number(), SHUT_WR);
}

}  // namespace torvex::test
