#pragma once

#include "operations/register/Register.h"

/// What refusals of several classes say about rights: install/rows/08_words_rights.sql.
namespace torvex::operations::label {

inline constexpr CodeLabel lastAdministrator{5449, "last-administrator"};

}  // namespace torvex::operations::label
