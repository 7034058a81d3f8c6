#include "support/FeedTest.h"

#include "delivery/Feeds.h"
#include "platform/xml/XmlWorkers.h"
#include "support/RunningProgram.h"

namespace torvex::test {

XmlTransformer& xmlWorkers() {
    static Admission places(16);
    static XmlWorkers workers(programPath(), places);
    return workers;
}

void FeedTest::SetUp() {
    DatabaseTest::SetUp();
    host.application.set("torvex_install_path", std::string("/tvx/"));
    host.application.set("torvex_doc_dir", std::string("/tvx/docs/"));
    host.session.set("tvx_default_language", std::string("en"));
}

int FeedTest::add(const std::string& table, Columns columns) {
    connection().execute("insert into " + table + " (feedSite) values (?)", {"01"});
    auto rows = connection().query("select max(feedId) as feedId from " + table);
    rows.next();
    const int feedId = static_cast<int>(rows.number("feedId"));
    for (const auto& [column, value] : columns) {
        connection().execute("update " + table + " set " + std::string(column) + " = ? where feedId = ?",
                             {value, feedId});
    }
    return feedId;
}

HostContext FeedTest::context() {
    return {host.services().with(http_).with(xmlWorkers()), host.request, host.response, host.session};
}

std::string FeedTest::html(int feedId) {
    HostContext seen = context();
    return htmlFeed(seen, connection(), feedId);
}

std::string FeedTest::xml(int feedId) {
    HostContext seen = context();
    return xmlFeed(seen, connection(), feedId);
}

}  // namespace torvex::test
