#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace torvex {

class FileSystem;

/// Works on the installation folders of other servers, which are mounted on this machine. A mount can hang
/// for as long as it likes, and nothing can stop a thread that waits for it: the work is done on a thread of
/// its own, which owns all that it uses, and is given up on after a while. Safe to share between threads.
class ServerShares {
  public:
    /// Gives the files of a share (its folder here) together with those of the installation, so that a file
    /// can be copied from one to the other, and no others. May block; throws when it can't.
    using Open =
        std::function<std::shared_ptr<FileSystem>(const std::string& share, const std::string& install)>;
    using Step = std::function<void(FileSystem&)>;

    /// How long is waited, in seconds: for all steps together, and without any of them being finished.
    struct Patience {
        std::chrono::duration<double> altogether;
        std::chrono::duration<double> withoutProgress;
    };

    explicit ServerShares(Open open);
    ServerShares(const ServerShares&) = delete;
    ServerShares& operator=(const ServerShares&) = delete;
    /// Leaves alone what was given up on.
    ~ServerShares();

    /// Runs the steps in their order, each also when one before it failed, and returns for each of them why
    /// it failed, "" for one that didn't. When it is given up on, the step that hangs may still come to its
    /// end, and those behind it are not begun. Until then the share's further work is refused at once, so
    /// that only one call waits for a server that hangs.
    std::vector<std::string> run(const std::string& share, const std::string& install,
                                 std::vector<Step> steps, Patience patience);

  private:
    struct Common;
    struct Run;

    std::shared_ptr<Common> common_;
};

/// The real shares: both folders on the disk, beneath which files are opened and outside of which none are.
std::shared_ptr<FileSystem> openDiskShare(const std::string& share, const std::string& install);

}  // namespace torvex
