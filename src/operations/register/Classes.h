#pragma once

#include "operations/register/Register.h"

/// The entries of the register, one function for each public class.
namespace torvex::operations {

ClassEntry serverOperations();
ClassEntry managerOperations();
ClassEntry htmlTemplateOperations();
ClassEntry templateOperations();
ClassEntry baseTemplateOperations();
ClassEntry styleSheetOperations();
ClassEntry applicationOperations();
ClassEntry setupOperations();
ClassEntry searchOperations();
ClassEntry deskOperations();
ClassEntry registersOperations();
ClassEntry imageOperations();
ClassEntry dynamicMenuOperations();
ClassEntry forumOperations();
ClassEntry msgBoardOperations();
ClassEntry newsflashOperations();

}  // namespace torvex::operations
