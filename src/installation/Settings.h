#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "installation/ServerOptions.h"
#include "platform/net/MailServer.h"

namespace torvex {

struct DatabaseSettings {
    std::string url = "sqlite:data";  ///< the embedded store's folder may be relative to the installation
    std::string user;
    std::string password;
};

/// What is fetched for feeds.
struct FeedSettings {
    /// Whether feeds may lie on this machine, in its networks and wherever else is no public address.
    bool privateAddresses = false;
    std::chrono::milliseconds time{5'000};  ///< for one fetch, and for one transformation
};

/// The catalogue of the site search.
struct SearchSettings {
    /// Between two looks of the server at all files, for those that other programs have changed; 0: at its
    /// start alone. A look at 100,000 files takes a second.
    std::chrono::minutes compare{15};
};

/// How notices leave by mail.
struct MailSettings {
    MailServer server{};
    std::string sender;  ///< of mails that name none of their own; "" for none
};

/// Folders of media, below the public files.
struct PathSettings {
    std::string images = "images";
    std::string documents = "documents";
};

/// The interface of authors below "/torvex/".
struct AuthoringSettings {
    /// The folder of a built interface that is served in place of the program's own, for who works on it.
    std::string interface;
};

/// The settings of an installation, as its file `torvex.toml` gives them; what it leaves out keeps its
/// default.
struct Settings {
    DatabaseSettings database;
    ServerOptions server;
    PathSettings paths;
    FeedSettings feeds;
    SearchSettings search;
    MailSettings mail;
    AuthoringSettings authoring;
    std::string logLevel = "info";
};

/// The address that the server listens on unless the settings or the command line name another one.
inline constexpr std::uint16_t defaultPort = 8080;

/// Reads the file. Throws `Error` with file, line and what is expected when it can't be read or parsed, or
/// has an unknown key or a value of the wrong kind. The text of a secret is never part of an error.
Settings readSettings(const std::filesystem::path& file);

struct ListenAddress {
    std::string address;
    std::uint16_t port = 0;
};

/// Reads "ADDRESS:PORT", with an IPv6 address in brackets. Throws `Error` for anything else.
ListenAddress parseListenAddress(std::string_view text);

}  // namespace torvex
