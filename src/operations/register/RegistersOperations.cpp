#include "operations/register/Classes.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

ClassEntry registersOperations() {
    return describe<registers>(
        "registers", "Writes the records of the registers, with their checks and locks.",
        joined({registersMediaRows(), registersRoleRows(), registersSecondFactorRows(), registersForumRows(),
                registersBoardRows(), registersMenuRows(), registersSearchRows(), registersDesignRows(),
                registersRecordRows(), registersRunningRows(), registersVisitorRows()}));
}

}  // namespace torvex::operations
