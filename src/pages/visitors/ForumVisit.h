#pragma once

#include <functional>
#include <optional>
#include <string>

#include "delivery/cServer.h"
#include "modules/SiteModules.h"
#include "modules/forum/ForumAddress.h"
#include "modules/forum/ForumRecord.h"
#include "records/PageIdentity.h"

namespace torvex {

class HTMLTemplate;
class PolicyReports;

/// One visitor's request for the forum, which stands on an application page of a site: who may read that page
/// may read its forums, and nobody else. Each address draws a template of the application by its title.
class ForumVisit {
  public:
    ForumVisit(HostContext& host, db::Connection& connection, const PolicyReports& reports);

    /// False when the visitor was sent elsewhere: to log in, or because there is no such page.
    bool begin();

    const PageIdentity& page() const { return page_; }
    const ForumAddress& address() const { return address_; }
    std::string language() const { return std::string(langOf(page_.nodeId)); }
    /// All that the page shows.
    std::vector<ForumSummary> forums();
    /// The one that the request names, if the page shows it.
    std::optional<ForumRecord> forum();
    /// A number of the request's address; 0 for none, and for what is none or too large.
    int number(std::string_view parameter) const;

    /// Answers with the template of that title, filled.
    void show(const std::string& title, const std::function<void(HTMLTemplate&)>& fill);

  private:
    HostContext& host_;
    db::Connection& connection_;
    const PolicyReports& reports_;
    SiteModules modules_;
    cServer server_;
    PageIdentity page_;
    ForumAddress address_{0};
};

// The pages of the application; what isn't there is answered by the next larger one, with status 404.
void showForums(HostContext& host, ForumVisit& visit, bool isGone);
void showTopics(HostContext& host, db::Connection& connection, ForumVisit& visit, const ForumRecord& forum,
                bool isGone);

}  // namespace torvex
