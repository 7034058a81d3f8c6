#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <spdlog/logger.h>
#include <spdlog/sinks/null_sink.h>
#include <stdexcept>

#include "DemoInstallation.h"
#include "host/BufferedHits.h"
#include "host/LineLog.h"
#include "host/http/ResponseConversion.h"
#include "host/sessions/SessionStore.h"
#include "installation/Setup.h"
#include "pages/Routes.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"

// The demo's home page as a worker makes it for a visitor without a cookie: session, page, answer. What is
// missing to a whole request is the network and the hand-over between threads; serve.sh measures with them.

namespace torvex {
namespace {

class Demo {
  public:
    Demo() {
        hits_ = std::make_unique<BufferedHits>(
            [this](db::Purpose purpose) {
                return demo_.opened().installation.openDatabase(*demo_.opened().database, purpose);
            },
            log_);
    }

    void set(std::string_view key, bool value) { demo_.opened().application.set(key, value); }

    Answer request(const PageHandler& page, const std::string& query) {
        Answer answer;
        sessions_.enter("", 0, [&](SessionLease lease) {
            Request request(query, {}, variables(query));
            Response response;
            HostContext host{demo_.opened().services().with(*hits_), request, response, lease.session()};
            Setup(host).initSession();
            lease.keepAsDefaults();
            page(host);
            answer = toAnswer(std::move(response));
            lease.finish();
        });
        return answer;
    }

  private:
    static NamedValues variables(const std::string& query) {
        return {{"http_host", "127.0.0.1:8080"}, {"https", "off"},
                {"script_name", "/tvx.asp"},     {"remote_addr", "127.0.0.1"},
                {"request_method", "GET"},       {"query_string", query},
                {"server_name", "127.0.0.1"},    {"server_port", "8080"},
                {"server_protocol", "HTTP/1.1"}, {"content_type", ""},
                {"content_length", "0"}};
    }

    bench::DemoInstallation demo_;
    spdlog::logger logger_{"bench", std::make_shared<spdlog::sinks::null_sink_mt>()};
    LineLog log_{logger_};
    std::unique_ptr<BufferedHits> hits_;
    SessionStore sessions_{SessionLimits{}};
};

Demo& demo() {
    static Demo made;
    return made;
}

PageHandler pageHandler() {
    auto routes = pageRoutes();
    const auto page = std::find_if(routes.begin(), routes.end(),
                                   [](const auto& route) { return route.path == "/tvx.asp"; });
    if (page != routes.end()) return std::move(page->handler);
    throw std::runtime_error("the page has no route");
}

void run(benchmark::State& state, bool whole) {
    const PageHandler page = pageHandler();
    for (const auto* key : {"torvex_extranet", "torvex_hyperlink_check"}) demo().set(key, whole);
    for (auto _ : state) {
        const Answer answer = demo().request(page, "pageId=1");
        if (answer.status != 200) throw std::runtime_error("the page isn't there");
    }
}

void homePage(benchmark::State& state) {
    run(state, true);
}
BENCHMARK(homePage)->Unit(benchmark::kMicrosecond);

/// With the checks of links and groups switched off.
void homePageUnchecked(benchmark::State& state) {
    run(state, false);
}
BENCHMARK(homePageUnchecked)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torvex
