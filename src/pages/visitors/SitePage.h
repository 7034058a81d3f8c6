#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace torvex {

class HTMLTemplate;
class cServer;
class PolicyReports;
struct HostContext;
struct PageIdentity;
namespace db {
class Connection;
}

/// The charset of the page's language; all text of one installation mostly shares one.
std::string charsetOf(const HostContext& host, cServer& server);

/// The scripts that have been written into the page, for its content policy.
std::string ownScripts(const HostContext& host, const PageIdentity& page, std::string_view html);

/// Makes the page whose record the server holds into what the visitor sees: its assembled text, or the
/// address to go to behind `errorMark`.
using MakePage = std::function<std::string(cServer& server, db::Connection& connection)>;

/// Answers a request for a page: who may see it gets it made, everybody else is led to what they have to see
/// instead. `folder` is "" for pages of the site's own; those of an application are made where its address
/// holds the folder. Nothing is written while a page is made.
void answerSitePage(HostContext& host, const PolicyReports& reports, const std::string& folder,
                    const MakePage& make);

/// Answers with an assembled page of an application, whose places are filled at last: what is put in is read neither as a
/// link nor as a place to fill.
void answerFilled(HostContext& host, cServer& server, const PolicyReports& reports, const std::string& html,
                  const std::function<void(HTMLTemplate&)>& fill);

}  // namespace torvex
