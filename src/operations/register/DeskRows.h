#pragma once

#include <vector>

#include "desk/desk.h"
#include "operations/register/Binding.h"

/// The rows of `desk`, one function for each subject.
namespace torvex::operations {

std::vector<Row<desk>> deskWorkRows();
std::vector<Row<desk>> deskTokenRows();
std::vector<Row<desk>> deskSecondFactorRows();
std::vector<Row<desk>> deskLiveRows();
std::vector<Row<desk>> deskFindRows();
std::vector<Row<desk>> deskPageRows();
std::vector<Row<desk>> deskRightsRows();
std::vector<Row<desk>> deskRunningRows();

}  // namespace torvex::operations
