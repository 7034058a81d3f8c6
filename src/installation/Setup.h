#pragma once

#include "platform/db/Database.h"

namespace torvex {

struct HostContext;

/// Fills the values that everything else reads: those of the installation once at the program's start, those
/// of a visitor once at the start of the session. Has a connection of its own for the object's life. Failures
/// are `Error` with the operation's line in front.
class Setup {
  public:
    /// Needs `torvex_odbc`, `torvex_odbc_user` and `torvex_odbc_password` among the application values.
    explicit Setup(HostContext& host);

    /// Derives the application values and frees every login: after a start nobody is logged in and no site is
    /// locked. Besides the connection, `torvex_install_path`, `torvex_imgDir` and `torvex_docDir` must be
    /// there.
    void initApplication();

    /// The application values alone: for programs that run beside a server and mustn't log its authors out.
    void deriveApplication();

    /// The values that a visitor's session starts with.
    void initSession();

  private:
    static std::string defaultInterface(db::Connection& connection);
    void derivePaths();
    void setDefaults();
    void readSettings();
    void raiseEditorFloors();

    HostContext& host_;
    db::Lease connection_;
};

}  // namespace torvex
