#pragma once

#include <vector>

#include "desk/registers.h"
#include "operations/register/Binding.h"

/// The rows of `registers`, one function for each subject.
namespace torvex::operations {

std::vector<Row<registers>> registersMediaRows();
std::vector<Row<registers>> registersRoleRows();
std::vector<Row<registers>> registersSecondFactorRows();
std::vector<Row<registers>> registersForumRows();
std::vector<Row<registers>> registersBoardRows();
std::vector<Row<registers>> registersMenuRows();
std::vector<Row<registers>> registersSearchRows();
std::vector<Row<registers>> registersDesignRows();
std::vector<Row<registers>> registersRecordRows();
std::vector<Row<registers>> registersRunningRows();
std::vector<Row<registers>> registersVisitorRows();

}  // namespace torvex::operations
