// desk: the login of an author who sits at another machine now.

#include "accounts/LogIn.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"

namespace torvex {

int desk::takeOver(const std::string& username, const std::string& password) try {
    if (username.empty() && password.empty()) {
        auditDenial(host_);
        return static_cast<int>(LoginCode::Unknown);
    }
    Author author;
    return static_cast<int>(logIn(host_, connection(), username, password, OtherHolder::Loses, author));
} catch (...) {
    raiseFrom("takeOver !");
}

}  // namespace torvex
