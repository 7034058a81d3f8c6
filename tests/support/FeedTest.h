#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "platform/net/CurlHttpClient.h"
#include "platform/net/SharedFetches.h"
#include "support/FeedServer.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::test {

/// Processes of the program that do the work on XML, the same ones for all tests.
XmlTransformer& xmlWorkers();

/// A host whose feeds come from a real server, with the documents of the sites below "/tvx/docs/".
class FeedTest : public DatabaseTest {
  protected:
    using Columns = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    void SetUp() override;

    /// Adds a feed of site "01" and gives its number.
    int addHtmlFeed(Columns columns) { return add("TORVEX_FEEDS_HTML", columns); }
    int addXmlFeed(Columns columns) { return add("TORVEX_FEEDS_XML", columns); }

    void visit(const std::string& queryString) { host.request = Request(queryString, {}, {}); }
    void putDocument(const std::string& name, const std::string& bytes) {
        host.files.bytes["/tvx/docs/01/" + name] = bytes;
    }

    HostContext context();
    std::string html(int feedId);
    std::string xml(int feedId);

    TestHost host;
    FeedServer server;

  private:
    int add(const std::string& table, Columns columns);

    Admission places_{16};
    CurlHttpClient fetcher_;
    SharedFetches http_{fetcher_, places_};
};

}  // namespace torvex::test
