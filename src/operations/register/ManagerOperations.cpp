#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

ClassEntry managerOperations() {
    return describe<cManager>(
        "cManager", "Everything that authors and administrators do.",
        joined({managerLoginRows(), managerRightsRows(), managerSiteRows(), managerServerRows(),
                managerRecordRows(), managerInterfaceRows(), managerMediaRows(), managerTreeRows(),
                managerPageRows(), managerSetupRows(), managerBodyRows(), managerWorkflowRows(),
                managerPublishRows(), managerBranchRows()}),
        managerProperties());
}

}  // namespace torvex::operations
