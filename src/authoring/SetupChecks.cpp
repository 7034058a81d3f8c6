#include "authoring/SetupChecks.h"

#include "authoring/FreePlaces.h"
#include "authoring/PageBuffer.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/PageRows.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

using namespace setupCode;

constexpr PageId noPage = -1;
constexpr std::string_view passed;

constexpr std::string_view automatic = "A";
constexpr std::string_view manual = "M";

std::string cut(std::string_view text, std::size_t longest) {
    return std::string(text::first(text, longest));
}

std::string parameters(std::string_view given) {
    constexpr std::size_t longestParameters = 250;
    return cut(text::replaceAll(given, " ", ""), longestParameters);
}

bool isFlag(int value) {
    return value == 0 || value == 1;
}

/// The tests in their order, each with the normalisation that belongs to it.
class SetupTest {
  public:
    SetupTest(db::Connection& connection, PageBuffer& page, const SetupPlace& place)
        : connection_(connection), page_(page), place_(place) {}

    std::string_view run() {
        for (const auto test :
             {&SetupTest::title, &SetupTest::type, &SetupTest::application, &SetupTest::design,
              &SetupTest::navigation, &SetupTest::onlineDays, &SetupTest::menus, &SetupTest::loginPage}) {
            if (const auto code = (this->*test)(); !code.empty()) return code;
        }
        return passed;
    }

  private:
    using Exists = bool (*)(db::Connection&, int);

    std::string_view title() {
        if (place_.parent.empty()) return passed;
        return isTaken(Twin::Design) || isTaken(Twin::Live) ? titleTaken : passed;
    }

    bool isTaken(Twin twin) {
        return asLevel("isPageTitle !", [&] {
            return isTitled(connection_, place_.parent, page_.title, twin, place_.itself);
        });
    }

    std::string_view type() {
        const bool known =
            page_.type.size() == 1 && place_.types.find(page_.type.front()) != std::string_view::npos;
        return known ? passed : badType;
    }

    std::string_view application() {
        if (!hasApplication(kind())) {
            page_.appId = -1;
            page_.appParamPublic.clear();
            page_.appParamAdmin.clear();
            page_.appSystemFolder = noPage;
            return passed;
        }
        if (!isKnown("isApplication !", applicationExists, page_.appId)) return badApplication;
        page_.appParamPublic = parameters(page_.appParamPublic);
        page_.appParamAdmin = parameters(page_.appParamAdmin);
        return page_.appSystemFolder > 0 && !hasSystemFolder() ? badSystemFolder : passed;
    }

    /// Whether the application's folder stands directly in the system branch of this site and language.
    bool hasSystemFolder() {
        const std::string nodeId = nodeIdFrom(connection_, page_.appSystemFolder);
        const std::string branch = systemBranch::below(place_.site + "." + place_.lang);
        return text::length(nodeId) == PageIdentity::rootLength + 2 * PageIdentity::levelLength &&
               text::startsWith(nodeId, branch) && isFolder(typeInDesign(page_.appSystemFolder));
    }

    std::string typeInDesign(PageId pageId) {
        return asLevel("getPageType !", [&] { return typeOfPage(connection_, pageId, Twin::Design); });
    }

    std::string_view design() {
        if (!mayStand("isBaseTemplate !", baseTemplateExists, page_.baseTemplateId)) return badBaseTemplate;
        if (!mayStand("isTemplate !", templateExists, page_.templateId)) return badTemplate;
        if (!mayStand("isStylesheet !", stylesheetExists, page_.stylesheetId)) return badStylesheet;
        return passed;
    }

    /// 0 inherits, which a root can't.
    bool mayStand(std::string_view line, Exists exists, int id) {
        return id == 0 ? !place_.isRoot : isKnown(line, exists, id);
    }

    bool isKnown(std::string_view line, Exists exists, int id) {
        return asLevel(line, [&] { return exists(connection_, id); });
    }

    std::string_view navigation() {
        if (!hasNavigation(kind())) {
            page_.navigation.clear();
        } else if (!text::equals(page_.navigation, automatic)) {
            page_.navigation = manual;
        }
        if (page_.navigation != manual) {
            page_.previous = page_.next = page_.up = noPage;
            return passed;
        }
        if (!isNoneOrPage(page_.previous)) return badPrevious;
        if (!isNoneOrPage(page_.next)) return badNext;
        return isNoneOrPage(page_.up) ? passed : badUp;
    }

    std::string_view onlineDays() {
        constexpr std::size_t longestDay = 8;
        page_.onlineFrom = cut(page_.onlineFrom, longestDay);
        page_.onlineTo = cut(page_.onlineTo, longestDay);
        if (!page_.onlineFrom.empty() && !isDate8(page_.onlineFrom)) return badOnlineFrom;
        return !page_.onlineTo.empty() && !isDate8(page_.onlineTo) ? badOnlineTo : passed;
    }

    /// A page is in the breadcrumb and not in the dynamic menu unless its setup says otherwise, and only
    /// what gives structure may be left out of the breadcrumb.
    std::string_view menus() {
        if (!isFlag(page_.breadcrumb) || !isStructure(kind())) page_.breadcrumb = 1;
        if (!isFlag(page_.dynMenu)) page_.dynMenu = 0;
        return passed;
    }

    std::string_view loginPage() {
        page_.groups = std::string(text::trim(page_.groups));
        const bool hasGroups = !page_.groups.empty() && page_.groups != "0" && page_.groups != "1";
        if (!hasGroups) page_.loginPage = noPage;
        return isNoneOrPage(page_.loginPage) ? passed : badLoginPage;
    }

    PageKind kind() const { return kindOf(page_.type); }

    bool isNoneOrPage(PageId pageId) {
        return !(pageId > 0) ||
               asLevel("isPage !", [&] { return isPage(connection_, pageId, Twin::Design); });
    }

    db::Connection& connection_;
    PageBuffer& page_;
    const SetupPlace& place_;
};

}  // namespace

void normaliseTitleAndType(PageBuffer& page) {
    constexpr std::size_t longestTitle = 50;
    page.title = cut(text::trim(page.title), longestTitle);
    page.type = text::upper(page.type);
}

std::string_view checkSetup(db::Connection& connection, PageBuffer& page, const SetupPlace& place) {
    return SetupTest(connection, page, place).run();
}

bool websiteExists(db::Connection& connection, std::string_view site, std::string_view lang) {
    return asLevel("isSite !", [&] { return siteExists(connection, site); }) &&
           asLevel("isLang !", [&] { return languageExists(connection, lang); });
}

}  // namespace torvex
