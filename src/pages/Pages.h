#pragma once

#include "search/SearchRun.h"

namespace torvex {

class GuessThrottle;
class PolicyReports;
class PostDesk;
struct HostContext;

// One function for each address of the server's own, in a file of its own.

/// "/": leads to the installation's default page.
void homePage(HostContext& host);
/// "/tvx.asp?pageId=N": a page, or the way to what the visitor has to see instead.
void tvxPage(HostContext& host, const PolicyReports& reports);
/// "/torvex_msgBoard/?pageId=N&cat=PATH&archive=1&page=N": an application page with a part of the message
/// board; the page's parameter catRoot is the category above which nothing is shown.
void msgBoardPage(HostContext& host, const PolicyReports& reports);
/// "/frameset.asp?pageId=N": the frame set around a page, with the functions that links in frames mode call.
void framesetPage(HostContext& host);
/// "/redirect.asp?pageId=N": leaves whatever frame it is loaded in and opens the page anew.
void redirectPage(HostContext& host);
/// "/tvxLogin.asp", posted: logs a visitor in and goes where that leads.
void loginPage(HostContext& host, GuessThrottle& throttle);
/// "/tvxLogout.asp": logs the visitor out and goes where that leads.
void logoutPage(HostContext& host);
/// "/torvex_secondFactor/?pageId=N&from=N": asks a visitor whose password was right for the code of her second factor, and
/// lets her set one up and keep it. In the application page of that number if it is one, else in a page of the server's own;
/// it leads back to the page that she came from.
void secondFactorPage(HostContext& host, const PolicyReports& reports, GuessThrottle& throttle);
/// "/torvex_search/search.asp?pageId=N": a search page with the results of what the request searches for. A
/// form that is posted is kept, and leads to the same address.
void searchPage(HostContext& host, const PolicyReports& reports, const OpenCatalogue& open = catalogue::open);
/// "/torvex_search/": the same under its short name.
void searchFolderPage(HostContext& host);
/// "/torvex_search/suggest?pageId=N&q=WORDS": titles that begin so, in the language of a search page, as
/// JSON.
void searchSuggestions(HostContext& host);
/// "/error.asp?pageId=N&error=VALUE": tells a visitor why there is no page, with a fitting status.
void errorPage(HostContext& host);

/// "/tvxreport.asp", posted by browsers: what a page's content policy forbids, for the log.
void policyReportPage(HostContext& host, PolicyReports& reports);
/// "/torvex_forum/?pageId=N": the forums of an application page; with a forum, its topics.
void forumsPage(HostContext& host, const PolicyReports& reports);
/// "/torvex_forum/topics.asp?pageId=N&forumId=F": the topics of a forum, by pages; "&archive=1" the old ones.
void forumTopicsPage(HostContext& host, const PolicyReports& reports);
/// "/torvex_forum/reactions.asp?pageId=N&forumId=F&topicId=T": a topic with its reactions.
void forumReactionsPage(HostContext& host, const PolicyReports& reports);
/// "/torvex_forum/reaction.asp?pageId=N&forumId=F": the form to begin a topic, or to react to the topic or
/// the reaction that is named as well; posted, what was typed into it.
void forumReactionPage(HostContext& host, const PolicyReports& reports, PostDesk& desk);

}  // namespace torvex
