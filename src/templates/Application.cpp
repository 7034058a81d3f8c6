#include "templates/Application.h"

#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "templates/AssetRemoval.h"

namespace torvex {

namespace {

constexpr std::string_view selectById =
    "select app_name, app_description, app_href_public, app_href_admin, app_href_publish, app_System "
    "from TORVEX_APPLICATIONS where app_id = ?";
constexpr std::string_view selectIdByName =
    "select app_id from TORVEX_APPLICATIONS where app_name = ? order by app_id";
constexpr std::string_view selectAll =
    "select app_id, app_Name, app_Description, app_System from TORVEX_APPLICATIONS "
    "order by app_System, app_Name";
constexpr std::string_view selectPublishable =
    "select app_id, app_Name, app_Description, app_System from TORVEX_APPLICATIONS "
    "where app_href_publish <> '' order by app_Name";
constexpr std::string_view selectBySystem =
    "select app_id, app_Name, app_Description, app_System from TORVEX_APPLICATIONS "
    "where app_system = ? order by app_Name";

db::Rows selectList(db::Connection& connection, int listType) {
    if (listType == 0 || listType == 1) return connection.query(selectBySystem, {listType});
    return connection.query(listType == 2 ? selectPublishable : selectAll);
}

constexpr std::array<AssetUse, 2> uses{
    AssetUse{"select application from TORVEX_PAGES_DESIGN where application = ?", removalStatus::usedByPage},
    AssetUse{"select application from TORVEX_PAGES_LIVE where application = ?", removalStatus::usedByPage},
};

constexpr RemovableAsset removable{
    .operation = "delApplication",
    .word = "Application",
    .lockItem = "application",
    .locked = removalStatus::locked,
    .selectEntry = "select app_name as name, '' as filename from TORVEX_APPLICATIONS where app_id = ?",
    .deleteEntry = "delete from TORVEX_APPLICATIONS where app_id = ?",
    .directoryKey = "",
    .uses = uses,
};

}  // namespace

bool Application::getApplication(int appId) try {
    entry_ = {};
    auto rows = connection_.use(host_).query(selectById, {appId});
    if (!rows.next()) return false;
    entry_.exists = true;
    entry_.name = rows.text("app_name");
    entry_.description = rows.text("app_description");
    entry_.urlPublic = rows.text("app_href_public");
    entry_.urlAdmin = rows.text("app_href_admin");
    entry_.urlPublish = rows.text("app_href_publish");
    entry_.system = rows.text("app_System");
    return true;
} catch (...) {
    raiseFrom("getApplication !");
}

int Application::getApplicationId(const std::string& name) try {
    auto rows = connection_.use(host_).query(selectIdByName, {name});
    return rows.next() ? static_cast<int>(rows.number("app_id", -1)) : -1;
} catch (...) {
    raiseFrom("getApplicationId !");
}

Value Application::getApplicationList(int listType) try {
    return db::gridOf(selectList(connection_.use(host_), listType));
} catch (...) {
    raiseFrom("getApplicationList !");
}

std::string Application::getApplicationName(int appId) try {
    auto rows = connection_.use(host_).query(selectById, {appId});
    return rows.next() ? rows.text("app_name") : std::string();
} catch (...) {
    raiseFrom("getApplicationName !");
}

std::string Application::delApplication(int appId, int advId) try {
    return removeAsset(host_, removable, appId, advId);
} catch (...) {
    raiseFrom("delApplication !");
}

}  // namespace torvex
