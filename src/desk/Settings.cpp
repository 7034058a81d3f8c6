// desk: the settings of the installation and of a login, with what each means.

#include <array>
#include <map>
#include <span>

#include "accounts/AccessFilter.h"
#include "accounts/VisitorFactor.h"
#include "desk/desk.h"
#include "installation/SettingValue.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr std::size_t settingColumns = 8;
/// In place of a login's number: the installation; and the login whose settings each new one gets.
constexpr int everybody = 0;
constexpr int forNewLogins = 1;

/// When a change counts.
namespace takes {
constexpr std::string_view atOnce = "now";
constexpr std::string_view nextSession = "session";  ///< what a session keeps from its beginning
constexpr std::string_view byFile = "file";          ///< `torvex.toml` decides it
constexpr std::string_view never = "unused";         ///< nothing asks for it any more
}  // namespace takes

/// A setting that the program knows. Its meaning is a word of the interface (install/rows/08_words_running.sql).
struct Known {
    std::string_view parameter;
    std::string_view group;
    std::string_view type;
    std::string_view usual;
    int meaning;
    std::string_view when = takes::atOnce;
};

// In the order in which they are shown.
constexpr std::array<Known, 42> ofInstallation{{
    {"tvx_default_pageId", "website", "N", "", 6700},
    {"tvx_website_ssl", "website", "B", "0", 6701},
    {"torvex_hyperlink_check", "website", "B", "1", 6702},
    {"torvex_frames", "website", "B", "0", 6703},
    {"tvx_contentPolicy", "website", "C", "report-only", 6704},
    {"tvx_contentPolicy_sources", "website", "C", "", 6705},
    {"tvx_log_IP_filter", "website", "C", "", 6706},
    {"torvex_extranet", "visitors", "B", "0", 6707},
    {"tvx_extranet_ssl", "visitors", "B", "0", 6708},
    {visitorFactorSetting, "visitors", "C", "off", 5981},
    {"torvex_img_security", "visitors", "B", "0", 6709},
    {"torvex_doc_security", "visitors", "B", "0", 6710},
    {"torvex_ssl", "authors", "B", "0", 6711, takes::nextSession},
    {"torvex_access_IP_filter", "authors", "C", "", 6712},
    {"torvex_access_IP_filter_exact", "authors", "B", "0", 6713},
    {"torvex_password_store", "authors", "C", "", 6714},
    {"torvex_autoApprove", "authors", "B", "0", 6715},
    {"torvex_emailNotification", "authors", "N", "0", 6716},
    {"torvex_sitemap_loadLevel", "authors", "N", "2", 6717},
    {"torvex_interface_charset", "authors", "C", "utf-8", 6718},
    {"torvex_editor_styles", "editor", "B", "1", 6719},
    {"torvex_editor_headings", "editor", "B", "1", 6720},
    {"torvex_editor_fontname", "editor", "B", "1", 6721},
    {"torvex_editor_fontsize", "editor", "B", "1", 6722},
    {"torvex_editor_fontcolor", "editor", "B", "1", 6723},
    {"torvex_editor_backcolor", "editor", "B", "1", 6724},
    {"torvex_editor_width", "editor", "N", "580", 6725},
    {"torvex_editor_height", "editor", "N", "480", 6726},
    {"torvex_feeds", "modules", "B", "0", 6727},
    {"torvex_msgBoard_html_allowed", "modules", "B", "0", 6728},
    {"torvex_search_resultsPerPage", "modules", "N", "20", 6729, takes::nextSession},
    {"torvex_search_maxResults", "modules", "N", "100", 6730, takes::nextSession},
    {"torvex_search_security", "modules", "B", "1", 6731, takes::nextSession},
    {"torvex_search_pageSecurity", "modules", "B", "1", 6732, takes::nextSession},
    {"torvex_search_docSecurity", "modules", "B", "1", 6733, takes::nextSession},
    {"torvex_loadBalancing_shareName", "server", "C", "", 6734},
    {"torvex_replication_root", "server", "C", "", 6735},
    {"torvex_replication_wait", "server", "N", "60", 6736},
    {"torvex_scriptTimeout_normal", "server", "N", "90", 6737},
    {"torvex_scriptTimeout_long", "server", "N", "3600", 6738},
    {"torvex_WinHTTP_version", "server", "N", "5", 6739, takes::never},
    {"torvex_XMLParser_version", "server", "N", "4", 6740, takes::never},
}};

