#include "pages/api/OpenApi.h"

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "support/ApiTest.h"

namespace torvex::api {
namespace {

namespace json = boost::json;
using operations::Right;

class OpenApi : public testing::Test {
  protected:
    const operations::Register classes = operations::makeRegister();
    const json::value whole = json::parse(openApi(classes));
    const json::object& paths() const { return whole.at("paths").as_object(); }
};

TEST_F(OpenApi, ItHasEachRowThatIsInReachAndNoOther) {
    std::size_t rows = 4;  // batch, session, labels and itself
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            const std::string path = "/" + entry.name + "/" + operation.name;
            const bool isInReach = operation.right.kind != Right::Kind::Nobody;
            EXPECT_EQ(paths().contains(path), isInReach) << path;
            if (!isInReach) continue;
            ++rows;
            EXPECT_TRUE(paths().at(path).as_object().contains("post")) << path;
            EXPECT_EQ(paths().at(path).as_object().contains("get"),
                      operation.effect == operations::Effect::Reads)
                << path;
        }
    }
    EXPECT_EQ(paths().size(), rows);
}

TEST_F(OpenApi, AnOperationSaysWhatItTakesAndGives) {
    const json::value& post = paths().at("/cManager/getLockList").at("post");
    const json::value& schema = post.at("requestBody").at("content").at("application/json").at("schema");
    EXPECT_EQ(schema.at("required"), (json::array{"site", "lang"}));
    const json::value& result = post.at("responses")
                                    .at("200")
                                    .at("content")
                                    .at("application/json")
                                    .at("schema")
                                    .at("properties")
                                    .at("result");
    EXPECT_EQ(result.at("properties").at("rows").at("items").at("prefixItems").at(0).at("title"), "pageId");
}

TEST_F(OpenApi, WhatCallersCannotGiveIsNotInIt) {
    const auto names = [&](const std::string& path) {
        return paths()
            .at(path)
            .at("post")
            .at("requestBody")
            .at("content")
            .at("application/json")
            .at("schema")
            .at("properties")
            .as_object();
    };
    EXPECT_FALSE(names("/cServer/getPage").contains("password"));
    EXPECT_FALSE(names("/cManager/deleteLogin").contains("advId"));
    EXPECT_TRUE(names("/cManager/deleteLogin").contains("loginId"));
}

class ApiDescription : public test::ApiTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ApiDescription, test::bothEngines(), test::engineName);

TEST_P(ApiDescription, AnybodyMayReadItAndKeepIt) {
    start();
    test::ApiClient nobody(running, "127.0.0.1");
    const auto first = nobody.get("openapi.json");
    EXPECT_EQ(first.status(), 200);
    EXPECT_EQ(first.text("/openapi"), "3.1.0");
    EXPECT_EQ(
        nobody.ask("GET", "openapi.json", "If-None-Match: " + first.raw.field("ETag") + "\r\n").status(),
        304);
    EXPECT_EQ(nobody.ask("PUT", "openapi.json", "").raw.field("Allow"), "GET, HEAD");
}

}  // namespace
}  // namespace torvex::api
