#include "platform/xml/XmlDocument.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <libxml/tree.h>

#include "support/TestDatabase.h"

namespace torvex {
namespace {

std::string contentOf(const XmlDocument& document) {
    xmlChar* content = xmlNodeGetContent(xmlDocGetRootElement(document.get()));
    std::string text(reinterpret_cast<const char*>(content));
    xmlFree(content);
    return text;
}

std::string parsed(std::string_view bytes, XmlBlanks blanks = XmlBlanks::Keep,
                   const std::string& charset = "") {
    return contentOf(XmlDocument::parse(bytes, blanks, charset));
}

std::string failureOf(std::string_view bytes) {
    try {
        return "no error: " + parsed(bytes);
    } catch (const XmlError& error) {
        EXPECT_NE(error.code(), 0);
        EXPECT_EQ(std::string_view(error.what()).find('\n'), std::string_view::npos);
        return error.what();
    }
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int n = 0; n < count; ++n) all += text;
    return all;
}

std::string attributes(int count) {
    std::string all;
    for (int n = 0; n < count; ++n) all += " a" + std::to_string(n) + "='1'";
    return all;
}

/// Every character followed by a zero.
std::string wide(const std::string& text) {
    std::string bytes("\xFF\xFE");
    for (const char c : text) bytes.append({c, '\0'});
    return bytes;
}

TEST(XmlDocument, SaysWhereTheTextIsBroken) {
    EXPECT_EQ(failureOf("<r>\n<a></b></r>"), "line 2: Opening and ending tag mismatch: a line 2 and b");
    EXPECT_EQ(failureOf(""), "line 1: Document is empty");
    EXPECT_EQ(failureOf("<r>open"), "line 1: Premature end of data in tag r line 1");
}

TEST(XmlDocument, ADocumentTypeIsReadOver) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/definitions";
    std::ofstream(file) << "<!ENTITY a \"hidden\">";
    EXPECT_EQ(parsed("<!DOCTYPE html><r>x</r>"), "x");
    EXPECT_EQ(parsed("<!DOCTYPE r [<!ELEMENT r (#PCDATA)><!ATTLIST r a CDATA #IMPLIED>]><r>x</r>"), "x");
    EXPECT_EQ(parsed("<!DOCTYPE r SYSTEM \"file://" + file + "\"><r>[&a;]</r>"), "[]");
}

TEST(XmlDocument, RefusesEveryKindOfEntity) {
    for (const char* declared :
         {"<!ENTITY a \"x\">", "<!ENTITY % a \"x\">", "<!ENTITY a SYSTEM \"file:///etc/passwd\">",
          "<!ENTITY % a SYSTEM \"file:///etc/passwd\"> %a;", "<!ENTITY a PUBLIC \"p\" \"http://x/\">",
          "<!NOTATION gif SYSTEM \"g\"><!ENTITY a SYSTEM \"x\" NDATA gif>"}) {
        EXPECT_EQ(failureOf("<!DOCTYPE r [\n" + std::string(declared) + "]><r>&a;</r>"),
                  "line 2: the document declares entities")
            << declared;
    }
}

TEST(XmlDocument, NestedParameterEntitiesAreRefusedAtOnce) {
    std::string nested = "<!DOCTYPE r [<!ENTITY % a0 \"<!ENTITY x 'y'>\">";
    for (int level = 1; level < 40; ++level) {
        const std::string before = "%a" + std::to_string(level - 1) + ";";
        nested += "<!ENTITY % a" + std::to_string(level) + " \"" + before + before + "\">";
    }
    EXPECT_EQ(failureOf(nested + "%a39;]><r/>"), "line 1: the document declares entities");
}

