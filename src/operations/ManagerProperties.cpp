#include "authoring/cManager.h"
#include "operations/Binding.h"
#include "operations/ManagerRows.h"

namespace torvex::operations {

namespace {

std::vector<Property> loginProperties() {
    return {
        property("loginId", &cManager::loginId, "The number of the session's login, 0 for none."),
        property("username", &cManager::username, "The name by which it logs in."),
        secret(property("password", &cManager::password, "Its password in the stored form.")),
        property("Fullname", &cManager::Fullname, "Its full name."),
    };
}

}  // namespace

std::vector<Property> managerProperties() {
    return loginProperties();
}

}  // namespace torvex::operations
