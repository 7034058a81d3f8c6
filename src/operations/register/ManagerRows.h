#pragma once

#include <vector>

#include "operations/register/Register.h"

/// The rows of `cManager`, one function for each subject.
namespace torvex::operations {

std::vector<Operation> managerLoginRows();
std::vector<Operation> managerRightsRows();
std::vector<Operation> managerSiteRows();
std::vector<Operation> managerServerRows();
std::vector<Operation> managerTreeRows();
std::vector<Operation> managerPageRows();
std::vector<Operation> managerSetupRows();
std::vector<Operation> managerWorkflowRows();
std::vector<Operation> managerPublishRows();
std::vector<Operation> managerBodyRows();

/// The login of the object and its page record.
std::vector<Property> managerProperties();

}  // namespace torvex::operations
