#include "installation/Settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fstream>
#include <iterator>

#include "installation/SettingsSection.h"
#include "platform/Errors.h"
#include "platform/net/HostNames.h"
#include "platform/net/MailAddress.h"
#include "platform/net/Network.h"

namespace torvex {

namespace {

constexpr std::int64_t mebibyte = 1024 * 1024;
constexpr std::array<std::string_view, 11> sectionNames = {
    "database", "server", "tls", "limits", "paths", "files", "feeds", "search", "mail", "authoring", "log"};
constexpr std::array<std::string_view, 6> logLevels = {"trace", "debug", "info", "warn", "error", "off"};

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream || std::filesystem::is_directory(file)) {
        throw Error(fmt::format("{} can't be read: is it a file, and may you read it?", file.string()));
    }
    return text;
}

toml::table parse(const std::string& text, const std::string& fileName) {
    try {
        return toml::parse(text);
    } catch (const toml::parse_error& error) {
        throw Error(fmt::format("{}:{}: {}", fileName, error.source().begin.line, error.description()));
    }
}

void refuseOtherSections(const toml::table& file, const std::string& fileName) {
    for (const auto& [key, node] : file) {
        if (std::find(sectionNames.begin(), sectionNames.end(), key.str()) != sectionNames.end()) continue;
        throw Error(fmt::format("{}:{}: there is no section [{}]; the sections are: {}", fileName,
                                node.source().begin.line, key.str(), fmt::join(sectionNames, ", ")));
    }
}

void readDatabase(SettingsSection section, DatabaseSettings& database) {
    section.read("url", database.url);
    section.read("user", database.user);
    section.read("password", database.password);
    section.refuseOthers();
    if (database.url.empty()) section.refuse("url", "\"sqlite:FOLDER\" or \"postgresql://HOST/DATABASE\"");
}

