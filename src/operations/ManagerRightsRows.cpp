#include "authoring/cManager.h"
#include "operations/Binding.h"
#include "operations/ManagerRows.h"
#include "records/AdminEntries.h"

namespace torvex::operations {

std::vector<Operation> managerRightsRows() {
    return {};
}

}  // namespace torvex::operations
