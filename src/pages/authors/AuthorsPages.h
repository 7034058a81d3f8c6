#pragma once

namespace torvex {

class BuiltInterface;
class GuessThrottle;
struct HostContext;
namespace operations {
class Register;
}

/// What the requests of all authors share: the operations, and the count of wrong passwords.
struct AuthorsShared {
    const operations::Register& classes;
    GuessThrottle& throttle;
};

// One function for each address of the server's own below "/torvex/", in a file of its own.

/// "/torvex/login": the door. A form that works without a script; posted, it logs in and leads to where the
/// author wanted to go.
void authorsLoginPage(HostContext& host, const AuthorsShared& shared);
/// "/torvex/logout": logs out and leads to the door.
void authorsLogoutPage(HostContext& host, const AuthorsShared& shared);
/// Every other address below "/torvex/" that is followed: the one document in which the interface works.
/// Whoever isn't logged in is led to the door.
void shellPage(HostContext& host, const BuiltInterface& interface);
/// "/torvex/view.asp?pageId=N&mode=D|L&edit=1": a page as its authors see it, to be edited or, without "edit",
/// to be tried. Posted by the form of the edit view: saves a body, then shows the page.
void viewPage(HostContext& host, const AuthorsShared& shared);
/// "/torvex/error.asp?pageId=N&error=VALUE": tells an author why there is no page.
void authorsErrorPage(HostContext& host);

}  // namespace torvex
