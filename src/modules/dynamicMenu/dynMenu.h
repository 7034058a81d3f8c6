#pragma once

#include <string>

#include "modules/dynamicMenu/MenuLoading.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;

/// Menus that are drawn from the page tree. A menu is defined with a page; it is that of the page and of all
/// below it that have none of their own. An object lives for one request and is used by one thread; failures
/// are `Error` with the operation's line in front.
class dynMenu {
  public:
    explicit dynMenu(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    /// Draws the menu of a page into the properties; false, with all of them empty, when there is none.
    /// `mode`: "" for the session's visitor, "D" for authors from the design, "L" for authors from what is
    /// live, whoever may open it.
    bool load(const std::string& pageIdent, const std::string& mode = "");
    const std::string& dmTemplate() const { return menu_.source; }
    const std::string& dmHeader() const { return menu_.header; }
    const std::string& dmContent() const { return menu_.content; }

    /// Whether a page shows today, whoever asks; in mode "D" by the dates of its design. A folder stands for
    /// its first child.
    bool isPage(const std::string& pageIdent, const std::string& mode = "L");

    /// Brings the menus of a site and language to what their design says.
    void publish(const std::string& site, const std::string& lang);
    /// Removes the menus of pages and with templates that are gone.
    void CleanUpDB();

  private:
    HostContext& host_;
    db::ConnectionSource connection_;
    LoadedMenu menu_;
};

}  // namespace torvex
