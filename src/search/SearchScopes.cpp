#include "search/SearchScopes.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

using catalogue::Depth;
using catalogue::Scope;

std::string withEnd(std::string path) {
    if (!path.ends_with('\\')) path += '\\';
    return path;
}

/// The site's own folder of the snapshots.
std::string currentSnapshots(const SearchParameters& search) {
    return snapshotsPath(search.rootPath)
        .append(langOf(search.page.nodeId))
        .append("\\")
        .append(siteOf(search.page.nodeId));
}

bool isThere(const HostContext& host, const SearchParameters& search, const std::string& path) {
    return search.isRemote || host.files.folderExists(text::replaceAll(path, "\\", "/"));
}

/// A folder is given below that of the documents, or as a whole path. On the disk letters are told apart, so
/// that what is known of a path is written as it is there.
std::string documentFolder(const HostContext& host, const SearchParameters& search, const std::string& item) {
    const std::string documents = documentsPath(host, search.rootPath);
    for (const std::string& known : {documents, search.rootPath}) {
        if (text::startsWith(item, known)) return known + item.substr(known.size());
    }
    return documents + item;
}

void addListed(const HostContext& host, const SearchParameters& search, std::string item,
               std::vector<Scope>& scopes) {
    Depth depth = Depth::Shallow;
    while (item.ends_with('+')) {
        item.pop_back();
        depth = Depth::Deep;
    }
    const std::string path = documentFolder(host, search, item);
    if (isThere(host, search, path)) scopes.push_back({path, depth});
}

void addPages(const SearchParameters& search, std::vector<Scope>& scopes) {
    if (search.pageScopes == searchScope::none) return;
    const bool isCurrent = search.pageScopes == searchScope::currentSite;
    scopes.push_back({isCurrent ? currentSnapshots(search) : snapshotsPath(search.rootPath), Depth::Deep});
}

void addDocuments(const HostContext& host, const SearchParameters& search, std::vector<Scope>& scopes) {
    if (search.documentScopes == searchScope::none) return;
    const std::string all = documentsPath(host, search.rootPath);
    if (search.documentScopes == searchScope::allSites) {
        scopes.push_back({all, Depth::Deep});
    } else if (search.documentScopes == searchScope::currentSite) {
        scopes.push_back({all + std::string(siteOf(search.page.nodeId)), Depth::Deep});
    } else {
        for (const std::string& item : listItems(text::lower(search.documentScopes)))
            addListed(host, search, item, scopes);
    }
}

}  // namespace

std::string snapshotsPath(std::string_view rootPath) {
    return withEnd(std::string(rootPath)) + "search\\html\\";
}

std::string documentsPath(const HostContext& host, std::string_view rootPath) {
    const std::string name =
        text::replaceAll(host.application.text(applicationKey::documentsName), "/", "\\");
    return withEnd(withEnd(std::string(rootPath)) + "wwwroot\\" + name);
}

std::vector<Scope> searchScopes(HostContext& host, const SearchParameters& search) {
    std::vector<Scope> scopes;
    asSearchStep(host, "Error adding page scope !", [&] { addPages(search, scopes); });
    asSearchStep(host, "Error adding document scope !", [&] { addDocuments(host, search, scopes); });
    return scopes;
}

}  // namespace torvex
