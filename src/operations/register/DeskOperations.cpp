#include "operations/register/Classes.h"
#include "operations/register/DeskRows.h"

namespace torvex::operations {

ClassEntry deskOperations() {
    return describe<desk>("desk", "What an author's day needs beside the pages themselves.",
                          joined({deskWorkRows(), deskTokenRows()}));
}

}  // namespace torvex::operations
