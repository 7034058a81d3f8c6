#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;

/// The register of applications: programs at an address of their own that pages of type A stand for. Global,
/// not by site. An object holds the last entry read. One thread uses it; failures are `Error` with the
/// operation's line in front.
class Application {
  public:
    explicit Application(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Reading entries
    /// Fills the properties; false, with the properties cleared, when there is no such entry.
    bool getApplication(int appId);
    /// -1 when there is none.
    int getApplicationId(const std::string& name);
    /// Id, name, description, system flag. `listType` 1 those of the system, 0 the others, 2 those that can
    /// be published, anything else all.
    Value getApplicationList(int listType);
    /// "" when there is none.
    std::string getApplicationName(int appId);

    // Removing entries
    /// "0", or why it stays.
    std::string delApplication(int appId, int advId = 0);

    // The entry last read
    bool appExists() const { return entry_.exists; }
    const std::string& appName() const { return entry_.name; }
    const std::string& appDescription() const { return entry_.description; }
    const std::string& appURLPublic() const { return entry_.urlPublic; }
    const std::string& appURLAdmin() const { return entry_.urlAdmin; }
    const std::string& appURLPublish() const { return entry_.urlPublish; }
    const std::string& appSystem() const { return entry_.system; }

  private:
    struct Entry {
        bool exists = false;
        std::string name;
        std::string description;
        std::string urlPublic;
        std::string urlAdmin;
        std::string urlPublish;
        std::string system;
    };

    HostContext& host_;
    db::ConnectionSource connection_;
    Entry entry_;
};

}  // namespace torvex
