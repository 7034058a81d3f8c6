#pragma once

#include <functional>
#include <memory>

#include "delivery/HitStore.h"
#include "host/LineLog.h"
#include "installation/Installation.h"
#include "platform/Admission.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Services.h"
#include "platform/db/Database.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/WatchedFileSystem.h"
#include "platform/net/CurlHttpClient.h"
#include "platform/net/SharedFetches.h"
#include "platform/xml/XmlWorkers.h"
#include "replication/ServerShares.h"
#include "search/catalogue/ChangedFiles.h"
#include "search/catalogue/Upkeep.h"
#include "search/extraction/TextWorkers.h"

namespace spdlog {
class logger;
}
namespace torvex {
struct HostContext;
}

namespace torvex::cli {

/// An installation with what the work on it needs, each real thing made once. All parts are safe to share
/// between threads.
struct OpenInstallation {
    /// Throws `Error` when the database can't be reached or its schema isn't this program's.
    explicit OpenInstallation(Installation opened);
    OpenInstallation(const OpenInstallation&) = delete;
    OpenInstallation& operator=(const OpenInstallation&) = delete;
    ~OpenInstallation();

    /// For requests that are counted at once.
    Services services();

    /// Runs what needs a host context and has no visitor: the set-up of the application values.
    void runWithoutVisitor(const std::function<void(HostContext&)>& work);

    /// What the catalogue of its search is made from.
    catalogue::UpkeepParts upkeepParts();

    /// Puts the files that were changed into the queue of the search: at the end of the life at the latest.
    void queueChangedFiles() noexcept;

    const Installation installation;
    const std::unique_ptr<db::Database> database;
    ApplicationValues application;  ///< holds the start values
    DiskFileSystem files;
    catalogue::ChangedFiles changedFiles;
    WatchedFileSystem watchedFiles;  ///< the same files; what work changes of them is noted
    const SystemClock clock;
    /// How many workers feeds may hold.
    Admission feedPlaces;
    CurlHttpClient fetcher;
    SharedFetches http;
    XmlWorkers xml;
    DirectHits directHits;
    ServerShares shares;
    const std::unique_ptr<spdlog::logger> log;  ///< to standard error, from the level of the settings on
    LineLog operatorLog;
    catalogue::TextWorkers extractor;
};

}  // namespace torvex::cli
