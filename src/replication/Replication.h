#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {
class FileSystem;
struct HostContext;

/// Works on a share, whose folder here is given. Runs on a thread that may outlive the request: it must own
/// what it uses.
using ShareStep = std::function<void(FileSystem& files, const std::string& share)>;

/// Runs steps on a server's share and waits, as long as `Replication::run` does. For each of them why it
/// failed, "" for one that didn't.
std::vector<std::string> onShare(HostContext& host, const std::string& server, std::vector<ShareStep> steps);

/// What the other servers are to do with a file or a folder of the installation.
enum class FileChange { Add, Replace, Remove };
enum class FolderChange { Make, Remove };

/// Has the other servers follow what was changed in the installation folder. Each of them offers this folder
/// as a share, mounted here at "root/server/share". A server that can't be reached is passed over; what it
/// misses stands in the log, one line for each file, and in TORVEX_SERVERS_MISSED until it has it.
///
/// Off while no share is named: then nothing is asked of anybody.
class Replication {
  public:
    explicit Replication(HostContext& host) : host_(host) {}

    /// Takes a change in. False when replication is off, the path names nothing or lies outside of the
    /// installation. The first change reads the list of servers, so it may throw. The name of a file to
    /// remove may hold wild cards; a folder is made without its contents and removed with them.
    bool addFile(std::string_view file, FileChange change);
    bool addFolder(std::string_view folder, FolderChange change);

    /// Has each server follow, one after the other in the order of their names, and waits for them. One that
    /// hangs is given up on after the long script timeout, or when nothing has moved for
    /// `torvex_replication_wait` seconds. Never fails for what a server does.
    void run();

  private:
    struct Change {
        bool isFolder;
        bool isRemoval;
        bool replaces;
        std::string path;  ///< below the installation folder
        std::string name;  ///< of a file
    };

    bool add(std::string_view folder, Change change);
    void readServers();
    void runOn(const std::string& server);
    static ShareStep stepFor(const Change& change, const std::string& install);

    HostContext& host_;
    bool knowsServers_ = false;
    std::vector<std::string> servers_;
    std::vector<Change> changes_;
};

/// One change at once; the results are those of `add`. An error has the line "replicateFile !"
/// ("replicateFolder !") in front.
bool replicateFile(HostContext& host, const std::string& file, FileChange change);
bool replicateFolder(HostContext& host, const std::string& folder, FolderChange change);

/// Whether a text can be the name of a server: its share is mounted in a folder of this name.
bool isServerName(std::string_view name);

/// The name of this machine; "" when it can't be told.
std::string ownServerName();

}  // namespace torvex
