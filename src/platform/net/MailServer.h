#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace torvex {

/// How the line to the mail server is kept from listeners.
enum class MailTls {
    StartTls,  ///< the line must become secure before anything is told
    Always,    ///< secure from its first byte
    None       ///< for a server on this machine
};

struct MailServer {
    std::string host;  ///< "" none
    std::uint16_t port = 0;
    MailTls tls = MailTls::StartTls;
    std::string user;  ///< "" doesn't log in
    std::string password;
    std::chrono::milliseconds time{30'000};  ///< for one mail
};

}  // namespace torvex