/// Goes into a header field.
bool isFieldText(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

void checkNetworks(const SettingsSection& section, const std::vector<std::string>& networks) {
    for (const std::string& network : networks)
        if (!Network::parse(network))
            section.refuse(
                "trusted_proxies",
                "addresses and networks, such as [\"127.0.0.1\", \"10.0.0.0/8\", \"2001:db8::/32\"]");
}

void checkHosts(const SettingsSection& section, const std::vector<std::string>& hosts) {
    for (const std::string& host : hosts)
        if (!HostNames::isName(host))
            section.refuse(
                "hosts", "names without ports, such as [\"www.example.org\", \"*.example.org\", \"[::1]\"]");
}

/// With a certificate https is what the site is, unless the settings say otherwise. Without one, it takes a
/// proxy that says how it was asked: or every answer would lead to itself.
void settleHttps(const SettingsSection& server, const std::string& certificate, ServerOptions& options) {
    if (!server.has("https_only")) options.httpsAlone = !certificate.empty();
    if (options.httpsAlone && certificate.empty() && options.trustedProxies.empty())
        server.refuse("https_only",
                      "false without a certificate in [tls], unless a proxy in trusted_proxies speaks https");
}

void readServer(SettingsSection section, ServerOptions& server) {
    std::string listen = fmt::format("{}:{}", server.address, server.port);
    section.read("listen", listen);
    section.read("user", server.user);
    section.readNumber("threads", server.loops, 0, 256);
    section.readNumber("workers", server.workers, 0, 1024);
    section.readNumber("most_workers", server.mostWorkers, 1, 1024);
    section.readNumber("queued_pages", server.queuedPages, 1, 1'000'000);
    section.read("http2", server.http2);
    section.read("secure_cookies", server.secureCookies);
    section.read("trusted_proxies", server.trustedProxies);
    section.read("hosts", server.hosts);
    section.read("https_only", server.httpsAlone);
    section.readSeconds("strict_transport_seconds", server.strictTransport);
    section.read("permissions_policy", server.permissionsPolicy);
    section.read("static_cache_control", server.staticCacheControl);
    section.readNumber("file_cache_bytes", server.fileCache, 0, 4096 * mebibyte);
    section.read("compression", server.compression);
    section.readNumber("page_cache_bytes", server.pageCache, 0, 4096 * mebibyte);
    section.read("page_cache_asks", server.pageCacheAsks);
    section.refuseOthers();
    checkNetworks(section, server.trustedProxies);
    checkHosts(section, server.hosts);
    if (!isFieldText(server.permissionsPolicy))
        section.refuse("permissions_policy", "a text of plain characters, such as \"camera=()\"");
    try {
        const ListenAddress parsed = parseListenAddress(listen);
        server.address = parsed.address;
        server.port = parsed.port;
    } catch (const Error&) {
        section.refuse("listen", "ADDRESS:PORT, such as \"127.0.0.1:8080\" or \"[::1]:8080\"");
    }
}

void readTls(SettingsSection section, const std::filesystem::path& folder, ServerOptions& server) {
    TlsFiles& tls = server.tls;
    std::size_t port = 0;
    section.read("certificate", tls.certificate);
    section.read("key", tls.key);
    section.readNumber("port", port, 0, 65535);
    section.refuseOthers();
    if (tls.certificate.empty() != tls.key.empty()) {
        section.refuse(tls.key.empty() ? "key" : "certificate", "given as well: TLS needs both files");
    }
    if (tls.certificate.empty()) return;
    if (port > 0) server.tlsPort = static_cast<std::uint16_t>(port);
    tls.certificate = (folder / tls.certificate).string();
    tls.key = (folder / tls.key).string();
}

void readLimits(SettingsSection section, ServerOptions& server) {
    section.readNumber("connections", server.connections, 1, 1'000'000);
    section.readNumber("connections_per_address", server.connectionsOfOne, 1, 1'000'000);
    section.readNumber("streams_per_connection", server.streams, 1, 1000);
    section.readNumber("lowest_bytes_per_second", server.speed.bytesPerSecond, 0, 1'000'000);
    section.readSeconds("slow_seconds", server.speed.grace);
    section.readNumber("request_line_bytes", server.limits.requestLine, 256, mebibyte);
    section.readNumber("header_bytes", server.limits.header, 1024, mebibyte);
    section.readNumber("header_fields", server.limits.fields, 10, 10'000);
    section.readNumber("body_bytes", server.limits.body, 0, 4096 * mebibyte);
    section.readNumber("upload_bytes", server.limits.upload, 1, 1024 * 1024 * mebibyte);
    section.readNumber("form_fields", server.limits.formFields, 1, 1'000'000);
    section.readNumber("bodies_bytes", server.limits.bodies, 65536, 65536 * mebibyte);
    section.readSeconds("header_seconds", server.deadlines.header);
    section.readSeconds("body_seconds", server.deadlines.body);
    section.readSeconds("idle_seconds", server.deadlines.idle);
    section.readSeconds("write_seconds", server.deadlines.write);
    section.readSeconds("stop_seconds", server.deadlines.stop);
    section.readSeconds("session_idle_seconds", server.sessions.idle);
    section.readSeconds("author_idle_seconds", server.sessions.authorIdle);
    section.readSeconds("session_probation_seconds", server.sessions.probation);
    section.readNumber("sessions", server.sessions.established, 1, 100'000'000);
    section.readNumber("sessions_per_address", server.sessions.ofOneAddress, 1, 100'000'000);
    section.readNumber("sessions_on_probation", server.sessions.onProbation, 1, 100'000'000);
    section.refuseOthers();
}

/// One plain folder below the public files.
bool isFolderName(const std::string& name) {
    return !name.empty() && name.front() != '.' && name.find_first_of("/\\") == std::string::npos;
}

void readPaths(SettingsSection section, PathSettings& paths) {
    section.read("images", paths.images);
    section.read("documents", paths.documents);
    section.refuseOthers();
    constexpr auto* expected = "the name of a folder below wwwroot, such as \"images\"";
    if (!isFolderName(paths.images)) section.refuse("images", expected);
    if (!isFolderName(paths.documents)) section.refuse("documents", expected);
}

bool isSuffix(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

bool isMediaType(std::string_view type) {
    const std::size_t slash = type.find('/');
    return slash != std::string_view::npos && slash > 0 && slash + 1 < type.size() && isFieldText(type);
}

void readFiles(SettingsSection section, MediaTypes& types) {
    section.read("types", types);
    section.refuseOthers();
    for (const auto& [suffix, type] : types) {
        if (isSuffix(suffix) && isMediaType(type)) continue;
        section.refuse("types",
                       "suffixes in lower case without a point, each with a media type, such as "
                       "{ step = \"model/step\" }");
    }
}

void readFeeds(SettingsSection section, FeedSettings& feeds) {
    section.read("private_addresses", feeds.privateAddresses);
    section.readSeconds("seconds", feeds.time);
    section.refuseOthers();
}

void readSearch(SettingsSection section, SearchSettings& search) {
    unsigned minutes = static_cast<unsigned>(search.compare.count());
    section.readNumber("compare_minutes", minutes, 0, 100'000);
    section.refuseOthers();
    search.compare = std::chrono::minutes(minutes);
}

MailTls readMailTls(SettingsSection& section) {
    std::string tls = "starttls";
    section.read("tls", tls);
    if (tls == "starttls") return MailTls::StartTls;
    if (tls == "always") return MailTls::Always;
    if (tls != "none") section.refuse("tls", "\"starttls\", \"always\" or \"none\"");
    return MailTls::None;
}

/// The port where servers wait for mails of programs, by the kind of line.
std::uint16_t usualPort(MailTls tls) {
    constexpr std::uint16_t submission = 587;
    constexpr std::uint16_t secureSubmission = 465;
    constexpr std::uint16_t local = 25;
    if (tls == MailTls::StartTls) return submission;
    return tls == MailTls::Always ? secureSubmission : local;
}

/// "HOST", "HOST:PORT" or "[ADDRESS]:PORT".
void readMailServer(SettingsSection& section, MailServer& server) {
    std::string given;
    section.read("server", given);
    server.port = usualPort(server.tls);
    const bool hasPort = given.find(':') != std::string::npos;
    try {
        if (!given.empty() && hasPort) {
            const ListenAddress parsed = parseListenAddress(given);
            server.host = parsed.address;
            server.port = parsed.port;
        } else {
            server.host = given;
        }
    } catch (const Error&) {
        section.refuse("server", "HOST or HOST:PORT, such as \"mail.example.org:587\"");
    }
    if (server.host.find_first_of("/@ \t\r\n") != std::string::npos) {
        section.refuse("server", "a plain name or address, such as \"mail.example.org\"");
    }
}

void readMail(SettingsSection section, MailSettings& mail) {
    mail.server.tls = readMailTls(section);
    readMailServer(section, mail.server);
    section.read("user", mail.server.user);
    section.read("password", mail.server.password);
    section.read("sender", mail.sender);
    section.readSeconds("seconds", mail.server.time);
    section.refuseOthers();
    if (!mail.sender.empty() && !isMailAddress(mail.sender)) {
        section.refuse("sender", "a mail address, such as \"website@example.org\"");
    }
}

/// A folder may be relative to the settings file's.
void readAuthoring(SettingsSection section, const std::filesystem::path& folder, Settings& settings) {
    std::string& interface = settings.authoring.interface;
    std::string& host = settings.server.authoringHost;
    section.read("interface", interface);
    section.read("host", host);
    section.refuseOthers();
    if (!interface.empty()) interface = (folder / interface).string();
    if (!host.empty() && (host.front() == '*' || !HostNames::isName(host)))
        section.refuse("host", "a name without a port, such as \"authors.example.org\"");
    const auto& hosts = settings.server.hosts;
    if (!host.empty() && !hosts.empty() && !HostNames(hosts).answer(host))
        section.refuse("host", "among the hosts in [server], which answer for no other names");
}

void readLog(SettingsSection section, std::string& level) {
    section.read("level", level);
    section.refuseOthers();
    if (std::find(logLevels.begin(), logLevels.end(), level) == logLevels.end()) {
        section.refuse("level", fmt::format("one of {}", fmt::join(logLevels, ", ")));
    }
}

}  // namespace

Settings readSettings(const std::filesystem::path& file) {
    const std::string fileName = file.string();
    const toml::table table = parse(readFile(file), fileName);
    refuseOtherSections(table, fileName);
    const auto section = [&](const char* name) { return SettingsSection(table, fileName, name); };
    Settings settings;
    settings.server.port = defaultPort;
    readDatabase(section("database"), settings.database);
    readServer(section("server"), settings.server);
    readTls(section("tls"), file.parent_path(), settings.server);
    settleHttps(section("server"), settings.server.tls.certificate, settings.server);
    readLimits(section("limits"), settings.server);
    readPaths(section("paths"), settings.paths);
    readFiles(section("files"), settings.server.fileTypes);
    readFeeds(section("feeds"), settings.feeds);
    readSearch(section("search"), settings.search);
    readMail(section("mail"), settings.mail);
    readAuthoring(section("authoring"), file.parent_path(), settings);
    readLog(section("log"), settings.logLevel);
    return settings;
}

ListenAddress parseListenAddress(std::string_view text) {
    const auto refuse = [&] {
        throw Error(
            fmt::format("\"{}\" is no address to listen on: it must be ADDRESS:PORT, such as "
                        "127.0.0.1:8080 or [::1]:8080",
                        text));
    };
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || colon == 0) refuse();
    std::string_view address = text.substr(0, colon);
    const std::string_view digits = text.substr(colon + 1);
    if (address.front() == '[' && address.back() == ']') {
        address = address.substr(1, address.size() - 2);
    } else if (address.find(':') != std::string_view::npos) {
        refuse();
    }
    std::uint16_t port = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (address.empty() || code != std::errc() || end != digits.data() + digits.size()) refuse();
    return {std::string(address), port};
}

}  // namespace torvex
