// cManager: the administration menu as one text for the browser. Each entry is a record of eight fields that
// "#" divides and "###" ends; the last record only says how many levels are to be closed.

#include <algorithm>
#include <cmath>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/AdvancedAccess.h"
#include "accounts/Website.h"
#include "administration/MenuEntries.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"

namespace torvex {

namespace {

constexpr std::size_t levelLength = 3;
constexpr std::string_view fieldEnd = "#";
constexpr std::string_view recordEnd = "###";

constexpr std::string_view locked = "-1";

/// By which the records sort: level and reference.
std::string keyOf(const MenuEntry& entry) {
    const std::string level = "0" + std::to_string(entry.level);
    return std::string(text::last(level, 2)) + "." + entry.reference;
}

std::string parentOf(const std::string& key) {
    const auto length = text::length(key);
    return std::string(text::first(key, length < levelLength ? 0 : length - levelLength));
}

int lengthOf(const std::string& key) {
    return static_cast<int>(text::length(key));
}

/// An empty field would run into the end of the record.
std::string_view orBlank(std::string_view field) {
    return field.empty() ? " " : field;
}

/// The text in the making.
class MapText {
  public:
    void add(const MenuEntry& entry, const std::string& title, std::string_view program) {
        const std::string key = keyOf(entry);
        field(std::to_string(entry.advId));
        field(text::replaceAll(key, ".", ""));
        field(title);
        field(orBlank(text::trim(entry.icon)));
        field(orBlank(program));
        field(entry.hasChildren ? "1" : "0");
        field(std::to_string((lengthOf(key) - 2) / 3));
        text_.append(std::to_string(levelsToClose(parentOf(key)))).append(recordEnd);
    }
    std::string finish() && {
        const int levels = std::max(0, (lengthOf(parent_) + 1) / 3 - 1) + 1;
        text_.append(std::to_string(levels)).append(recordEnd);
        return std::move(text_);
    }

  private:
    void field(std::string_view content) { text_.append(content).append(fieldEnd); }

    /// How many levels end between the last entry and one with this parent.
    int levelsToClose(std::string parent) {
        if (text::equals(parent, parent_)) return 0;
        const double levels = (lengthOf(parent_) - lengthOf(parent) + 1) / 3.0;
        parent_ = std::move(parent);
        return std::max(0, static_cast<int>(std::nearbyint(levels)));
    }

    std::string text_;
    std::string parent_;
};

AdvancedAccess accessOf(db::Connection& connection, int loginId, const std::string& site,
                        const std::string& lang) try {
    return AdvancedAccess::ofLogin(connection, loginId, text::trim(site), text::trim(lang));
} catch (...) {
    raiseFrom("checkAdvRights  !");
}

/// Where the entry leads; "" for a branch, and for an entry that the login can't open.
std::string_view programOf(const MenuEntry& entry, const AdvancedAccess* access) {
    if (entry.hasChildren) return {};
    const bool open = !access || (!entry.offersView && !entry.offersEdit);
    const auto given = access ? access->of(entry.advId, entry.level) : AdvancedAccess::Given();
    return open || given.view || given.edit ? text::trim(entry.program) : std::string_view();
}

std::string shownTitle(const MenuEntry& entry) {
    return text::replaceAll(text::htmlEncode(entry.title), "#", "-@-");
}

}  // namespace

std::string cManager::getAdvancedMap(const std::string& site, const std::string& lang, int order) try {
    if (!enterWebsite(connection(), author_.loginId, site + "." + lang)) return std::string(locked);
    const auto entries =
        menuEntries(connection(), host_.session.text(sessionKey::interfaceLanguage), menuOrder(order));
    std::optional<AdvancedAccess> access;
    if (!isAdministrator(author_.username)) access = accessOf(connection(), author_.loginId, site, lang);
    MapText map;
    for (const auto& entry : entries) {
        const std::string title = shownTitle(entry);
        map.add(entry, title.empty() ? text::htmlEncode(bracketedWord(label::untitled)) : title,
                programOf(entry, access ? &*access : nullptr));
    }
    return std::move(map).finish();
} catch (...) {
    raiseFrom("getAdvancedMap  !");
}

}  // namespace torvex
