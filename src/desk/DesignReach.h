#pragma once

#include "accounts/EditReach.h"

namespace torvex {

/// The trees whose designs the actor may read (see `mayReadDesign`), as the nodes of their roots.
EditReach designReachOf(db::Connection& connection, const Actor& actor);

}  // namespace torvex
