#include "host/http/TlsContext.h"

#include <boost/system/system_error.hpp>
#include <fmt/format.h>

#include "installation/ServerOptions.h"
#include "platform/Errors.h"

namespace torvex {

namespace ssl = boost::asio::ssl;

namespace {

/// Of TLS 1.2; those of 1.3 are all of this kind. Keys that aren't kept after a connection, and encryption
/// that tells when something was changed. HTTP/2 forbids all others, too.
constexpr const char* tls12Suites = "ECDHE+AESGCM:ECDHE+CHACHA20";

/// Each with its length in front; the first that both know is spoken.
constexpr std::string_view withHttp2 = "\x02h2\x08http/1.1\x08http/1.0";
constexpr std::string_view withoutHttp2 = "\x08http/1.1\x08http/1.0";

/// Who names nothing but protocols of other servers has been led here by somebody, and is turned away.
int choose(SSL*, const unsigned char** chosen, unsigned char* size, const unsigned char* offered,
           unsigned offeredSize, void* ours) {
    const std::string_view names = *static_cast<const std::string_view*>(ours);
    unsigned char* found = nullptr;
    const int result =
        SSL_select_next_proto(&found, size, reinterpret_cast<const unsigned char*>(names.data()),
                              static_cast<unsigned>(names.size()), offered, offeredSize);
    *chosen = found;
    return result == OPENSSL_NPN_NEGOTIATED ? SSL_TLSEXT_ERR_OK : SSL_TLSEXT_ERR_ALERT_FATAL;
}

void offer(SSL_CTX* context, const std::string_view& names) {
    SSL_CTX_set_alpn_select_cb(context, choose, const_cast<std::string_view*>(&names));
}

}  // namespace

std::unique_ptr<ssl::context> openTls(const TlsFiles& files, bool http2) {
    if (files.certificate.empty()) return nullptr;
    try {
        auto context = std::make_unique<ssl::context>(ssl::context::tls_server);
        context->set_options(ssl::context::default_workarounds | ssl::context::no_compression);
        SSL_CTX_set_options(context->native_handle(), SSL_OP_NO_RENEGOTIATION);
        SSL_CTX_set_min_proto_version(context->native_handle(), TLS1_2_VERSION);
        SSL_CTX_set_cipher_list(context->native_handle(), tls12Suites);
        offer(context->native_handle(), http2 ? withHttp2 : withoutHttp2);
        context->use_certificate_chain_file(files.certificate);
        context->use_private_key_file(files.key, ssl::context::pem);
        return context;
    } catch (const boost::system::system_error& error) {
        throw Error(fmt::format("Can't use the certificate \"{}\" with the key \"{}\": {}", files.certificate,
                                files.key, error.code().message()));
    }
}

}  // namespace torvex
