#include "platform/Admission.h"

#include "platform/Errors.h"

namespace torvex {

Admission::Pass::Pass(Admission& admission) : admission_(admission) {
    if (++admission_.inside_ <= admission_.most_) return;
    --admission_.inside_;
    throw Error("too many pages wait for feeds at the moment");
}

}  // namespace torvex
