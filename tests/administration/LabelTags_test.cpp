#include "administration/LabelTags.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::map<double, std::string> words{
    {5, "Save"}, {6, "Tom & \"J\"  <x>"}, {7, "It's \"a\\b\""}, {1234, "\xC3\xA9"}};

std::string translated(std::string_view text) {
    return translateLabels(text, words);
}

TEST(LabelTags, APlainTagIsTheWordAsHtml) {
    EXPECT_EQ(translated("<p><label-html-0005></p>"), "<p>Save</p>");
    EXPECT_EQ(translated("<label-html-1234>"), "\xC3\xA9");
}

TEST(LabelTags, BlanksOfAPlainTagDontBreak) {
    EXPECT_EQ(translated("<label-html-0006>"), "Tom&nbsp;&amp;&nbsp;&quot;J&quot;&nbsp;&nbsp;&lt;x&gt;");
}

TEST(LabelTags, AScriptTagIsTheWordForAString) {
    EXPECT_EQ(translated("var a = '<label-js-0007>';"), "var a = 'It\\'s \\\"a\\\\b\\\"';");
    EXPECT_EQ(translated("'<label-js-0006>'"), "'Tom & \\\"J\\\"  <x>'");
}

TEST(LabelTags, AnyWordOfFiveCharactersMakesAPlainTag) {
    EXPECT_EQ(
        translated("<label-text-0005>|<LABEL-HTML-0005>|<label-\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9-0005>|"),
        "Save|Save|Save|");
}

TEST(LabelTags, AnyCharacterClosesATag) {
    EXPECT_EQ(translated("<label-html-0005/ <label-js-0005]."), "Save Save.");
}

TEST(LabelTags, TagsMayStandSideBySide) {
    EXPECT_EQ(translated("<label-html-0005><label-js-0005><label-html-0005>"), "SaveSaveSave");
}

TEST(LabelTags, AScriptTagMayStandAtTheEnd) {
    EXPECT_EQ(translated("x<label-js-0005>"), "xSave");
}

TEST(LabelTags, ALabelWithoutAWordIsEmpty) {
    EXPECT_EQ(translated("[<label-html-9999>]"), "[]");
}

TEST(LabelTags, LettersInPlaceOfDigitsLeaveTheWholeTextAsItIs) {
    for (const std::string text :
         {"<label-html-0005> and <label-html-00x5>", "<label-js-abcd> <label-html-0005>",
          "<label-html-0005> <label-", "<label-html-0005> <label-html-"}) {
        EXPECT_EQ(translated(text), text);
        EXPECT_THAT(labelsIn(text), IsEmpty());
    }
}

TEST(LabelTags, ATextWithoutTagsStaysAsItIs) {
    EXPECT_EQ(translated(""), "");
    EXPECT_EQ(translated("<label for=\"x\">a</label>"), "<label for=\"x\">a</label>");
}

TEST(LabelTags, TheLabelsOfATextAreItsTagsNumbers) {
    EXPECT_THAT(labelsIn("<label-html-0005> <label-js-0006> <label-html-0005>"), ElementsAre(5, 6, 5));
    EXPECT_THAT(labelsIn("nothing"), IsEmpty());
}

}  // namespace
}  // namespace torvex
