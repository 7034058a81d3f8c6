#include "installation/Setup.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry setupOperations() {
    return describe<Setup>(
        "Setup", "Fills the values of the installation and of a visitor's session.",
        {
            writes("initApplication", &Setup::initApplication, {},
                   "Derives the values of the installation and frees all logins.", nobody()),
            writes("initSession", &Setup::initSession, {},
                   "Sets the values that a visitor's session starts with.", nobody()),
        });
}

}  // namespace torvex::operations
