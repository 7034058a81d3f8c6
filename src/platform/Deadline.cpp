#include "platform/Deadline.h"

#include "platform/Errors.h"

namespace torvex {

void Deadline::check() const {
    if (hasPassed()) throw Error("the request took longer than it may");
}

}  // namespace torvex
