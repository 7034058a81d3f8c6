#include "search/Search.h"

#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/LivePages.h"
#include "search/SearchError.h"
#include "search/SearchForm.h"
#include "search/SearchRecords.h"
#include "search/SnapshotFiles.h"
#include "search/SnapshotRenewal.h"
#include "search/Snapshots.h"

namespace torvex {

namespace {

constexpr const char* done = "0";
constexpr const char* failed = "-99";

constexpr std::string_view selectLanguages = "select lang from TORVEX_LANGUAGES";

bool isFolderName(std::string_view lang) {
    return !lang.empty() && lang.find_first_of("./\\") == std::string_view::npos;
}

}  // namespace

template <typename Work>
void Search::report(std::string_view line, Work&& work) try {
    asSearchStep(host_, line, work);
} catch (const SearchError& error) {
    error_ = error.what();
}

void Search::saveSearchFormParameters() {
    keepSearchForm(host_);
}

std::string Search::getAllProperties(const std::string& site) {
    std::string properties;
    report("Error in function getAllProperties (Search module) !",
           [&] { properties = allSearchProperties(connection_.use(host_), site); });
    return properties;
}

void Search::CleanUpDB() {
    report("Error in function CleanUpDB (Search module) !", [&] {
        host_.hits.flush();
        db::inOwnTransaction(host_, [](db::Connection& own) {
            cleanSearchRecords(own);
            return db::commit(true);
        });
    });
}

std::string Search::initializePages(const std::string& pageIdent) try {
    db::Connection& connection = connection_.use(host_);
    const bool all = text::trim(pageIdent).empty();
    const std::string nodeId = all ? std::string() : nodeIdFrom(connection, pageIdent);
    if (!all && text::length(nodeId) < PageIdentity::rootLength) return failed;
    bool isWhole = true;
    Snapshots snapshots(host_, connection_, [&](const std::string& node, const std::string& reason) {
        isWhole = false;
        warnOfSnapshot(host_, node, reason);
    });
    const auto renew = [&](const LivePage& page) { snapshots.renew(page); };
    if (all) removeLanguageFolders(connection);
    snapshots.begin();
    if (all) visitLivePages(connection, renew);
    if (!all) visitLivePage(connection, nodeId, renew);
    snapshots.finish();
    return isWhole ? done : failed;
} catch (const std::exception& error) {
    warnOfSnapshot(host_, pageIdent.empty() ? "all pages" : pageIdent, error.what());
    return failed;
}

void Search::removeLanguageFolders(db::Connection& connection) {
    std::vector<std::string> folders;
    auto rows = connection.query(selectLanguages);
    while (rows.next()) {
        const std::string lang = text::lowerTrim(rows.text("lang"));
        if (isFolderName(lang)) folders.push_back(snapshotRoot(host_) + lang);
    }
    for (const std::string& folder : folders) {
        if (host_.files.folderExists(folder)) host_.files.deleteFolder(folder);
    }
}

}  // namespace torvex
