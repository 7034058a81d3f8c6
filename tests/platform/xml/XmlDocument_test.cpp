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

std::string nestedEntities(int levels) {
    std::string text = "<!DOCTYPE r [<!ENTITY e0 \"lol\">";
    for (int level = 1; level <= levels; ++level) {
        text += "<!ENTITY e" + std::to_string(level) + " \"";
        for (int n = 0; n < 10; ++n) text += "&e" + std::to_string(level - 1) + ";";
        text += "\">";
    }
    return text + "]><r>&e" + std::to_string(levels) + ";</r>";
}

TEST(XmlDocument, SaysWhereTheTextIsBroken) {
    EXPECT_EQ(failureOf("<r>\n<a></b></r>"), "line 2: Opening and ending tag mismatch: a line 2 and b");
    EXPECT_EQ(failureOf(""), "line 1: Document is empty");
    EXPECT_EQ(failureOf("<r>open"), "line 1: Premature end of data in tag r line 1");
}

TEST(XmlDocument, PutsInItsOwnEntities) {
    EXPECT_EQ(parsed("<!DOCTYPE r [<!ENTITY a \"x\"><!ENTITY b \"&a;&a;\">]><r>[&b;]</r>"), "[xx]");
}

TEST(XmlDocument, KnowsNoEntityOfAFile) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/secret";
    std::ofstream(file) << "hidden";
    EXPECT_EQ(failureOf("<!DOCTYPE r [<!ENTITY a SYSTEM \"file://" + file + "\">]><r>&a;</r>"),
              "line 1: Entity 'a' not defined");
    EXPECT_EQ(failureOf("<!DOCTYPE r [<!ENTITY a SYSTEM \"" + file + "\">]><r q=\"&a;\"/>"),
              "line 1: Entity 'a' not defined");
}

TEST(XmlDocument, ReadsNoDefinitionsFromAFile) {
    const test::TemporaryFolder folder;
    const std::string file = folder.path() + "/definitions";
    std::ofstream(file) << "<!ENTITY a \"hidden\">";
    EXPECT_EQ(parsed("<!DOCTYPE r SYSTEM \"file://" + file + "\"><r>[&a;]</r>"), "[]");
    EXPECT_EQ(failureOf("<!DOCTYPE r [<!ENTITY % p SYSTEM \"file://" + file + "\"> %p;]><r>&a;</r>"),
              "line 1: Entity 'a' not defined");
}

TEST(XmlDocument, IncludesNothing) {
    EXPECT_EQ(parsed("<r xmlns:xi=\"http://www.w3.org/2001/XInclude\"><xi:include href=\"/etc/passwd\" "
                     "parse=\"text\"/></r>"),
              "");
}

TEST(XmlDocument, RefusesEntitiesThatGrowWithoutEnd) {
    EXPECT_EQ(failureOf(nestedEntities(12)), "line 1: Detected an entity reference loop");
    std::string wide = "<!DOCTYPE r [<!ENTITY a \"" + std::string(100'000, 'x') + "\">]><r>";
    for (int n = 0; n < 20'000; ++n) wide += "&a;";
    EXPECT_EQ(failureOf(wide + "</r>"), "line 1: Detected an entity reference loop");
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
