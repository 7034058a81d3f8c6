#include "support/ApiTest.h"

#include <boost/json/parse.hpp>

#include "accounts/StoredPassword.h"
#include "pages/Token.h"
#include "platform/Session.h"

namespace torvex::test {

namespace json = boost::json;

json::value ApiReply::at(std::string_view pointer) const {
    json::error_code error;
    const auto* found = body.find_pointer({pointer.data(), pointer.size()}, error);
    return found ? *found : json::value(nullptr);
}

std::string ApiReply::text(std::string_view pointer) const {
    const json::value found = at(pointer);
    return found.is_string() ? std::string(found.get_string()) : std::string();
}

std::string ApiReply::kind() const {
    const std::string type = text("/type");
    return type.substr(type.rfind('/') + 1);
}

RawReply ApiClient::raw(const std::string& method, const std::string& target, const std::string& fields,
                        const std::string& body) {
    std::string request = method + ' ' + target +
                          " HTTP/1.1\r\nHost: site.test\r\nAccept-Language: " + language + "\r\n" + fields;
    if (!bearer.empty()) request += "Authorization: Bearer " + bearer + "\r\n";
    if (!cookie.empty()) request += "Cookie: " + cookie + "\r\n";
    if (!body.empty()) request += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    RawHttpClient connection = server_->clientFrom(address_);
    connection.send(request + "\r\n" + body);
    RawReply reply = method == "HEAD" ? connection.readWithoutBody() : connection.read();
    if (const std::string given = reply.sessionCookie(); !given.empty()) cookie = given;
    if (const std::string given = reply.field("X-Torvex-Token"); !given.empty()) token = given;
    return reply;
}

ApiReply ApiClient::ask(const std::string& method, const std::string& path, const std::string& fields,
                        const std::string& body) {
    ApiReply reply{raw(method, "/torvex/api/" + path, fields, body), nullptr};
    json::error_code error;
    const json::value read = json::parse(reply.raw.body, error);
    if (!error) reply.body = read;
    return reply;
}

void ApiClient::load() {
    token = raw("GET", "/document", "").body;
}

ApiReply ApiClient::login(const std::string& username, const std::string& password) {
    return post("cManager/login", R"({"username": ")" + username + R"(", "password": ")" + password + "\"}");
}

ApiReply ApiClient::get(const std::string& path) {
    return ask("GET", path, "");
}

ApiReply ApiClient::post(const std::string& path, const std::string& body) {
    const std::string proof = token.empty() ? "" : "X-Torvex-Token: " + token + "\r\n";
    return ask("POST", path, "Content-Type: application/json\r\n" + proof, body);
}

void ApiTest::SetUp() {
    RightsTest::SetUp();
    if (HasFatalFailure()) return;
    connection().execute("delete from TORVEX_LOGINS");
    author(anna, "anna", "Anna Author");
    author(sa, "sa", "System Administrator");
    api = std::make_shared<api::Api>(throttle);
    running.services.emplace(host.services());
    running.startSession = [](HostContext& context) {
        context.session.set("torvex_current_interface", "en");
        context.session.set("torvex_username", "");
    };
    running.page("/document",
                 [](HostContext& context) { context.response.write(pageToken::of(context.session)); });
}

void ApiTest::TearDown() {
    running.stop();
    RightsTest::TearDown();
}

void ApiTest::start() {
    for (PageRoute& route : api::routes(api)) running.pages.push_back(std::move(route));
    running.start();
}

std::vector<operations::ClassEntry> ApiTest::onlyReached() {
    auto classes = operations::makeRegister().classes();
    for (auto& entry : classes) {
        for (auto& operation : entry.operations) {
            if (operation.passwordTest) continue;
            operation.invoke = [this](void*, const std::vector<Value>&) {
                ++reached;
                return Value();
            };
        }
    }
    return classes;
}

void ApiTest::author(int loginId, const std::string& username, const std::string& fullname) {
    row("TORVEX_LOGINS", {{"loginId", loginId},
                          {"username", username},
                          {"name", fullname},
                          {"password", encodePassword(password)}});
}

ApiClient ApiTest::visitor(const std::string& address) {
    ApiClient made(running, address);
    made.load();
    return made;
}

ApiClient ApiTest::loggedIn(const std::string& username, const std::string& address) {
    ApiClient made = visitor(address);
    EXPECT_EQ(made.login(username, std::string(password)).status(), 200) << username;
    return made;
}

}  // namespace torvex::test
