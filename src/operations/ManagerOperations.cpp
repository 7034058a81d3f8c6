#include "authoring/cManager.h"
#include "operations/Binding.h"
#include "operations/Classes.h"
#include "operations/ManagerRows.h"

namespace torvex::operations {

ClassEntry managerOperations() {
    std::vector<Operation> operations;
    for (auto subject :
         {managerLoginRows, managerRightsRows, managerSiteRows, managerServerRows, managerTreeRows,
          managerPageRows, managerSetupRows, managerBodyRows, managerWorkflowRows, managerPublishRows}) {
        for (auto& row : subject()) operations.push_back(std::move(row));
    }
    return describe<cManager>("cManager", "Everything that authors and administrators do.",
                              std::move(operations), managerProperties());
}

}  // namespace torvex::operations
