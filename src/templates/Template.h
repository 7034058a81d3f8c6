#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"
#include "templates/DesignAssets.h"

namespace torvex {

/// The register of content templates, by site and language; each entry names a file. An object holds the
/// last entry read. One thread uses it; failures are `Error` with the operation's line in front.
class Template {
  public:
    explicit Template(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Reading entries
    /// May this name and file be used by the entry: "0" they are free, "1" the name is taken, "2" the file
    /// is.
    std::string checkTemplate(const std::string& site, const std::string& lang, int templateId,
                              const std::string& name, const std::string& file);
    /// Fills the properties; false, with the properties cleared, when there is no such entry.
    bool getTemplate(int templateId);
    /// -1 when there is none.
    int getTemplateId(const std::string& name, const std::string& site, const std::string& lang);
    /// The entries of a site and language: id, name, description, system flag. `listType` 1 those of the
    /// system, 0 the others, anything else all.
    Value getTemplateList(const std::string& site, const std::string& lang, int listType);

    // Removing entries
    /// With its file: "0", or why it stays.
    std::string delTemplate(int templateId, int advId = 0);

    // What is in force for a page: its own entry, or that of the nearest ancestor that names one; "" for
    // none.
    std::string getTemplateFile(const std::string& pageIdent, const std::string& mode = "L");
    std::string getTemplateName(const std::string& pageIdent, const std::string& mode = "L");

    // A page's two names
    std::string getNodeId(PageId pageId);
    PageId getPageId(const std::string& nodeId);

    // The entry last read
    bool tplExists() const { return entry_.exists; }
    const std::string& tplSite() const { return entry_.site; }
    const std::string& tplLang() const { return entry_.lang; }
    const std::string& tplName() const { return entry_.name; }
    const std::string& tplDescription() const { return entry_.description; }
    const std::string& tplFilename() const { return entry_.filename; }
    const std::string& tplSystem() const { return entry_.system; }
    const std::string& tplSource() const { return entry_.source; }

  private:
    DesignAssets assets() { return {contentTemplateStatements, host_, connection_.use(host_)}; }

    HostContext& host_;
    db::ConnectionSource connection_;
    DesignAsset entry_;
};

}  // namespace torvex
