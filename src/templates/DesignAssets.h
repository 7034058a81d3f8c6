#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// The statements of one register of design files. The three registers are alike but for their tables.
struct AssetStatements {
    std::string_view byId;
    std::string_view idByName;
    std::string_view nameTaken;  ///< by another entry than the given one
    std::string_view fileTaken;
    std::string_view pageChoiceLive;  ///< which entry a page names; 0 asks the parent
    std::string_view pageChoiceDesign;
    std::string_view directoryKey;  ///< the application value that holds the register's folder
    std::string_view fileLine;      ///< of errors of the register's operation for the file in force
};

extern const AssetStatements contentTemplateStatements;
extern const AssetStatements baseTemplateStatements;
extern const AssetStatements stylesheetStatements;

/// One entry of a register of design files, as it was read.
struct DesignAsset {
    bool exists = false;
    std::string site;
    std::string lang;
    std::string name;
    std::string description;
    std::string filename;
    std::string system;  ///< "1" for an entry of the system; only content templates have it
    std::string source;  ///< the text of the file, "" when it isn't there
};

/// What `check...` answers.
namespace assetStatus {
inline constexpr std::string_view free = "0";
inline constexpr std::string_view nameTaken = "1";
inline constexpr std::string_view fileTaken = "2";
}  // namespace assetStatus

/// The work that the three registers share. Stateless; failures pass through.
class DesignAssets {
  public:
    DesignAssets(const AssetStatements& statements, HostContext& host, db::Connection& connection)
        : statements_(statements), host_(host), connection_(connection) {}

    std::string_view check(std::string_view site, std::string_view lang, double id, std::string_view name,
                           std::string_view file);
    /// With the file's text.
    DesignAsset read(double id);
    /// -1 when there is none.
    int idByName(std::string_view name, std::string_view site, std::string_view lang);
    /// File and name of the entry that is in force at a node: its own, or that of the nearest ancestor that
    /// names one; "" for none.
    std::string fileAt(std::string_view nodeId, Twin twin);
    std::string nameAt(std::string_view nodeId, Twin twin);

  private:
    std::optional<DesignAsset> row(double id);
    std::optional<DesignAsset> inForce(std::string_view nodeId, Twin twin);

    const AssetStatements& statements_;
    HostContext& host_;
    db::Connection& connection_;
};

/// The file in force for a page. A failure has the line of the register's operation in front, as one level of
/// the operation that asked.
std::string fileInForce(const AssetStatements& assets, HostContext& host, db::Connection& connection,
                        PageId pageId, Twin twin);

}  // namespace torvex
