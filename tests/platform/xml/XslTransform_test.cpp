#include "platform/xml/XslTransform.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

#include "support/FeedServer.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

std::string sheet(const std::string& body) {
    return "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">\n" + body +
           "</xsl:stylesheet>";
}

/// A stylesheet whose output is the text of one template.
std::string textSheet(const std::string& body) {
    return sheet("<xsl:output method=\"text\"/><xsl:template match=\"/\">" + body + "</xsl:template>");
}

std::string run(const std::string& stylesheet, const std::string& data = "<r/>", NamedValues parameters = {},
                const XslLimits& limits = {}) {
    return transform({XmlDocument::parse(stylesheet, XmlBlanks::Keep),
                      XmlDocument::parse(data, XmlBlanks::Drop), std::move(parameters)},
                     limits);
}

std::string failureOf(const std::string& stylesheet, const std::string& data = "<r/>",
                      NamedValues parameters = {}, const XslLimits& limits = {}) {
    try {
        return "no error: " + run(stylesheet, data, std::move(parameters), limits);
    } catch (const XmlError& error) {
        EXPECT_EQ(std::string_view(error.what()).find('\n'), std::string_view::npos);
        return error.what();
    }
}

TEST(XslTransform, WritesHtml) {
    EXPECT_EQ(run(sheet("<xsl:output method='html' indent='no'/><xsl:template match='/'><p><xsl:value-of "
                        "select='r'/><br/></p></xsl:template>"),
                  "<r>a &lt; \u00e9</r>"),
              "<p>a &lt; \u00e9<br></p>");
}

TEST(XslTransform, WritesXmlWhereNothingElseIsSaid) {
    EXPECT_EQ(run(sheet("<xsl:template match='/'><p><br/></p></xsl:template>")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<p><br/></p>");
}

TEST(XslTransform, WritesText) {
    EXPECT_EQ(run(textSheet("a &lt; \u00e9")), "a < \u00e9");
}

TEST(XslTransform, WritesUtf8WhateverTheStylesheetSays) {
    EXPECT_EQ(run(sheet("<xsl:output method='text' encoding='iso-8859-1'/><xsl:template match='/'>\u00e9 "
                        "\u20ac</xsl:template>")),
              "\u00e9 \u20ac");
}

TEST(XslTransform, NothingGivesNothing) {
    EXPECT_EQ(run(sheet("<xsl:output method='text'/><xsl:template match='/'/>")), "");
}

TEST(XslTransform, AStylesheetDeclaresNoEntitiesEither) {
    EXPECT_EQ(failureOf("<!DOCTYPE xsl:stylesheet [<!ENTITY nbsp \"&#160;\">]>" + textSheet("a&nbsp;b")),
              "line 1: the document declares entities");
    EXPECT_EQ(run(textSheet("a&#160;b")), "a\u00a0b");
}

TEST(XslTransform, KeepsTheBlanksOfTextElements) {
    EXPECT_EQ(run(textSheet(" <xsl:text> </xsl:text> <xsl:text>.</xsl:text> ")), " .");
}

TEST(XslTransform, PassesParametersAsPlainText) {
    const std::string stylesheet = sheet(
        "<xsl:output method='text'/><xsl:param name='q' select=\"'none'\"/><xsl:template "
        "match='/'><xsl:value-of select='$q'/></xsl:template>");
    EXPECT_EQ(run(stylesheet), "none");
    for (const char* value :
         {"plain", "it's \"quoted\"", "/r", "1 + 1", "<b>&amp;", "", "'", "\"", "\u00e9"}) {
        EXPECT_EQ(run(stylesheet, "<r>secret</r>", {{"q", value}}), value);
    }
}

TEST(XslTransform, TheLaterOfTwoParametersCounts) {
    EXPECT_EQ(run(sheet("<xsl:output method='text'/><xsl:param name='q'/><xsl:template "
                        "match='/'><xsl:value-of select='$q'/></xsl:template>"),
                  "<r/>", {{"q", "first"}, {"Q", "other"}, {"q", "second"}}),
              "second");
}

TEST(XslTransform, LeavesOutWhatCannotBeAParameter) {
    EXPECT_EQ(
        run(textSheet("fine"), "<r/>",
            {{"", "1"}, {"a:b", "2"}, {"{urn:x}c", "3"}, {"two words", "4"}, {"1", "5"}, {"unknown", "6"}}),
        "fine");
}

TEST(XslTransform, ReadsNoFile) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/secret.xml";
    std::ofstream(file) << "<s>hidden</s>";
    for (const std::string& address : {"file://" + file, file, "file:" + file}) {
        const std::string failure =
            failureOf(textSheet("<xsl:value-of select=\"document('" + address + "')\"/>"));
        EXPECT_TRUE(failure.starts_with("line 2: ") && failure.ends_with(file + " refused")) << failure;
    }
}

TEST(XslTransform, ReadsNoFileUnderItsOwnName) {
    for (const char* address : {"file:torvex:stylesheet", "torvex:other", "torvex:stylesheet/x"}) {
        EXPECT_NE(failureOf(textSheet("<xsl:value-of select=\"document('" + std::string(address) + "')\"/>"))
                      .find("refused"),
                  std::string::npos)
            << address;
    }
}

TEST(XslTransform, FetchesNothing) {
    test::FeedServer server;
    server.answer("/secret.xml", "200 OK", "", "<s>hidden</s>");
    EXPECT_EQ(
        failureOf(textSheet("<xsl:value-of select=\"document('" + server.url("/secret.xml") + "')\"/>")),
        "line 2: Network file read for " + server.url("/secret.xml") + " refused");
    EXPECT_TRUE(server.targets().empty());
}

TEST(XslTransform, LoadsNoOtherStylesheet) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/other.xsl";
    std::ofstream(file) << textSheet("hidden");
    for (const char* element : {"import", "include"}) {
        EXPECT_EQ(failureOf(sheet("<xsl:" + std::string(element) + " href='" + file + "'/>")),
                  "xsl:import and xsl:include are not allowed");
    }
}

