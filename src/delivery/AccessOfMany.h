#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "delivery/Access.h"
#include "delivery/FolderAccess.h"

namespace torvex {

/// What the visitor of a request may see of many pages and document folders. What is learned beforehand costs
/// a few statements for each thirty of them; the answers equal those of `mayEnter` and
/// `cServer::checkFolderAccess`, asked one by one, as the database was at the learning. Lives for one
/// request.
class AccessOfMany {
  public:
    AccessOfMany(HostContext& host, db::Connection& connection);

    void learnPages(const std::vector<PageIdentity>& pages);
    bool mayEnter(const PageIdentity& page);

    /// Folders of documents as full paths that end in "/". One of images lets nobody in.
    void learnFolders(const std::vector<std::string>& folders);
    int folderAccess(const std::string& folder);

  private:
    struct LivePage {
        std::string nodeId;
        bool isFolder = false;
    };
    using Groups = std::set<double>;
    using FolderKey = std::pair<std::string, std::string>;  ///< site and id, in small letters

    void learnLivePages(const std::vector<PageIdentity>& pages, std::vector<PageId>& found);
    void learnNodes(const std::vector<PageId>& pages, std::vector<PageId>& groupsOf);
    void learnPageGroups(const std::vector<PageId>& pages);
    void learnFolderGroups(const std::string& site, const std::set<std::string>& ids);
    bool groupsLetIn(PageId pageId, std::string_view nodeId);
    bool seesAllFolders();
    int folderVerdict(GuardedFolder folder);
    bool isMemberOfAny(const Groups& groups);

    HostContext& host_;
    db::Connection& connection_;
    const Visitor visitor_;
    const std::string today_;
    const bool extranet_;
    std::map<PageId, std::optional<LivePage>> pages_;
    std::map<std::string, PageId, std::less<>> nodes_;  ///< in small letters
    std::map<PageId, Groups> pageGroups_;
    std::map<FolderKey, Groups> folderGroups_;
    std::optional<bool> seesAllFolders_;
    std::optional<Groups> ownGroups_;  ///< of the visitor, those in which the membership holds today
};

}  // namespace torvex
