#include "cli/ServeCommand.h"

#include <fmt/format.h>
#include <memory>

#include "cli/OpenInstallation.h"
#include "cli/ServerUser.h"
#include "cli/StopSignals.h"
#include "cli/UsageError.h"
#include "host/BufferedHits.h"
#include "host/Descriptors.h"
#include "host/HttpServer.h"
#include "installation/BuiltInterface.h"
#include "installation/Setup.h"
#include "modules/mail/MailDelivery.h"
#include "pages/Routes.h"
#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/db/ConnectionSource.h"
#include "platform/net/SmtpClient.h"
#include "platform/text/Text.h"
#include "search/StraySnapshots.h"
#include "search/catalogue/Keeper.h"
#include "search/designs/PageIndex.h"

namespace torvex::cli {

namespace {

void listenAt(const std::string& text, ServerOptions& server) try {
    const ListenAddress parsed = parseListenAddress(text);
    server.address = parsed.address;
    server.port = parsed.port;
} catch (const Error& error) {
    throw UsageError(fmt::format("--listen: {}", error.what()));
}

std::string address(const ServerOptions& options, bool isTls, std::uint16_t port) {
    const bool isV6 = options.address.find(':') != std::string::npos;
    return fmt::format(fmt::runtime(isV6 ? "{}://[{}]:{}/" : "{}://{}:{}/"), isTls ? "https" : "http",
                       options.address, port);
}

std::string addresses(const ServerOptions& options, const HttpServer& server) {
    const bool both = server.tlsPort() != 0;
    const std::string first = address(options, !both && !options.tls.certificate.empty(), server.port());
    return both ? first + " and " + address(options, true, server.tlsPort()) : first;
}

/// Links from one scheme to the other need the port of the other.
void notePorts(ApplicationValues& application, const HttpServer& server) {
    if (server.tlsPort() == 0) return;
    application.set(applicationKey::portHttp, std::to_string(server.port()));
    application.set(applicationKey::portHttps, std::to_string(server.tlsPort()));
}

/// Says in addition where an address that can't be had is chosen.
std::unique_ptr<HttpServer> makeServer(const ServerOptions& options, const Services& services,
                                       std::shared_ptr<const BuiltInterface> interface,
                                       const std::filesystem::path& installation, LineLog& log) try {
    const api::UploadSettings uploads{(installation / "uploads").string(), options.limits.upload,
                                      options.fileTypes};
    ServedPages served{[](HostContext& host) { Setup(host).initSession(); }, pageRoutes(interface, uploads),
                       mediaGuards(services.application), std::move(interface)};
    return std::make_unique<HttpServer>(options, services, log, std::move(served));
} catch (const Error& error) {
    if (!text::startsWith(error.what(), "Can't listen")) throw;
    throw Error(
        fmt::format("{}\nName another address with --listen ADDR:PORT, or as listen in [server] of {}",
                    error.what(), settingsFileName));
}

/// From here on files are made by whom they are to belong to.
ServerUser userOf(const ServerOptions& server, const Installation& installation) {
    ServerUser user(server.user);
    user.allowAddress(server.address);
    user.demandFolder(installation.folder());
    return user;
}

/// What is told by mail goes out beside the requests.
MailDesk mailDesk(OpenInstallation& opened, SmtpClient& client) {
    const MailSettings& mail = opened.installation.settings().mail;
    return {.open =
                [&opened] {
                    return opened.installation.openDatabase(*opened.database, db::Purpose::Transaction);
                },
            .transport = mail.server.host.empty() ? nullptr : &client,
            .clock = opened.clock,
            .log = opened.operatorLog,
            .sender = mail.sender};
}

constexpr std::string_view noInterface =
    "this program holds no interface for authors: it was built without ui/dist, which run.sh makes; all else "
    "works";

std::shared_ptr<const BuiltInterface> interfaceOf(const AuthoringSettings& settings, LineLog& log) {
    if (!settings.interface.empty()) {
        log.warn(fmt::format("the interface for authors is the one in {}", settings.interface));
        return std::make_shared<BuiltInterface>(settings.interface);
    }
    auto interface = std::make_shared<BuiltInterface>();
    if (interface->isEmpty()) log.warn(noInterface);
    return interface;
}

constexpr std::string_view workingAsRoot =
    "working as root, which a fault in the program would hand on; name another user in [server] of "
    "torvex.toml";

}  // namespace

ExitCode serve(const ServeOptions& options, const Environment& environment) {
    StopSignals signals;
    raiseDescriptorLimit();
    Installation installation = Installation::open(options.install, environment);
    ServerOptions server = installation.settings().server;
    if (options.listen) listenAt(*options.listen, server);
    server.rootFolder = (installation.folder() / "wwwroot").string();
    ServerUser user = userOf(server, installation);

    OpenInstallation opened(std::move(installation));
    LineLog& log = opened.operatorLog;
    if (user.isRootUnasked()) log.warn(workingAsRoot);
    opened.runWithoutVisitor([](HostContext& host) {
        Setup(host).initApplication();
        tidySnapshotFolders(host);
        indexMissingPages(host, *db::openOwn(host));
    });
    server.uploadFolders = {opened.application.text(applicationKey::imagesUrl),
                            opened.application.text(applicationKey::documentsUrl)};
    BufferedHits hits(
        [&](db::Purpose purpose) { return opened.installation.openDatabase(*opened.database, purpose); },
        log);
    std::unique_ptr<HttpServer> http;
    const auto interface = interfaceOf(opened.installation.settings().authoring, log);
    user.asRoot([&] {
        http = makeServer(server, opened.services().with(hits), interface, opened.installation.folder(), log);
    });
    user.giveUpRoot();
    notePorts(opened.application, *http);
    SmtpClient mailClient(opened.installation.settings().mail.server);
    std::optional<MailDelivery> mails(mailDesk(opened, mailClient));
    log.info(
        fmt::format("serving {} at {}", opened.installation.folder().string(), addresses(server, *http)));
    catalogue::Renewal renewal(opened.application);
    std::optional<catalogue::Keeper> keeper;
    keeper.emplace(opened.upkeepParts(), opened.changedFiles, renewal,
                   catalogue::KeeperTimes{.compare = opened.installation.settings().search.compare});
    signals.watch([&] { http->stop(); });
    http->run();
    // What still waits for a feed waits in vain; then nothing is at work any more, and it can be said.
    opened.http.cancel();
    opened.xml.cancel();
    opened.extractor.cancel();
    http->finish();
    keeper.reset();
    mailClient.cancel();
    mails.reset();
    log.info("stopped");
    return ExitCode::Ok;
}

}  // namespace torvex::cli
