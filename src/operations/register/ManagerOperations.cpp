#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "operations/register/ManagerRows.h"

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
