#include <benchmark/benchmark.h>
#include <stdexcept>

#include "DemoInstallation.h"
#include "authoring/cManager.h"
#include "installation/Setup.h"
#include "pages/api/Api.h"
#include "pages/authors/Token.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"

// What a call over the interface for programs costs beside its operation: the same operation by itself, and as a worker
// answers it, with its JSON, its gate and the connection that it opens. The network and the hand-over between threads
// are missing; the session is there already.

namespace torvex {
namespace {

class Author {
  public:
    Author() {
        api_->ofSessions = {1e9, 1e9};
        logIn();
    }

    Response post(const std::string& path, const std::string& body) {
        Request request("", {},
                        {{"script_name", "/torvex/api/" + path},
                         {"request_method", "POST"},
                         {"http_cookie", "torvex_session=1"},
                         {"http_x_torvex_token", pageToken::of(session_)},
                         {"remote_addr", "127.0.0.1"}},
                        body);
        Response response;
        HostContext host{demo_.opened().services(), request, response, session_};
        const bool isBatch = path == "batch";
        for (const PageRoute& route : routes_)
            if (isBatch ? route.path == "/torvex/api/batch" : route.path == "/torvex/api/")
                route.handler(host);
        return response;
    }

    template <typename Work>
    void asOperation(Work&& work) {
        Request request;
        Response response;
        HostContext host{demo_.opened().services(), request, response, session_};
        if (!connection_) connection_ = db::openOwn(host, db::Purpose::Everything);
        cManager manager(host);
        manager.connect(*connection_);
        work(manager);
    }

  private:
    /// As "sa", whose login no session can lose.
    void logIn() {
        Request request;
        Response response;
        HostContext host{demo_.opened().services(), request, response, session_};
        Setup(host).initSession();
        session_.set(sessionKey::authorLoginId, 1);
        session_.set(sessionKey::authorName, "sa");
        session_.set(sessionKey::authorFullname, "System Administrator");
    }

    bench::DemoInstallation demo_;
    db::Lease connection_;
    Session session_{"bench"};
    std::shared_ptr<api::Api> api_ = std::make_shared<api::Api>(std::make_shared<GuessThrottle>());
    std::vector<PageRoute> routes_ = api::routes(api_);
};

Author& author() {
    static Author made;
    return made;
}

void operationAlone(benchmark::State& state) {
    for (auto _ : state)
        author().asOperation([](cManager& manager) {
            if (manager.getNodeId(1).empty()) throw std::runtime_error("the page isn't there");
        });
}
BENCHMARK(operationAlone)->Unit(benchmark::kMicrosecond);

void apiCall(benchmark::State& state) {
    for (auto _ : state) {
        const Response response = author().post("cManager/getNodeId", R"({"pageId": 1})");
        if (response.body() != R"({"result":"bg.en"})") throw std::runtime_error(response.body());
    }
}
BENCHMARK(apiCall)->Unit(benchmark::kMicrosecond);

void apiBatchOfTen(benchmark::State& state) {
    std::string calls;
    for (int i = 0; i < 10; ++i)
        calls += (i > 0 ? "," : "") +
                 std::string(R"({"on": "cManager", "do": "getNodeId", "with": {"pageId": 1}})");
    for (auto _ : state) {
        const Response response = author().post("batch", R"({"calls": [)" + calls + "]}");
        if (response.status != 200) throw std::runtime_error(response.body());
    }
}
BENCHMARK(apiBatchOfTen)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torvex
