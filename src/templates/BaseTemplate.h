#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"
#include "templates/DesignAssets.h"

namespace torvex {

/// The register of base templates, by site and language; each entry names a file. An object holds the
/// last entry read. One thread uses it; failures are `Error` with the operation's line in front.
class BaseTemplate {
  public:
    explicit BaseTemplate(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Reading entries
    /// May this name and file be used by the entry: "0" they are free, "1" the name is taken, "2" the file
    /// is.
    std::string checkBaseTemplate(const std::string& site, const std::string& lang, int baseTemplateId,
                                  const std::string& name, const std::string& file);
    /// Fills the properties; false, with the properties cleared, when there is no such entry.
    bool getBaseTemplate(int baseTemplateId);
    /// -1 when there is none.
    int getBaseTemplateId(const std::string& name, const std::string& site, const std::string& lang);
    /// The entries of a site and language by name: id, name, description.
    Value getBaseTemplateList(const std::string& site, const std::string& lang);

    // Removing entries
    /// With its file: "0", or why it stays.
    std::string delBaseTemplate(int baseTemplateId, int advId = 0);

    // What is in force for a page: its own entry, or that of the nearest ancestor that names one; "" for
    // none.
    std::string getBaseTemplateFile(const std::string& pageIdent, const std::string& mode = "L");
    std::string getBaseTemplateName(const std::string& pageIdent, const std::string& mode = "L");

    // A page's two names
    std::string getNodeId(PageId pageId);
    PageId getPageId(const std::string& nodeId);

    // The entry last read
    bool btplExists() const { return entry_.exists; }
    const std::string& btplSite() const { return entry_.site; }
    const std::string& btplLang() const { return entry_.lang; }
    const std::string& btplName() const { return entry_.name; }
    const std::string& btplDescription() const { return entry_.description; }
    const std::string& btplFilename() const { return entry_.filename; }
    const std::string& btplSource() const { return entry_.source; }

  private:
    DesignAssets assets() { return {baseTemplateStatements, host_, connection_.use(host_)}; }

    HostContext& host_;
    db::ConnectionSource connection_;
    DesignAsset entry_;
};

}  // namespace torvex
