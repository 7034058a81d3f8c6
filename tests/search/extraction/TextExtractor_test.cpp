#include "search/extraction/TextExtractor.h"

#include <gmock/gmock.h>

#include "platform/text/Charset.h"
#include "search/extraction/Documents.h"
#include "search/extraction/TextBuilder.h"
#include "search/extraction/TextWorkers.h"
#include "support/RunningProgram.h"

namespace torvex::test {
namespace {

using catalogue::ExtractionError;
using catalogue::Reading;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

Reading read(const std::string& name, const std::string& bytes) {
    return catalogue::DirectExtractor().read(name, bytes);
}
std::string textOf(const std::string& name, const std::string& bytes) {
    return read(name, bytes).text;
}
std::string refusal(const std::string& name, const std::string& bytes) {
    try {
        read(name, bytes);
    } catch (const ExtractionError& error) {
        return error.what();
    }
    return "none";
}

// ---- Pages ----

TEST(HtmlText, ASnapshotHasItsTitleLanguageAndMetaTags) {
    const auto reading =
        read("ab.en.01.html",
             charset::toUtf16File("<HTML>\r\n<HEAD>\r\n<TITLE>Caf\xC3\xA9 &amp; bar</TITLE>\r\n<META "
                                  "NAME=\"MS.LOCALE\" CONTENT=\"EN\">\r\n"
                                  "<META NAME=\"keywords\" CONTENT=\"drink, eat\">\r\n<META NAME=\"Target "
                                  "Group\" CONTENT=\"guests\">\r\n"
                                  "<META NAME=\"empty\" CONTENT=\"\">\r\n</HEAD>\r\n<BODY>\r\n<p>Come "
                                  "<b>i</b>n</p>now\r\n</BODY>\r\n</HTML>"));
    EXPECT_EQ(reading.text, "Come in\nnow");
    EXPECT_EQ(reading.language, "en");
    EXPECT_THAT(reading.columns,
                UnorderedElementsAre(Pair("doctitle", "Caf\xC3\xA9 & bar"), Pair("keywords", "drink, eat"),
                                     Pair("dockeywords", "drink, eat"), Pair("targetgroup", "guests")));
}
TEST(HtmlText, ScriptsStylesAndCommentsAreNoText) {
    EXPECT_EQ(
        textOf("a.html", "<script>var a = '<p>no</p>';</script><style>p{}</style><!-- no --><p>yes</p>"),
        "yes");
}
TEST(HtmlText, TagsAndEntitiesAreRead) {
    EXPECT_EQ(textOf("a.htm", "<td>one</td><td>two</td>&eacute;&#8364;&nbsp;<img alt='picture'>"),
              "one\ntwo\n\xC3\xA9\xE2\x82\xAC\xC2\xA0\npicture");
}
TEST(HtmlText, OtherEncodingsAreRead) {
    EXPECT_EQ(textOf("a.html", "<p>caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(textOf("a.html", "\xEF\xBB\xBF<p>caf\xC3\xA9"), "caf\xC3\xA9");
}
TEST(HtmlText, WhatIsBrokenIsReadAsFarAsItGoes) {
    for (const std::string& bytes :
         {std::string("<<<>>>&&&#xFFFFFFFF;<p"), std::string(1000, '<'), std::string("\0\0a\0", 4),
          std::string("\xFF\xFE\x00", 3), std::string()}) {
        EXPECT_EQ(refusal("a.html", bytes), "none");
    }
}
TEST(HtmlText, DeepNestingIsRead) {
    std::string html;
    for (int n = 0; n < 20'000; ++n) html += "<div>";
    EXPECT_EQ(refusal("a.html", html + "deep"), "none");
}

// ---- Plain text ----

TEST(PlainText, IsReadInItsEncoding) {
    EXPECT_EQ(textOf("a.txt", "caf\xC3\xA9  \r\n one"), "caf\xC3\xA9 one");
    EXPECT_EQ(textOf("a.csv", "caf\xE9;1"), "caf\xC3\xA9;1");
    EXPECT_EQ(textOf("A.TXT", charset::toUtf16File("caf\xC3\xA9")), "caf\xC3\xA9");
}
TEST(PlainText, IsCutWhereItIsTooLong) {
    const std::string text = textOf("a.txt", std::string(5'000'000, 'a'));
    EXPECT_LE(text.size(), catalogue::longestText);
    EXPECT_GE(text.size(), catalogue::longestText - 4);
}
TEST(PlainText, AnUnknownKindHasNoText) {
    EXPECT_EQ(textOf("a.bin", "text"), "");
    EXPECT_FALSE(catalogue::hasReadableText("a"));
    EXPECT_TRUE(catalogue::hasReadableText("A.PDF"));
}

// ---- RTF ----

TEST(RtfText, IsReadWithWhatItSaysOfItself) {
    const auto reading = read("a.rtf",
                              "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0 Arial;}}{\\info{\\title The "
                              "Title}{\\author Mary}{\\keywords a, b}"
                              "{\\subject S}{\\doccomm C}{\\*\\company Acme}}\\pard Caf\\'e9 \\u8364? "
                              "one\\par two{\\*\\generator no}\\tab"
                              "\\b bold\\b0 ly{\\pict 010203}}");
    EXPECT_EQ(reading.text, "Caf\xC3\xA9 \xE2\x82\xAC one\ntwo\nboldly");
    EXPECT_THAT(reading.columns,
                UnorderedElementsAre(Pair("doctitle", "The Title"), Pair("docauthor", "Mary"),
                                     Pair("dockeywords", "a, b"), Pair("docsubject", "S"),
                                     Pair("doccomments", "C"), Pair("doccompany", "Acme")));
}
TEST(RtfText, WhatIsBrokenIsRefusedOrReadAsFarAsItGoes) {
    EXPECT_EQ(refusal("a.rtf", "text"), "it is no document of its kind");
    EXPECT_EQ(refusal("a.rtf", "{\\rtf1" + std::string(100'000, '{')), "it is nested too deeply");
    EXPECT_EQ(textOf("a.rtf", "{\\rtf1 a}}}}\\bin999999999 x\\'"), "a");
    EXPECT_EQ(textOf("a.rtf", "{\\rtf1 a\\66"), "a6");
    EXPECT_EQ(refusal("a.rtf", "{\\rtf1\\u99999999999 \\"), "none");
}

// ---- PDF ----

TEST(PdfText, IsReadWithWhatItSaysOfItself) {
    const auto reading =
        read("a.pdf",
             pdfOf("Hello tax form", "/Info<</Title(The Title)/Author(Mary)/Subject(S)/Keywords(a, b)>>"));
    EXPECT_EQ(reading.text, "Hello tax form");
    EXPECT_THAT(reading.columns,
                UnorderedElementsAre(Pair("doctitle", "The Title"), Pair("docauthor", "Mary"),
                                     Pair("dockeywords", "a, b"), Pair("docsubject", "S")));
}
TEST(PdfText, SignsAreReadByTheirCharacterMap) {
    const std::string map =
        "3 beginbfchar <0001> <0054> <0002> <00E9> <0003> <0020> endbfchar\n"
        "1 beginbfrange <0010> <0012> <0061> endbfrange";
    EXPECT_EQ(read("a.pdf", mappedPdf("0001000200030010001100120001", map)).text, "T\xC3\xA9 abcT");
}
TEST(PdfText, ASignMayBeSeveralLetters) {
    const std::string map =
        "3 beginbfchar <0001> <00660066> <0002> <006F> <0003> <0063> endbfchar\n"
        "1 beginbfrange <0004> <0005> [<0065> <D83DDE00>] endbfrange";
    EXPECT_EQ(read("a.pdf", mappedPdf("00020001000400050003", map)).text,
              "offe\xF0\x9F\x98\x80"
              "c");
}
TEST(PdfText, AMapThatIsBrokenIsNoHarm) {
    for (const auto* map :
         {"", "9 beginbfchar <0001> <", "1 beginbfrange <0001> <FFFFFFFF> <0000> endbfrange",
          "1 beginbfchar <00010203040506070809> <D800> endbfchar"}) {
        SCOPED_TRACE(map);
        EXPECT_NO_THROW(read("a.pdf", mappedPdf("00010002", map)));
    }
}
TEST(PdfText, AnEncryptedOneIsRefused) {
    EXPECT_EQ(refusal("a.pdf", lockedPdf()), "it is encrypted");
}
TEST(PdfText, ABrokenOneIsRefused) {
    EXPECT_EQ(refusal("a.pdf", "text"), "it is broken");
    EXPECT_EQ(refusal("a.pdf", "%PDF-1.4\n"), "it is broken");
    EXPECT_EQ(refusal("a.pdf", ""), "it is broken");
}

// ---- Office ----

const char* const core =
    "<cp:coreProperties xmlns:cp=\"c\" xmlns:dc=\"d\"><dc:title>The "
    "Title</dc:title><dc:creator>Mary</dc:creator>"
    "<cp:keywords>a, b</cp:keywords><dc:subject>S</dc:subject><dc:description>C</dc:description>"
    "<dc:language>de-DE</dc:language></cp:coreProperties>";

TEST(OfficeText, ADocumentIsRead) {
    const auto reading =
        read("a.docx",
             docxOf("<w:p><w:r><w:t>Hel</w:t></w:r><w:r><w:t>lo</w:t></w:r></w:p><w:p><w:r><w:t>two"
                    "</w:t><w:delText>no</w:delText></w:r></w:p>",
                    {{"docProps/core.xml", core},
                     {"docProps/app.xml", "<Properties><Company>Acme</Company></Properties>"},
                     {"word/footnotes.xml", "<w:footnotes xmlns:w=\"w\"><w:t>note</w:t></w:footnotes>"}}));
    EXPECT_EQ(reading.text, "Hello\ntwo\nnote");
    EXPECT_EQ(reading.language, "de");
    EXPECT_THAT(reading.columns,
                UnorderedElementsAre(Pair("doctitle", "The Title"), Pair("docauthor", "Mary"),
                                     Pair("dockeywords", "a, b"), Pair("docsubject", "S"),
                                     Pair("doccomments", "C"), Pair("doccompany", "Acme")));
}
TEST(OfficeText, ATableIsRead) {
    EXPECT_EQ(textOf("a.xlsx",
                     archiveOf({{"[Content_Types].xml", "<Types/>"},
                                {"xl/sharedStrings.xml", "<sst><si><t>one</t></si><si><t>two</t></si></sst>"},
                                {"xl/worksheets/sheet1.xml",
                                 "<worksheet><c t=\"inlineStr\"><is><t>three</t></is></c>"
                                 "<c><v>4</v></c></worksheet>"}})),
              "one\ntwo\nthree");
}
TEST(OfficeText, SlidesAreReadInTheirOrder) {
    const auto slide = [](const char* text) {
        return std::string("<p:sld xmlns:p=\"p\" xmlns:a=\"a\"><a:p><a:t>") + text + "</a:t></a:p></p:sld>";
    };
    EXPECT_EQ(textOf("a.pptx", archiveOf({{"[Content_Types].xml", "<Types/>"},
                                          {"ppt/slides/slide10.xml", slide("ten")},
                                          {"ppt/slides/slide2.xml", slide("two")}})),
              "two\nten");
}
TEST(OfficeText, AnOpenDocumentIsRead) {
    const auto reading = read(
        "a.odt", odtOf("<text:p>Hel<text:span>lo</text:span><text:s/>you</text:p><text:tracked-changes>no"
                       "</text:tracked-changes><text:h>two</text:h>",
                       {{"meta.xml",
                         "<m xmlns:dc=\"d\" xmlns:meta=\"e\"><dc:title>The "
                         "Title</dc:title><meta:initial-creator>Mary</meta:initial-creator>"
                         "<dc:creator>Bob</dc:creator><meta:keyword>a</meta:keyword><meta:keyword>b</"
                         "meta:keyword><dc:subject>S</dc:subject>"
                         "<dc:description>C</dc:description><dc:language>fr-FR</dc:language>"
                         "<meta:user-defined meta:name=\"Company\">Acme</meta:user-defined></m>"}}));
    EXPECT_EQ(reading.text, "Hello you\ntwo");
    EXPECT_EQ(reading.language, "fr");
    EXPECT_THAT(reading.columns,
                UnorderedElementsAre(Pair("doctitle", "The Title"), Pair("docauthor", "Mary"),
                                     Pair("dockeywords", "a, b"), Pair("docsubject", "S"),
                                     Pair("doccomments", "C"), Pair("doccompany", "Acme")));
}
TEST(OfficeText, WhatIsBrokenIsRefused) {
    for (const char* name : {"a.docx", "a.xlsx", "a.pptx", "a.odt", "a.ods", "a.odp"}) {
        EXPECT_EQ(refusal(name, "text"), "it is broken") << name;
        EXPECT_EQ(refusal(name, ""), "it is no document of its kind") << name;
        EXPECT_EQ(refusal(name, archiveOf({{"other", "text"}})), "it is no document of its kind") << name;
    }
    EXPECT_EQ(refusal("a.docx", docxOf("<w:p>")), "its XML is broken");
    const std::string whole = docxOf("<w:p><w:t>text</w:t></w:p>");
    EXPECT_NE(refusal("a.docx", whole.substr(0, whole.size() / 2)), "none");
}
TEST(OfficeText, WhatIsEncryptedIsRefused) {
    EXPECT_EQ(refusal("a.docx", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(600, '\0')),
              "it is encrypted, or of an old kind");
    EXPECT_EQ(
        refusal("a.docx",
                archiveOf({{"[Content_Types].xml", "<Types/>"}, {"word/document.xml", "<d/>"}}, "secret")),
        "it is encrypted");
    EXPECT_EQ(refusal("a.odt", odtOf("x", {{"META-INF/manifest.xml", "<m><f><encryption-data/></f></m>"}})),
              "it is encrypted");
}
TEST(OfficeText, DeepXmlIsRefused) {
    std::string body;
    for (int n = 0; n < 1000; ++n) body += "<w:p>";
    EXPECT_EQ(refusal("a.docx", docxOf(body)), "its XML is nested too deeply");
}
TEST(OfficeText, ABombOfTextIsCut) {
    std::string body = "<w:p><w:t>";
    body.append(40'000'000, 'a');
    const auto text = textOf("a.docx", docxOf(body + "</w:t></w:p>"));
    EXPECT_LE(text.size(), catalogue::longestText);
}
TEST(OfficeText, ABombOfMarkupIsRefused) {
    std::string body;
    body.reserve(300'000'000);
    while (body.size() < 280'000'000)
        body += "<w:p></w:p>                                                                ";
    const std::string bomb = docxOf(body);
    EXPECT_LT(bomb.size(), 3'000'000);
    EXPECT_EQ(refusal("a.docx", bomb), "it unpacks to too much");
}
TEST(OfficeText, EntitiesOfItsOwnAreRefused) {
    const std::string declared =
        "<!DOCTYPE d [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
        "\"&b;&b;&b;&b;&b;&b;\">"
        "<!ENTITY f SYSTEM \"file:///etc/passwd\">]><d><t>x&c;&f;y</t></d>";
    EXPECT_EQ(
        refusal("a.docx", archiveOf({{"[Content_Types].xml", "<Types/>"}, {"word/document.xml", declared}})),
        "its XML is broken");
}

// ---- In a process of its own ----

TEST(TextWorkers, ReadAsIsReadHere) {
    catalogue::TextWorkers workers(programPath());
    EXPECT_EQ(workers.read("a.pdf", pdfOf("Hello")).text, "Hello");
    EXPECT_EQ(workers.read("a.docx", docxOf("<w:p><w:t>Hello</w:t></w:p>")).text, "Hello");
    EXPECT_EQ(workers.read("a.rtf", "{\\rtf1 caf\\'e9}").text, "caf\xC3\xA9");
    const auto page = workers.read("a.html", charset::toUtf16File("<title>T</title>text"));
    EXPECT_EQ(page.text, "text");
    EXPECT_THAT(page.columns, UnorderedElementsAre(Pair("doctitle", "T")));
    EXPECT_EQ(workers.read("a.txt", charset::toUtf16File("caf\xC3\xA9")).text, "caf\xC3\xA9");
}
TEST(TextWorkers, SayWhyAFileIsRefused) {
    catalogue::TextWorkers workers(programPath());
    try {
        workers.read("a.pdf", "text");
        ADD_FAILURE() << "was read";
    } catch (const ExtractionError& error) {
        EXPECT_STREQ(error.what(), "it is broken");
    }
    EXPECT_EQ(workers.read("a.txt", "still at work").text, "still at work");
}
TEST(TextWorkers, RefuseWhatTakesTooMuchTime) {
    catalogue::TextWorkers workers(programPath(), std::chrono::milliseconds(1));
    EXPECT_THROW(workers.read("a.txt", std::string(30'000'000, 'a')), ExtractionError);
}
TEST(TextWorkers, RefuseEverythingOnceCancelled) {
    catalogue::TextWorkers workers(programPath());
    workers.read("a.txt", "text");
    workers.cancel();
    EXPECT_THROW(workers.read("a.txt", "text"), catalogue::ReadingEnded);
}
TEST(TextWorkers, AProgramThatIsNoneIsRefused) {
    catalogue::TextWorkers workers("/nowhere/torvex");
    EXPECT_THROW(workers.read("a.txt", "text"), ExtractionError);
}

}  // namespace
}  // namespace torvex::test
