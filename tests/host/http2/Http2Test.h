#pragma once

#include <gtest/gtest.h>
#include <string>

#include "host/HttpServer.h"
#include "support/Gate.h"
#include "support/Http2Client.h"
#include "support/RunningServer.h"

namespace torvex::test {

/// A server that speaks HTTP/2, with some pages.
class Http2Test : public testing::Test {
  protected:
    Http2Test() {
        running.protocol = Protocol::Http2;
        running.options.loops = 1;
        running.options.rootFolder = folder.path();
        folder.write("a.txt", "a file");
        running.page("/hello.asp", [](HostContext& host) { host.response.write("Hello"); });
        running.page("/held.asp", [this](HostContext& host) {
            gate.pass();
            host.response.write("held");
        });
        running.form("/form.asp", [](HostContext& host) { host.response.write(host.request.item("name")); });
    }
    ~Http2Test() override { gate.open(); }

    void start() { running.start(); }
    /// One that has said what it has to say first.
    Http2Client client(const std::string& from = "127.0.0.1") {
        Http2Client made(running.server->port(), from);
        made.greet();
        return made;
    }
    /// That others are answered as ever.
    void expectOthersAnswered() {
        Http2Client other = client("127.0.0.9");
        EXPECT_EQ(other.ask("/hello.asp").body, "Hello");
    }
    static Fields post(const std::string& path, const Fields& more = {}) {
        Fields fields = get(path, {{"content-type", "application/x-www-form-urlencoded"}});
        fields[0].second = "POST";
        fields.insert(fields.end(), more.begin(), more.end());
        return fields;
    }

    Gate gate;
    PublicFolder folder;
    RunningServer running;
};

}  // namespace torvex::test
