#pragma once

#include <atomic>
#include <boost/json/value.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pages/api/Api.h"
#include "support/RightsTest.h"
#include "support/RunningServer.h"

namespace torvex::test {

/// What a program gets.
struct ApiReply {
    RawReply raw;
    boost::json::value body;  ///< null when it is none of JSON

    int status() const { return raw.status; }
    /// A member of an object's object, "/result/rows"; null when it isn't there.
    boost::json::value at(std::string_view pointer) const;
    std::string text(std::string_view pointer) const;
    /// The last part of a problem's type.
    std::string kind() const;
};

/// One browser: its cookie, its token and where it comes from.
class ApiClient {
  public:
    ApiClient(const RunningServer& server, std::string address)
        : server_(&server), address_(std::move(address)) {}

    /// Loads a document of ours, which has the token.
    void load();
    ApiReply login(const std::string& username, const std::string& password);

    ApiReply get(const std::string& path);
    /// To "cManager/checkOut" or "batch".
    ApiReply post(const std::string& path, const std::string& body = "{}");
    ApiReply batch(const std::string& calls) { return post("batch", R"({"calls": [)" + calls + "]}"); }
    /// A request as it is written here; the cookie is added, and nothing else.
    ApiReply ask(const std::string& method, const std::string& path, const std::string& fields,
                 const std::string& body = {});
    RawReply raw(const std::string& method, const std::string& target, const std::string& fields,
                 const std::string& body = {});

    std::string language = "en";
    std::string token;
    std::string cookie;
    std::string bearer;  ///< of a program, in place of both

  private:
    const RunningServer* server_;
    std::string address_;
};

/// The base of tests of the interface for programs, over real HTTP: the server answers from the test's database.
/// "anna" (number 7) and "sa" can log in with the password "secret". `start` makes it answer.
class ApiTest : public RightsTest {
  protected:
    static constexpr std::string_view password = "secret";

    void SetUp() override;
    void TearDown() override;

    void start();
    /// The real classes with their rights, whose operations do nothing but count in `reached`; those that try a
    /// password do that.
    std::vector<operations::ClassEntry> onlyReached();
    /// A login that can log in.
    void author(int loginId, const std::string& username, const std::string& fullname);
    /// A browser that has loaded a document.
    ApiClient visitor(const std::string& address = "127.0.0.1");
    ApiClient loggedIn(const std::string& username = "anna", const std::string& address = "127.0.0.1");

    std::shared_ptr<GuessThrottle> throttle = std::make_shared<GuessThrottle>();
    std::shared_ptr<api::Api> api;
    RunningServer running;
    std::atomic<int> reached = 0;
};

}  // namespace torvex::test