TEST(XslTransform, WritesNoFile) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/made";
    const std::string element = "document href='" + file + "'>x</";
    EXPECT_NE(failureOf(textSheet("<xsl:" + element + "xsl:document>")).find("refused"), std::string::npos);
    EXPECT_NE(failureOf(sheet("<xsl:template match='/' xmlns:e='http://exslt.org/common'><e:" + element +
                              "e:document></xsl:template>")),
              "");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(XslTransform, TheStylesheetCanReadItself) {
    EXPECT_EQ(
        run(sheet(
            "<xsl:output method='text'/><d xmlns='urn:own'>own</d><xsl:template "
            "match='/'><xsl:value-of select=\"document('')/*/*[local-name() = 'd']\"/></xsl:template>")),
        "own");
}

TEST(XslTransform, SaysWhatIsWrongWithAStylesheet) {
    EXPECT_EQ(failureOf("<r/>"), "line 1: document is not a stylesheet");
    EXPECT_EQ(failureOf(textSheet("<xsl:value-of select='foo(1'/>")),
              "line 2: xsl:value-of : could not compile select expression 'foo(1'");
    EXPECT_EQ(failureOf(textSheet("<xsl:value-of/>")), "line 2: xsl:value-of : select is missing");
}

TEST(XslTransform, SaysWhatWentWrongInARun) {
    EXPECT_EQ(failureOf(textSheet("<xsl:value-of select='foo(1)'/>")), "line 2: function foo not found");
    EXPECT_EQ(failureOf(textSheet("<xsl:value-of select='$no'/>")),
              "line 2: Variable 'no' has not been declared.");
    EXPECT_EQ(failureOf(textSheet("<xsl:call-template name='no'/>")),
              "line 2: The called template 'no' was not found.");
}

TEST(XslTransform, AMessageCanStopIt) {
    EXPECT_EQ(failureOf(textSheet("<xsl:message>first</xsl:message><xsl:message terminate='yes'>\nlast "
                                  "word\n</xsl:message>")),
              "last word");
}

TEST(XslTransform, OtherMessagesAreNoErrors) {
    EXPECT_EQ(run(textSheet("<xsl:message>runtime error: line 1 of it</xsl:message>fine")), "fine");
}

TEST(XslTransform, StopsTemplatesThatCallEachOtherForEver) {
    EXPECT_EQ(
        failureOf(sheet("<xsl:template match='/' name='a'><xsl:call-template name='a'/></xsl:template>")),
        "line 2: A potential infinite template recursion was detected.");
}

TEST(XslTransform, AllowsDeepTemplates) {
    EXPECT_EQ(run(sheet("<xsl:output method='text'/><xsl:template match='/' name='a'><xsl:param name='n' "
                        "select='1000'/><xsl:if test='$n &gt; 0'><xsl:call-template name='a'><xsl:with-param "
                        "name='n' select='$n - 1'/></xsl:call-template>.</xsl:if></xsl:template>"))
                  .size(),
              1000u);
}

TEST(XslTransform, StopsWorkWithoutEnd) {
    XslLimits limits;
    limits.operations = 100'000;
    std::string loops = "x";
    for (int n = 0; n < 12; ++n) loops = "<xsl:for-each select='//a'>" + loops + "</xsl:for-each>";
    const std::string data = "<r><a/><a/><a/><a/><a/><a/><a/><a/></r>";
    const auto isStopped = [&](const std::string& body) {
        return failureOf(textSheet(body), data, {}, limits).ends_with("peration limit exceeded");
    };
    EXPECT_TRUE(isStopped(loops));
    std::string expression = "1";
    for (int n = 0; n < 12; ++n) expression = "count(//a[" + expression + " &gt; 0])";
    EXPECT_TRUE(isStopped("<xsl:value-of select='" + expression + "'/>"));
}

TEST(XslTransform, RefusesAStylesheetOfTooManyParts) {
    std::string variables;
    for (int n = 0; n < 2001; ++n) variables += "<xsl:variable name='v" + std::to_string(n) + "'/>";
    EXPECT_EQ(failureOf(sheet(variables)), "the stylesheet has too many parts");
}

TEST(XslTransform, ThreadsHearOnlyTheirOwnErrors) {
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&right, thread] {
            const std::string name = "function" + std::to_string(thread);
            for (int n = 0; n < 50; ++n) {
                const std::string broken = "could not compile select expression '" + name + "(1'";
                right += failureOf(textSheet("<xsl:value-of select='" + name + "(1'/>")).find(broken) !=
                                 std::string::npos
                             ? 1
                             : 0;
                right += failureOf(textSheet("<xsl:value-of select='" + name + "()'/>")) ==
                                 "line 2: function " + name + " not found"
                             ? 1
                             : 0;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(right, 800);
}

}  // namespace
}  // namespace torvex
