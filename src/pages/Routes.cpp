#include "pages/Routes.h"

#include "pages/Pages.h"

namespace torvex {

std::vector<PageRoute> pageRoutes() {
    return {
        {"/", homePage},
        {"/tvx.asp", tvxPage},
        {"/error.asp", errorPage},
    };
}

}  // namespace torvex
