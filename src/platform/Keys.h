#pragma once

#include <string_view>

// The keys under which callers outside know the values of the two stores. What they mean: docs/settings.md.

/// Of the values that all requests share.
namespace torvex::applicationKey {

inline constexpr std::string_view accessFilter = "torvex_access_IP_filter";
inline constexpr std::string_view accessFilterExact = "torvex_access_IP_filter_exact";
inline constexpr std::string_view adminTemplatesPath = "torvex_adminTemplates_dir";
inline constexpr std::string_view authoringSsl = "torvex_ssl";
inline constexpr std::string_view autoApprove = "torvex_autoApprove";
inline constexpr std::string_view baseTemplatesPath = "torvex_baseTemplates_dir";
inline constexpr std::string_view charset = "torvex_charset";
inline constexpr std::string_view codepage = "torvex_codepage";
inline constexpr std::string_view configLock = "torvex_config_lock";
inline constexpr std::string_view contentPolicy = "tvx_contentPolicy";
inline constexpr std::string_view contentPolicySources = "tvx_contentPolicy_sources";
inline constexpr std::string_view contentTemplatesPath = "torvex_contentTemplates_dir";
inline constexpr std::string_view databasePassword = "torvex_odbc_password";
inline constexpr std::string_view databaseText = "torvex_odbc";
inline constexpr std::string_view databaseUser = "torvex_odbc_user";
inline constexpr std::string_view defaultPageId = "tvx_default_pageId";
inline constexpr std::string_view documentSecurity = "torvex_doc_security";
inline constexpr std::string_view documentsName = "torvex_docDir";
inline constexpr std::string_view documentsPath = "torvex_doc_dir";
inline constexpr std::string_view documentsUrl = "torvex_doc_url";
inline constexpr std::string_view editorBackcolor = "torvex_editor_backcolor";
inline constexpr std::string_view editorFontcolor = "torvex_editor_fontcolor";
inline constexpr std::string_view editorFontname = "torvex_editor_fontname";
inline constexpr std::string_view editorFontsize = "torvex_editor_fontsize";
inline constexpr std::string_view editorHeadings = "torvex_editor_headings";
inline constexpr std::string_view editorHeight = "torvex_editor_height";
inline constexpr std::string_view editorStyles = "torvex_editor_styles";
inline constexpr std::string_view editorWidth = "torvex_editor_width";
inline constexpr std::string_view emailNotification = "torvex_emailNotification";
inline constexpr std::string_view extranetSsl = "tvx_extranet_ssl";
inline constexpr std::string_view httpsOnly = "torvex_https_only";
inline constexpr std::string_view hyperlinkCheck = "torvex_hyperlink_check";
inline constexpr std::string_view imageSecurity = "torvex_img_security";
inline constexpr std::string_view imagesName = "torvex_imgDir";
inline constexpr std::string_view imagesPath = "torvex_image_dir";
inline constexpr std::string_view imagesUrl = "torvex_image_url";
inline constexpr std::string_view installPath = "torvex_install_path";
inline constexpr std::string_view interfaceCharset = "torvex_interface_charset";
inline constexpr std::string_view isExtranet = "torvex_extranet";
inline constexpr std::string_view loadBalancingShareName = "torvex_loadBalancing_shareName";
inline constexpr std::string_view logFilter = "tvx_log_IP_filter";
inline constexpr std::string_view msgBoardHtmlAllowed = "torvex_msgBoard_html_allowed";
inline constexpr std::string_view passwordStore = "torvex_password_store";
inline constexpr std::string_view portHttp = "torvex_port_http";
inline constexpr std::string_view portHttps = "torvex_port_https";
inline constexpr std::string_view replicationRoot = "torvex_replication_root";
inline constexpr std::string_view replicationWait = "torvex_replication_wait";
inline constexpr std::string_view rootPath = "torvex_root_path";
inline constexpr std::string_view scriptTimeoutLong = "torvex_scriptTimeout_long";
inline constexpr std::string_view scriptTimeoutNormal = "torvex_scriptTimeout_normal";
inline constexpr std::string_view sitemapLevels = "torvex_sitemap_loadLevel";
inline constexpr std::string_view stylesheetsPath = "torvex_stylesheets_dir";
inline constexpr std::string_view systemImages = "torvex_system_images";
inline constexpr std::string_view usesFeeds = "torvex_feeds";
inline constexpr std::string_view usesFrames = "torvex_frames";
inline constexpr std::string_view websiteSsl = "tvx_website_ssl";

}  // namespace torvex::applicationKey

/// Of what a visitor's session keeps. `visitor...` and `author...` are two logins that one session can hold.
namespace torvex::sessionKey {

inline constexpr std::string_view adminTemplatesPath = "torvex_adminTemplates_dir";
inline constexpr std::string_view auditFrom = "torvex_audit_from";
inline constexpr std::string_view auditTo = "torvex_audit_to";
inline constexpr std::string_view authorFullname = "torvex_fullname";
inline constexpr std::string_view authoringSsl = "torvex_ssl";
inline constexpr std::string_view authorLoginId = "torvex_loginId";
inline constexpr std::string_view authorName = "torvex_username";
inline constexpr std::string_view authorPassword = "torvex_password";
inline constexpr std::string_view charset = "tvx_charset";
inline constexpr std::string_view chosenInterface = "torvex_interface_language";
inline constexpr std::string_view codePage = "tvx_codePage";
inline constexpr std::string_view counter = "tvx_counter";
inline constexpr std::string_view dateFormat = "torvex_date_format";
inline constexpr std::string_view defaultLanguage = "tvx_default_language";
inline constexpr std::string_view editorLanguage = "torvex_editor_language";
inline constexpr std::string_view hostName = "torvex_dns";
inline constexpr std::string_view interfaceLanguage = "torvex_current_interface";
inline constexpr std::string_view loginError = "tvx_loginError";
inline constexpr std::string_view loginTrials = "tvx_loginTrials";
inline constexpr std::string_view oncontextmenu = "torvex_oncontextmenu";
inline constexpr std::string_view pageAppliedFor = "tvx_pageAppliedFor";
inline constexpr std::string_view scriptTimeoutLong = "torvex_scriptTimeout_long";
inline constexpr std::string_view scriptTimeoutNormal = "torvex_scriptTimeout_normal";
inline constexpr std::string_view sitemapLevels = "torvex_sitemap_loadLevel";
inline constexpr std::string_view ssl = "ssl";
inline constexpr std::string_view statisticsFrom = "torvex_statistics_from";
inline constexpr std::string_view statisticsTo = "torvex_statistics_to";
inline constexpr std::string_view url = "tvx_url";
inline constexpr std::string_view visitedPages = "torvex_visited_pages";
inline constexpr std::string_view visitorName = "tvx_username";
inline constexpr std::string_view visitorPassword = "tvx_password";
inline constexpr std::string_view visitorTarget = "tvx_target";

}  // namespace torvex::sessionKey
