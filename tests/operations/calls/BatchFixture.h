#pragma once

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "installation/Setup.h"
#include "operations/calls/Batch.h"
#include "operations/register/Binding.h"
#include "operations/register/Register.h"
#include "platform/Errors.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::operations {

/// A class that does to a request what the public classes do only in company.
class Probe {
  public:
    explicit Probe(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    std::string sessionId() { return host_.session.id(); }
    std::string now() { return isoText(host_.clock.now()); }
    std::string item(const std::string& name) { return host_.request.item(name); }
    void abandon() { host_.session.abandon(); }
    void write(const std::string& text) { host_.response.write(text); }
    void end() { host_.response.end(); }
    void fail() try { connection_.use(host_).execute("delete from NO_SUCH_TABLE"); } catch (...) {
        raiseFrom("fail !");
    }
    /// Reads, lets others run, and writes: loses counts unless the session's requests run one at a time.
    void count();

  private:
    HostContext& host_;
    db::ConnectionSource connection_;
};

/// All public classes and the probe.
operations::Register classesWithProbe();

/// An engine on an installation without files, whose application values are derived.
class BatchFixture : public test::DatabaseTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// The answer to a line.
    boost::json::object ask(const std::string& line);
    boost::json::value resultsOf(const std::string& line) { return ask(line).at("results"); }
    std::string errorOf(const std::string& line);

    test::TestHost host_;
    operations::Register classes_ = classesWithProbe();
    std::unique_ptr<BatchEngine> engine_;
};

boost::json::value json(std::string_view text);

}  // namespace torvex::operations
