#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <sys/types.h>

namespace torvex::cli {

/// Whose rights the server has. Started as root it works with those of the user that the settings name: from
/// its creation on for all but `asRoot`, and after `giveUpRoot` for good. Not started as root it has its own.
/// For the whole process, all threads.
class ServerUser {
  public:
    /// `name` is the user of the settings; "" is none. Throws `Error` when the process can't become that
    /// user.
    explicit ServerUser(const std::string& name);

    /// Throws `Error` when the server would work as root, unasked, for more than this machine.
    void allowAddress(const std::string& address) const;
    /// Throws `Error` when the installation isn't this user's to work in.
    void demandFolder(const std::filesystem::path& folder) const;

    /// Runs what only root may, if the process was started so: low ports, and keys that nobody else reads.
    void asRoot(const std::function<void()>& work) const;
    /// Throws `Error` when root could be had again.
    void giveUpRoot();

    /// Nobody else was named.
    bool isRootUnasked() const { return isRootUnasked_; }

  private:
    void takeOn(const std::string& name);

    std::string name_;
    uid_t user_;
    gid_t group_;
    bool hasRoot_ = false;  ///< in reserve
    bool isRootUnasked_ = false;
};

}  // namespace torvex::cli