// What new logins start with is the usual value here.
constexpr std::array<Known, 6> ofLogins{{
    {"torvex_interface_language", "login", "C", "en", 6741, takes::nextSession},
    {"torvex_date_format", "login", "C", "mmddyyyy", 6742, takes::never},
    {"torvex_editor_language", "login", "C", "", 6743, takes::never},
    {"torvex_sitemap_loadLevel", "login", "N", "2", 6717},
    {"torvex_scriptTimeout_normal", "login", "N", "90", 6737},
    {"torvex_scriptTimeout_long", "login", "N", "3600", 6738},
}};

constexpr std::string_view selectSettings =
    "select parameter, value, dataType from TORVEX_SETUP where loginId = ? order by parameter";

struct Stored {
    std::string parameter;
    std::string value;
    std::string type;
};

/// By the parameters in small letters.
using StoredSettings = std::map<std::string, Stored>;

StoredSettings storedOf(db::Connection& connection, int loginId) {
    StoredSettings settings;
    auto rows = connection.query(selectSettings, {loginId});
    while (rows.next()) {
        const std::string parameter(text::trim(rows.text("parameter")));
        if (parameter.empty() || isFixedValue(parameter)) continue;
        settings.emplace(text::lower(parameter), Stored{parameter, rows.text("value"),
                                                        text::upper(text::trim(rows.text("dataType")))});
    }
    return settings;
}

/// Of a yes or no, "1" is the one and everything else the other.
std::string asWritten(std::string_view type, const std::string& value) {
    return type == "B" ? (value == "1" ? "1" : "0") : value;
}

class SettingList {
  public:
    SettingList(const ApplicationValues& application, std::map<double, std::string> meanings)
        : application_(application), meanings_(std::move(meanings)) {}

    void add(const Known& known, const std::string& value, const std::string& usual) {
        const bool isHeld = known.group != "login" && isHeldByFile(application_, known.parameter);
        add({known.parameter, meanings_.at(known.meaning), known.group, known.type, value, usual,
             value == usual ? 1 : 0, isHeld ? takes::byFile : known.when});
    }
    void addOther(const Stored& stored) {
        add({stored.parameter, "", "other", stored.type, asWritten(stored.type, stored.value), Value(), 0,
             takes::atOnce});
    }
    Value list() && { return gridOrEmpty(std::move(grid_)); }

  private:
    void add(std::vector<Value> cells) { grid_.add(std::move(cells)); }

    const ApplicationValues& application_;
    std::map<double, std::string> meanings_;
    ResultGrid grid_{settingColumns};
};

std::map<double, std::string> meaningsOf(db::Connection& connection, std::string_view language,
                                         std::span<const Known> known) {
    std::vector<double> labels;
    for (const Known& one : known) labels.push_back(one.meaning);
    return vocabularyTexts(connection, language, labels);
}

std::string usualOf(const Known& known, const StoredSettings& forNew) {
    const auto found = forNew.find(text::lower(known.parameter));
    return asWritten(known.type, found == forNew.end() ? std::string(known.usual) : found->second.value);
}

}  // namespace

Value desk::getSettings(int loginId) try {
    const std::span<const Known> known =
        loginId == everybody ? std::span<const Known>(ofInstallation) : std::span<const Known>(ofLogins);
    StoredSettings stored = storedOf(connection(), loginId);
    const StoredSettings forNew =
        loginId == everybody ? StoredSettings() : storedOf(connection(), forNewLogins);
    SettingList list(host_.application,
                     meaningsOf(connection(), host_.session.text(sessionKey::interfaceLanguage), known));
    for (const Known& one : known) {
        const std::string usual = usualOf(one, forNew);
        const auto found = stored.find(text::lower(one.parameter));
        list.add(one, found == stored.end() ? usual : asWritten(one.type, found->second.value), usual);
        if (found != stored.end()) stored.erase(found);
    }
    for (const auto& [name, other] : stored) list.addOther(other);
    return std::move(list).list();
} catch (...) {
    raiseFrom("getSettings !");
}

bool desk::tryAccessFilter(const std::string& filter, bool exact, const std::string& address) try {
    std::string tried(text::trim(address));
    return exact ? passesExactAccessFilter(text::trim(filter), tried)
                 : passesAccessFilter(text::trim(filter), tried);
} catch (...) {
    raiseFrom("tryAccessFilter !");
}

}  // namespace torvex
