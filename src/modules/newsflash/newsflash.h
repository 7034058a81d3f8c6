#pragma once

#include <string>

#include "modules/newsflash/NewsflashBox.h"
#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

/// Small boxes with the newest items of categories of the message board, for any page. Their items are the
/// message board's. An object lives for one request and is used by one thread. Failures are `Error` with the
/// operation's line in front.
class newsflash {
  public:
    explicit newsflash(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    /// Draws the newsflash of that number of the website. `mode` "" is for visitors, "D" for authors of the
    /// design, any other for authors who look at what is live. False when there is none, or when its template
    /// isn't there or is none of the system's.
    bool load(const std::string& site, const std::string& lang, int newsflashId,
              const std::string& mode = "");
    /// The template of what was drawn, its part of the page's head, and its content.
    const std::string& nfTemplate() const { return box_.source; }
    const std::string& nfHeader() const { return box_.header; }
    const std::string& nfContent() const { return box_.content; }

    /// Key, number, title, and whether it is modified and deleted; by number, or by title with an `order`
    /// other than 0.
    Value getNewsflashList(const std::string& site, const std::string& lang, int order = 0,
                           const std::string& mode = "L");
    /// May this number and title be used by the newsflash of that key: "" they are free, "1" the number is
    /// taken, "2" the title is.
    std::string isNewsflash(const std::string& site, const std::string& lang, int nfId, int id,
                            const std::string& title);
    /// Lets a category feed a newsflash, both by their keys, with the category's next publishing.
    void addCategory(int nfId, int catId);
    /// Brings the newsflashes of a website to visitors, without those that are marked for deletion.
    void publish(const std::string& site, const std::string& lang);

  private:
    HostContext& host_;
    db::ConnectionSource connection_;
    NewsflashBox box_;
};

}  // namespace torvex
