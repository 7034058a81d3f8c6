#pragma once

#include <boost/asio/ssl/context.hpp>
#include <memory>

namespace torvex {

struct TlsFiles;

/// What https is spoken with: null without a certificate. Offers HTTP/2 ahead of HTTP/1.1 where `http2` says so.
/// Throws `Error` when the files can't be used.
std::unique_ptr<boost::asio::ssl::context> openTls(const TlsFiles& files, bool http2);

}  // namespace torvex
