#include "accounts/AdminEntries.h"
#include "operations/register/AssetRows.h"
#include "operations/register/Classes.h"
#include "templates/Application.h"

namespace torvex::operations {

using namespace assets;

ClassEntry applicationOperations() {
    return describe<Application>(
        "application",
        "The register of applications: programs at addresses of their own that pages stand for.",
        {
            reads("getApplication", &Application::getApplication, {argument("appId")}, filled, anyLogin())
                .codes(noEntry(false)),
            reads("getApplicationId", &Application::getApplicationId, {argument("name")}, numbered,
                  anyLogin())
                .codes(noEntry(-1)),
            reads(
                "getApplicationList", &Application::getApplicationList, {argument("listType")},
                "The entries: 1 those of the system, 0 the others, 2 those that can be published, else all.",
                anyLogin())
                .lists({{"app_id", Number},
                        {"app_name", Text},
                        {"app_description", Text},
                        {"app_system", Number}}),
            writes("delApplication", &Application::delApplication, {argument("appId"), argument("advId", 0)},
                   "Removes an entry that nothing uses.", editAccess(adminEntry::applications))
                .codes(removalCodes({}, "4")),
            reads("getApplicationName", &Application::getApplicationName, {argument("appId")},
                  "The name of an entry; empty text when there is none.", anyLogin()),
        },
        {
            property("appExists", &Application::appExists, "Whether the entry last asked for is there."),
            property("appName", &Application::appName, "Its name."),
            property("appDescription", &Application::appDescription, "Its description."),
            property("appURLPublic", &Application::appURLPublic, "Its address for visitors."),
            property("appURLAdmin", &Application::appURLAdmin, "Its address for authors."),
            property("appURLPublish", &Application::appURLPublish, "The address that publishes it."),
            property("appSystem", &Application::appSystem, "\"1\" for an entry of the system."),
        });
}

}  // namespace torvex::operations
