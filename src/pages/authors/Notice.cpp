#include "pages/authors/Notice.h"

#include <vector>

#include "pages/NoStore.h"
#include "pages/authors/AuthorsDocument.h"
#include "pages/authors/InterfaceLanguage.h"
#include "pages/authors/Policies.h"
#include "platform/HostContext.h"
#include "platform/Response.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

void showNotice(HostContext& host, const Notice& notice) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    std::vector<double> labels{notice.title, notice.message};
    if (notice.link != 0) labels.push_back(notice.link);
    AuthorsDocument page(host, *connection, presentLanguage(host, *connection), "error.html", labels);
    page.fill("error", notice.error);
    page.fill("title", notice.title);
    page.fill("message", notice.message);
    page.showBlock("reference", false);
    page.showBlock("link", notice.link != 0);
    if (notice.link != 0) page.fill("link", notice.link);
    page.fill("href", notice.href);
    forbidStoring(host.response);
    addNoticePolicy(host.response);
    host.response.status = notice.status;
    host.response.write(page.take());
}

}  // namespace torvex
