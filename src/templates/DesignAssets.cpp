#include "templates/DesignAssets.h"

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "templates/DesignPath.h"

namespace torvex {

const AssetStatements contentTemplateStatements{
    .byId =
        "select tpl_site as site, tpl_lang as lang, tpl_name as name, tpl_description as description, "
        "tpl_filename as filename, tpl_system as isSystem from TORVEX_TEMPLATES where tpl_id = ?",
    .idByName =
        "select tpl_id as id from TORVEX_TEMPLATES "
        "where tpl_site = ? and tpl_lang = ? and tpl_name = ? order by tpl_id",
    .nameTaken =
        "select tpl_id from TORVEX_TEMPLATES "
        "where tpl_site = ? and tpl_lang = ? and tpl_name = ? and tpl_id <> ?",
    .fileTaken =
        "select tpl_id from TORVEX_TEMPLATES "
        "where tpl_site = ? and tpl_lang = ? and tpl_filename = ? and tpl_id <> ?",
    .pageChoiceLive = "select template as id from TORVEX_PAGES_LIVE where nodeId = ?",
    .pageChoiceDesign = "select template as id from TORVEX_PAGES_DESIGN where nodeId = ?",
    .directoryKey = applicationKey::contentTemplatesPath,
    .fileLine = "getTemplateFile !",
};

const AssetStatements baseTemplateStatements{
    .byId =
        "select btpl_site as site, btpl_lang as lang, btpl_name as name, btpl_description as description, "
        "btpl_filename as filename, 0 as isSystem from TORVEX_BASETEMPLATES where btpl_id = ?",
    .idByName =
        "select btpl_id as id from TORVEX_BASETEMPLATES "
        "where btpl_site = ? and btpl_lang = ? and btpl_name = ? order by btpl_id",
    .nameTaken =
        "select btpl_id from TORVEX_BASETEMPLATES "
        "where btpl_site = ? and btpl_lang = ? and btpl_name = ? and btpl_id <> ?",
    .fileTaken =
        "select btpl_id from TORVEX_BASETEMPLATES "
        "where btpl_site = ? and btpl_lang = ? and btpl_filename = ? and btpl_id <> ?",
    .pageChoiceLive = "select baseTemplate as id from TORVEX_PAGES_LIVE where nodeId = ?",
    .pageChoiceDesign = "select baseTemplate as id from TORVEX_PAGES_DESIGN where nodeId = ?",
    .directoryKey = applicationKey::baseTemplatesPath,
    .fileLine = "getBaseTemplateFile !",
};

const AssetStatements stylesheetStatements{
    .byId =
        "select ss_site as site, ss_lang as lang, ss_name as name, ss_description as description, "
        "ss_filename as filename, 0 as isSystem from TORVEX_STYLESHEETS where ss_id = ?",
    .idByName =
        "select ss_id as id from TORVEX_STYLESHEETS "
        "where ss_site = ? and ss_lang = ? and ss_name = ? order by ss_id",
    .nameTaken =
        "select ss_id from TORVEX_STYLESHEETS "
        "where ss_site = ? and ss_lang = ? and ss_name = ? and ss_id <> ?",
    .fileTaken =
        "select ss_id from TORVEX_STYLESHEETS "
        "where ss_site = ? and ss_lang = ? and ss_filename = ? and ss_id <> ?",
    .pageChoiceLive = "select stylesheet as id from TORVEX_PAGES_LIVE where nodeId = ?",
    .pageChoiceDesign = "select stylesheet as id from TORVEX_PAGES_DESIGN where nodeId = ?",
    .directoryKey = applicationKey::stylesheetsPath,
    .fileLine = "getStyleSheetFile !",
};

namespace {

/// Files are registered by their name alone; a path that an author's browser sent is cut.
std::string_view fileNameOf(std::string_view file) {
    const std::size_t divider = file.rfind('\\');
    return divider == std::string_view::npos ? file : file.substr(divider + 1);
}

}  // namespace

std::string_view DesignAssets::check(std::string_view site, std::string_view lang, double id,
                                     std::string_view name, std::string_view file) {
    if (connection_.query(statements_.nameTaken, {site, lang, name, id}).next())
        return assetStatus::nameTaken;
    if (connection_.query(statements_.fileTaken, {site, lang, fileNameOf(file), id}).next()) {
        return assetStatus::fileTaken;
    }
    return assetStatus::free;
}

std::optional<DesignAsset> DesignAssets::row(double id) {
    auto rows = connection_.query(statements_.byId, {id});
    if (!rows.next()) return std::nullopt;
    DesignAsset asset;
    asset.exists = true;
    asset.site = rows.text("site");
    asset.lang = rows.text("lang");
    asset.name = rows.text("name");
    asset.description = rows.text("description");
    asset.filename = rows.text("filename");
    asset.system = rows.text("isSystem");
    return asset;
}

DesignAsset DesignAssets::read(double id) {
    DesignAsset asset = row(id).value_or(DesignAsset{});
    if (!asset.exists) return asset;
    const std::string path =
        designPath(host_.application, statements_.directoryKey, asset.site, asset.lang, asset.filename);
    asset.source = host_.files.readText(path, TextFormat::SystemDefault).value_or("");
    return asset;
}

int DesignAssets::idByName(std::string_view name, std::string_view site, std::string_view lang) {
    auto rows = connection_.query(statements_.idByName, {site, lang, name});
    return rows.next() ? static_cast<int>(rows.number("id", -1)) : -1;
}

std::optional<DesignAsset> DesignAssets::inForce(std::string_view nodeId, Twin twin) {
    const auto& choice = twin == Twin::Design ? statements_.pageChoiceDesign : statements_.pageChoiceLive;
    for (std::string_view at = nodeId; at.size() >= PageIdentity::rootLength; at = parentOf(at)) {
        auto rows = connection_.query(choice, {at});
        const double id = rows.next() ? rows.number("id") : 0;
        if (id != 0) return row(id);
    }
    return std::nullopt;
}

std::string DesignAssets::fileAt(std::string_view nodeId, Twin twin) {
    const auto asset = inForce(nodeId, twin);
    return asset ? std::string(text::trim(asset->filename)) : std::string();
}

std::string DesignAssets::nameAt(std::string_view nodeId, Twin twin) {
    const auto asset = inForce(nodeId, twin);
    return asset ? asset->name : std::string();
}

std::string fileInForce(const AssetStatements& assets, HostContext& host, db::Connection& connection,
                        PageId pageId, Twin twin) {
    return asLevel(assets.fileLine, [&] {
        return DesignAssets(assets, host, connection).fileAt(nodeIdFrom(connection, pageId), twin);
    });
}

}  // namespace torvex
