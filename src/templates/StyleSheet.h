#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"
#include "templates/DesignAssets.h"

namespace torvex {

/// The register of stylesheets, by site and language; each entry names a file. An object holds the
/// last entry read. One thread uses it; failures are `Error` with the operation's line in front.
class StyleSheet {
  public:
    explicit StyleSheet(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Reading entries
    /// May this name and file be used by the entry: "0" they are free, "1" the name is taken, "2" the file
    /// is.
    std::string checkStylesheet(const std::string& site, const std::string& lang, int stylesheetId,
                                const std::string& name, const std::string& file);
    /// Fills the properties; false, with the properties cleared, when there is no such entry.
    bool getStylesheet(int stylesheetId);
    /// -1 when there is none.
    int getStylesheetId(const std::string& name, const std::string& site, const std::string& lang);
    /// The entries of a site and language by name: id, name, description.
    Value getStylesheetList(const std::string& site, const std::string& lang);

    // Removing entries
    /// With its file: "0", or why it stays.
    std::string delStylesheet(int stylesheetId, int advId = 0);

    // What is in force for a page: its own entry, or that of the nearest ancestor that names one; "" for
    // none.
    std::string getStylesheetFile(const std::string& pageIdent, const std::string& mode = "L");
    std::string getStylesheetName(const std::string& pageIdent, const std::string& mode = "L");

    // A page's two names
    std::string getNodeId(PageId pageId);
    PageId getPageId(const std::string& nodeId);

    // The entry last read
    bool ssExists() const { return entry_.exists; }
    const std::string& ssSite() const { return entry_.site; }
    const std::string& ssLang() const { return entry_.lang; }
    const std::string& ssName() const { return entry_.name; }
    const std::string& ssDescription() const { return entry_.description; }
    const std::string& ssFilename() const { return entry_.filename; }
    const std::string& ssSource() const { return entry_.source; }

  private:
    DesignAssets assets() { return {stylesheetStatements, host_, connection_.use(host_)}; }

    HostContext& host_;
    db::ConnectionSource connection_;
    DesignAsset entry_;
};

}  // namespace torvex
