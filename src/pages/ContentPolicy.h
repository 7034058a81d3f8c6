#pragma once

#include <string>
#include <string_view>

namespace torvex {

class PolicyReports;
struct HostContext;

/// The address that browsers send reports to.
inline constexpr std::string_view policyReportPath = "/tvxreport.asp";

/// Tells the browser what a page of a site may load and run: scripts of this server's files and those that
/// the server itself writes into pages, no others. `tvx_contentPolicy` says whether that is in force ("on"),
/// only reported ("report-only", and whatever isn't one of the three) or not told ("off");
/// `tvx_contentPolicy_sources` gives further places, as "https://maps.example". Behind either name, "_" and a
/// site give that site's own.
///
/// `scripts` are further scripts of the server's in this page, as `scriptSource` gives them.
void addContentPolicy(HostContext& host, std::string_view site, std::string_view scripts,
                      const PolicyReports& reports);

/// A script as a policy names it, with a blank in front.
std::string scriptSource(std::string_view script);
/// The addresses of links in a page that are scripts, the first few of them.
std::string linkSources(std::string_view html);

/// The policy of a page for visitors that is wholly the server's own and holds forms.
std::string ownFormPolicy(const HostContext& host);

/// The policy of a page that is wholly the server's own and runs the scripts that are given.
std::string ownPagePolicy(std::string_view scripts = {}, std::string_view further = {});

}  // namespace torvex
