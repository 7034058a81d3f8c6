#pragma once

#include <vector>

#include "authoring/cManager.h"
#include "operations/register/Binding.h"

/// The rows of `cManager`, one function for each subject.
namespace torvex::operations {

std::vector<Row<cManager>> managerLoginRows();
std::vector<Row<cManager>> managerRightsRows();
std::vector<Row<cManager>> managerSiteRows();
std::vector<Row<cManager>> managerServerRows();
std::vector<Row<cManager>> managerMediaRows();
std::vector<Row<cManager>> managerRecordRows();
std::vector<Row<cManager>> managerInterfaceRows();
std::vector<Row<cManager>> managerTreeRows();
std::vector<Row<cManager>> managerPageRows();
std::vector<Row<cManager>> managerSetupRows();
std::vector<Row<cManager>> managerWorkflowRows();
std::vector<Row<cManager>> managerPublishRows();
std::vector<Row<cManager>> managerBranchRows();
std::vector<Row<cManager>> managerBodyRows();

/// The login of the object and its page record.
std::vector<PropertyRow<cManager>> managerProperties();

}  // namespace torvex::operations
