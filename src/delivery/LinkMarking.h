#pragma once

#include <map>
#include <string>
#include <string_view>

#include "delivery/LinkScan.h"
#include "delivery/PreviewTargets.h"
#include "delivery/StartTag.h"

namespace torvex {

struct HostContext;

/// The tree in which a link stands, and the mode it is looked at in.
struct LinkPlace {
    std::string site;
    std::string lang;
    Twin twin;
};

/// Turns the neutral notation of stored links into calls of the authoring interface, and marks the links that
/// will lead a visitor nowhere. Doing it again changes nothing more. Lives for one page.
class LinkMarking final : public LinkPolicy {
  public:
    LinkMarking(HostContext& host, db::Connection& connection, LinkPlace place);

    void prepare(const std::vector<std::string>& startTags) override;
    std::string rewrite(std::string startTag, LinkTag kind) override;

  private:
    struct Link;
    struct Mark;

    void build(Link& link);
    void buildPage(Link& link, const std::string& identifier);
    void buildFile(Link& link);
    std::string documentName(const std::string& site, const std::string& name);
    void call(Link& link, std::string_view function, std::initializer_list<std::string_view> arguments) const;
    void mark(Link& link, const Mark& mark);
    std::string word(double label);
    std::string identifierOf(const Link& link) const;

    HostContext& host_;
    db::Connection& connection_;
    const LinkPlace place_;
    PreviewTargets targets_;
    const std::string pageScript_;
    const std::string defaultPage_;
    std::map<double, std::string> words_;
};

/// The page with its links as that class makes them.
std::string withMarkedLinks(HostContext& host, db::Connection& connection, std::string html,
                            const LinkPlace& place);

}  // namespace torvex
