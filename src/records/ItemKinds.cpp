#include "records/ItemKinds.h"

#include <array>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<ItemKind, 15> itemKinds = {{
    {"application", "TORVEX_APPLICATIONS", "app_id", ItemKind::Key::Number},
    {"baseTemplate", "TORVEX_BASETEMPLATES", "btpl_id", ItemKind::Key::Number},
    {"contentTemplate", "TORVEX_TEMPLATES", "tpl_id", ItemKind::Key::Number},
    {"group", "TORVEX_USERGROUPS", "groupId", ItemKind::Key::Number},
    {"htmlFeed", "TORVEX_FEEDS_HTML", "feedId", ItemKind::Key::Number},
    {"interface", "TORVEX_INTERFACE_LANGUAGES", "lang_id", ItemKind::Key::Code},
    {"language", "TORVEX_LANGUAGES", "lang", ItemKind::Key::Code},
    {"login", "TORVEX_LOGINS", "loginId", ItemKind::Key::Number},
    {"metadata", "TORVEX_METADATA", "metaData_id", ItemKind::Key::Number},
    {"role", "TORVEX_ROLES", "roleId", ItemKind::Key::Number},
    {"server", "TORVEX_SERVERS", "serverId", ItemKind::Key::Number},
    {"site", "TORVEX_SITES", "site", ItemKind::Key::Code},
    {"stylesheet", "TORVEX_STYLESHEETS", "ss_id", ItemKind::Key::Number},
    {"user", "TORVEX_USERS", "userId", ItemKind::Key::Number},
    {"xmlFeed", "TORVEX_FEEDS_XML", "feedId", ItemKind::Key::Number},
}};

}  // namespace

std::optional<AdminItem> findAdminItem(std::string_view word, std::string_view itemId) {
    for (const ItemKind& kind : itemKinds) {
        if (!text::equals(kind.word, text::trim(word))) continue;
        const std::string_view key = text::trim(itemId);
        if (kind.key == ItemKind::Key::Code) return AdminItem{kind, key};
        if (!text::isNumeric(key)) return std::nullopt;
        return AdminItem{kind, text::toNumber(key)};
    }
    return std::nullopt;
}

}  // namespace torvex
