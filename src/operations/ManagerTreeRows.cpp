#include "authoring/cManager.h"
#include "operations/Binding.h"
#include "operations/ManagerRows.h"
#include "records/AdminEntries.h"

namespace torvex::operations {

std::vector<Operation> managerTreeRows() {
    return {};
}

}  // namespace torvex::operations
