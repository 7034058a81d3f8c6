#pragma once

#include <string>
#include <string_view>

#include "delivery/LinkScan.h"
#include "delivery/LinkTargets.h"

namespace torvex {

struct HostContext;

/// Turns the neutral notation of stored links into real ones, in the form that suits the site's mode, and
/// lets links go whose target isn't there. Lives for one page.
class LinkBuilder final : public LinkPolicy {
  public:
    /// `site` is the site of documents that name none.
    LinkBuilder(HostContext& host, db::Connection& connection, std::string site);

    void prepare(const std::vector<std::string>& startTags) override;
    std::string rewrite(std::string startTag, LinkTag kind) override;

  private:
    struct Link;

    std::string build(Link& link);
    std::string buildAddressForm(Link& link, std::string_view script);
    bool checkAddress(Link& link, std::string_view script);
    void addDefaultPage(Link& link, std::string_view script, std::size_t begin, std::string_view address);
    std::string buildPage(Link& link);
    std::string buildFile(Link& link);
    std::string documentName(const std::string& site, const std::string& value);
    bool documentExists(const std::string& site, const std::string& value) const;

    HostContext& host_;
    db::Connection& connection_;
    LinkTargets targets_;
    const std::string site_;
    const bool frames_;
    const bool checked_;
    const std::string defaultPage_;
};

/// The page with its links as that class makes them.
std::string withRealLinks(HostContext& host, db::Connection& connection, std::string html,
                          const std::string& site);

}  // namespace torvex
