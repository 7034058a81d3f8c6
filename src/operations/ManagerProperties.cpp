#include "authoring/cManager.h"
#include "operations/Binding.h"
#include "operations/ManagerRows.h"

namespace torvex::operations {

std::vector<Property> managerProperties() {
    return {};
}

}  // namespace torvex::operations
