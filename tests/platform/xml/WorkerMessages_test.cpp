#include "platform/xml/WorkerMessages.h"

#include <gtest/gtest.h>

namespace torvex::test {
namespace {

TEST(WorkerMessages, ARequestIsReadAsItWasWritten) {
    const XmlText stylesheet{"<x/>", XmlBlanks::Drop, "utf-8"};
    const XmlText data{std::string("<r>\0</r>", 8), XmlBlanks::Keep, {}};
    const NamedValues parameters{{"one", "1"}, {"", ""}};
    const auto request = workerMessages::readRequest(workerMessages::write(stylesheet, &data, parameters));
    EXPECT_EQ(request.stylesheet.bytes, "<x/>");
    EXPECT_EQ(request.stylesheet.blanks, XmlBlanks::Drop);
    EXPECT_EQ(request.stylesheet.charset, "utf-8");
    ASSERT_TRUE(request.data);
    EXPECT_EQ(request.data->bytes, data.bytes);
    EXPECT_EQ(request.data->blanks, XmlBlanks::Keep);
    EXPECT_EQ(request.data->charset, "");
    EXPECT_EQ(request.parameters, parameters);
}
TEST(WorkerMessages, ADocumentAloneIsARequestToo) {
    const auto request = workerMessages::readRequest(workerMessages::write({"<x/>"}, nullptr, {}));
    EXPECT_EQ(request.stylesheet.bytes, "<x/>");
    EXPECT_FALSE(request.data);
    EXPECT_TRUE(request.parameters.empty());
}
TEST(WorkerMessages, AReplyKeepsTheCodeOfItsFault) {
    for (const int code : {0, 1, -1, 2'147'483'647, -2'147'483'647}) {
        const auto reply =
            workerMessages::readReply(workerMessages::write(workerMessages::Reply{"why", code}));
        EXPECT_EQ(reply.output, "why");
        EXPECT_EQ(reply.faultCode, code);
    }
}
TEST(WorkerMessages, WhatIsCutShortIsRefused) {
    const XmlText document{"<x/>"};
    const std::string whole = workerMessages::write(document, &document, {{"one", "1"}});
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_THROW(workerMessages::readRequest(whole.substr(0, size)), Error) << size;
    EXPECT_THROW(workerMessages::readReply(""), Error);
}

}  // namespace
}  // namespace torvex::test