TEST(XmlDocument, RefusesTooManyElements) {
    EXPECT_EQ(parsed("<r>" + repeated("<a/>", 99'999) + "</r>"), "");
    EXPECT_EQ(failureOf("<r>" + repeated("<a/>", 100'000) + "</r>"),
              "line 1: the document has too many elements");
}

TEST(XmlDocument, RefusesTooManyAttributes) {
    const std::string element = "<a" + attributes(1000) + "/>";
    EXPECT_EQ(parsed("<r>" + repeated(element, 200) + "</r>"), "");
    EXPECT_EQ(failureOf("<r>" + repeated(element, 200) + "<a b=''/></r>"),
              "line 1: the document has too many attributes");
}

TEST(XmlDocument, RefusesAnElementOfTooManyAttributesBeforeItIsParsed) {
    const std::string many = "<r" + attributes(100'000) + "/>";
    EXPECT_EQ(failureOf("<r" + attributes(1001) + "/>"), "an element has too many attributes");
    EXPECT_EQ(failureOf(many), "an element has too many attributes");
    EXPECT_EQ(failureOf(wide(many)), "an element has too many attributes");
    EXPECT_EQ(failureOf("<?x <?><!-- <' --><![CDATA[<\"]]>" + many), "an element has too many attributes");
}

TEST(XmlDocument, WhatOnlyLooksLikeAttributesIsNone) {
    const std::string many = repeated("a='1' ", 2000);
    EXPECT_EQ(parsed("<r><!-- <b " + many + "> --><![CDATA[<b ]]></r>"), "<b ");
    EXPECT_EQ(parsed("<r a=\"" + repeated("=", 2000) + "\">x</r>"), "x");
    EXPECT_EQ(parsed("<r>" + repeated("a=1 ", 2000) + "</r>").size(), 8000u);
}

TEST(XmlDocument, IncludesNothing) {
    EXPECT_EQ(parsed("<r xmlns:xi=\"http://www.w3.org/2001/XInclude\"><xi:include href=\"/etc/passwd\" "
                     "parse=\"text\"/></r>"),
              "");
}

TEST(XmlDocument, RefusesNestingWithoutEnd) {
    std::string deep;
    for (int n = 0; n < 100'000; ++n) deep += "<a>";
    EXPECT_NE(failureOf(deep).find("Excessive depth"), std::string::npos);
}

TEST(XmlDocument, ReadsTheEncodingThatItNames) {
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='iso-8859-1'?><r>\xE9</r>"), "\u00e9");
    EXPECT_EQ(parsed("<r>\u00e9</r>"), "\u00e9");
    EXPECT_NE(failureOf("<r>\xE9</r>").find("not proper UTF-8"), std::string::npos);
}

TEST(XmlDocument, TheCharsetOfTheAnswerComesFirst) {
    EXPECT_EQ(parsed("<r>\xE9</r>", XmlBlanks::Keep, "iso-8859-1"), "\u00e9");
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='utf-8'?><r>\xE9</r>", XmlBlanks::Keep, "iso-8859-1"),
              "\u00e9");
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='iso-8859-1'?><r>\u00e9</r>", XmlBlanks::Keep, "UTF-8"),
              "\u00e9");
}

TEST(XmlDocument, AMarkComesBeforeTheCharset) {
    EXPECT_EQ(parsed("\xEF\xBB\xBF<r>\u00e9</r>", XmlBlanks::Keep, "iso-8859-1"), "\u00e9");
}

TEST(XmlDocument, AnUnknownCharsetLeavesItToTheDocument) {
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='iso-8859-1'?><r>\xE9</r>", XmlBlanks::Keep, "nonsense"),
              "\u00e9");
}

TEST(XmlDocument, KeepsBlanksWhenAsked) {
    EXPECT_EQ(parsed("<r> <b>a</b> <b>c</b>\n</r>", XmlBlanks::Keep), " a c\n");
}

TEST(XmlDocument, DropsTextsOfNothingButBlanks) {
    EXPECT_EQ(parsed("<r> <b>a</b> <b> c </b>\n<i>\t</i></r>", XmlBlanks::Drop), "a c ");
}

TEST(XmlDocument, KeepsBlanksThatTheDocumentProtects) {
    EXPECT_EQ(parsed("<r> <p xml:space='preserve'> <b> </b></p> <q> </q></r>", XmlBlanks::Drop), "  ");
    EXPECT_EQ(parsed("<r xml:space='preserve'><p xml:space='default'> </p>-</r>", XmlBlanks::Drop), "-");
}

}  // namespace
}  // namespace torvex
