#include "search/catalogue/Catalogue.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <set>

#include "search/catalogue/CatalogueFixture.h"
#include "search/catalogue/Reader.h"

namespace torvex::test {
namespace {

using catalogue::Depth;
using catalogue::QueryError;
using catalogue::TooManyError;
using catalogue::UnavailableError;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class QueryTest : public CatalogueTest {
  protected:
    void SetUp() override {
        page("ab.en.01", "Taxes and rates of the town hall.", {{"doctitle", "Money"}});
        page("ab.en.01.01", "Rates for dogs. The tax is low.",
             {{"doctitle", "Dogs"}, {"audience", "citizens"}});
        page("ab.en.01.01.07", "A house with a garden.", {{"doctitle", "Living"}});
        page("ab.en.02", "Two houses near the towns.", {{"doctitle", "Tax office"}});
        document("001/dog.pdf", "The dog tax form.", {{"doctitle", "Form"}, {"dockeywords", "dog, levy"}});
        document("plan.doc", "The plan of the town.", {{"docauthor", "Mary Smith"}});
    }
};

TEST_F(QueryTest, AWordIsFoundInTheText) {
    EXPECT_THAT(names("tax"), UnorderedElementsAre("ab.en.01.01", "dog.pdf"));
}
TEST_F(QueryTest, WordsIgnoreCase) {
    EXPECT_THAT(names("TAX"), UnorderedElementsAre("ab.en.01.01", "dog.pdf"));
}
TEST_F(QueryTest, AllIsTheTextAndTheColumnsOfDocuments) {
    EXPECT_THAT(names("@all tax"), UnorderedElementsAre("ab.en.01.01", "dog.pdf", "ab.en.02"));
    EXPECT_THAT(names("@all levy"), ElementsAre("dog.pdf"));
}
TEST_F(QueryTest, AllIsNoOtherColumn) {
    EXPECT_THAT(names("@all citizens"), IsEmpty());
    EXPECT_THAT(names("@audience citizens"), ElementsAre("ab.en.01.01"));
}
TEST_F(QueryTest, AColumnIsSearchedAlone) {
    EXPECT_THAT(names("@doctitle tax"), ElementsAre("ab.en.02"));
    EXPECT_THAT(names("@docauthor smith"), ElementsAre("plan.doc"));
    EXPECT_THAT(names("@dockeywords tax"), IsEmpty());
}
TEST_F(QueryTest, AColumnThatNobodyHasFindsNothing) {
    EXPECT_THAT(names("@colour tax"), IsEmpty());
}
TEST_F(QueryTest, TheWordsOfADocumentsNameAreFound) {
    EXPECT_THAT(names("@filename plan"), ElementsAre("plan.doc"));
}
TEST_F(QueryTest, ThePlaceOfAPageIsNoWord) {
    EXPECT_THAT(names("@filename html OR @filename en"), IsEmpty());
}
TEST_F(QueryTest, AndNeedsBoth) {
    EXPECT_THAT(names("tax AND rates"), ElementsAre("ab.en.01.01"));
    EXPECT_THAT(names("@all dog AND form"), ElementsAre("dog.pdf"));
}
TEST_F(QueryTest, OrNeedsOne) {
    EXPECT_THAT(names("garden OR plan"), UnorderedElementsAre("ab.en.01.01.07", "plan.doc"));
}
TEST_F(QueryTest, NotTakesAway) {
    EXPECT_THAT(names("tax AND NOT rates"), ElementsAre("dog.pdf"));
}
TEST_F(QueryTest, NotAloneFindsAllOthers) {
    EXPECT_THAT(names("NOT town AND NOT tax"), UnorderedElementsAre("ab.en.01.01.07", "ab.en.02"));
}
TEST_F(QueryTest, AndBindsCloserThanOr) {
    EXPECT_THAT(names("plan OR tax AND rates"), UnorderedElementsAre("plan.doc", "ab.en.01.01"));
    EXPECT_THAT(names("(plan OR tax) AND rates"), ElementsAre("ab.en.01.01"));
}
TEST_F(QueryTest, QuotesNeedTheWordsInTheirOrder) {
    EXPECT_THAT(names("\"dog tax\""), ElementsAre("dog.pdf"));
    EXPECT_THAT(names("\"tax dog\""), IsEmpty());
    EXPECT_THAT(names("\"the dog tax form\""), ElementsAre("dog.pdf"));
    EXPECT_THAT(names("@doctitle \"tax office\""), ElementsAre("ab.en.02"));
    EXPECT_THAT(names("@all \"tax office\""), ElementsAre("ab.en.02"));
}
TEST_F(QueryTest, APhraseGoesOverNoColumnsEnd) {
    document("two.doc", "", {{"docauthor", "first"}, {"dockeywords", "second"}});
    EXPECT_THAT(names("@all first AND second"), ElementsAre("two.doc"));
    EXPECT_THAT(names("@all \"first second\""), IsEmpty());
}
TEST_F(QueryTest, AStarStandsForTheRestOfAWord) {
    EXPECT_THAT(names("hous*"), UnorderedElementsAre("ab.en.01.01.07", "ab.en.02"));
    EXPECT_THAT(names("@all mon* OR pla*"), UnorderedElementsAre("ab.en.01", "plan.doc"));
    EXPECT_THAT(names("xyz*"), IsEmpty());
}
TEST_F(QueryTest, ADollarFindsAllFormsOfAWord) {
    EXPECT_THAT(names("$contents house"), UnorderedElementsAre("ab.en.01.01.07", "ab.en.02"));
    EXPECT_THAT(names("$contents housing"), UnorderedElementsAre("ab.en.01.01.07", "ab.en.02"));
    EXPECT_THAT(names("@contents house"), ElementsAre("ab.en.01.01.07"));
    EXPECT_THAT(names("$all taxes AND rate"), UnorderedElementsAre("ab.en.01", "ab.en.01.01"));
}
TEST_F(QueryTest, WordsBehindADollarAreAlternatives) {
    EXPECT_THAT(names("$contents gardens plans"), UnorderedElementsAre("ab.en.01.01.07", "plan.doc"));
}
TEST_F(QueryTest, ALanguageWithoutFormsFindsTheWordItself) {
    auto asked = query("$contents houses");
    asked.language = "xx";
    EXPECT_THAT(names(asked), ElementsAre("ab.en.02"));
}
TEST_F(QueryTest, FormsFollowTheLanguage) {
    page("ab.de.01", "Die H\xC3\xA4user am Platz");
    auto asked = query("$contents Haus");
    asked.language = "de";
    EXPECT_THAT(names(asked), ElementsAre("ab.de.01"));
}

// ---- File names ----

TEST_F(QueryTest, AFileNameIsFoundByItself) {
    EXPECT_THAT(names("#filename=ab.en.01.html"), ElementsAre("ab.en.01"));
    EXPECT_THAT(names("#filename=AB.EN.01.HTML"), ElementsAre("ab.en.01"));
}
TEST_F(QueryTest, AStarInAFileNameStandsForAnyCharacters) {
    EXPECT_THAT(names("#filename=ab.en.01*.html"),
                UnorderedElementsAre("ab.en.01", "ab.en.01.01", "ab.en.01.01.07"));
    EXPECT_THAT(names("#filename=*.pdf"), ElementsAre("dog.pdf"));
    EXPECT_THAT(names("#filename=*o*"), UnorderedElementsAre("dog.pdf", "plan.doc"));
}
TEST_F(QueryTest, AQuestionMarkInAFileNameStandsForOneCharacter) {
    EXPECT_THAT(names("#filename=ab.en.01.??.html"), ElementsAre("ab.en.01.01"));
    EXPECT_THAT(names("#filename=?o?.pdf"), ElementsAre("dog.pdf"));
    EXPECT_THAT(names("#filename=?.pdf"), IsEmpty());
}
TEST_F(QueryTest, AFilterStandsBesideWords) {
    EXPECT_THAT(names("(@all tax) AND (#filename=ab.en.01*.html OR NOT #filename=*.html)"),
                UnorderedElementsAre("ab.en.01.01", "dog.pdf"));
    EXPECT_THAT(names("(@all tax) AND (#filename=*.pdf OR #filename=*.html)"),
                UnorderedElementsAre("ab.en.01.01", "ab.en.02", "dog.pdf"));
    EXPECT_THAT(
        names("(@all tax) AND (#filename=ab.en.02.html OR (#filename=*.doc AND NOT #filename=*.html))"),
        ElementsAre("ab.en.02"));
}
TEST_F(QueryTest, AFilterHasNoSayInTheRank) {
    const auto plain = find(query("tax AND rates"));
    const auto filtered = find(query("tax AND rates AND #filename=ab.en.01*.html"));
    ASSERT_EQ(filtered->size(), 1);
    EXPECT_EQ(plain->row(0).rank, filtered->row(0).rank);
}
TEST_F(QueryTest, ManyFileNamesAreFoundAsFewAre) {
    for (int n = 0; n < 400; ++n) document("many/file" + std::to_string(n) + ".txt", "one of many");
    EXPECT_THAT(names("#filename=file*"), SizeIs(400));
    EXPECT_THAT(names("#filename=file?.txt OR #filename=f*"), SizeIs(400));
    EXPECT_THAT(names("many AND #filename=f*9.t?t"), SizeIs(40));
    EXPECT_THAT(names("many AND NOT #filename=f*9.t?t"), SizeIs(360));
}

// ---- Letters ----

TEST_F(QueryTest, WordsIgnoreAccents) {
    page("ab.fr.01",
         "\xC3\x89t\xC3\xA9 \xC3\xA0 la plage, c\xC5\x93ur, Stra\xC3\x9F"
         "e");
    for (const char* word : {"ete", "\xC3\x89T\xC3\x89", "e\xCC\x81t\xC3\xA9", "a", "coeur", "strasse"}) {
        EXPECT_THAT(names(std::string(word) + " AND plage"), ElementsAre("ab.fr.01")) << word;
    }
}
TEST_F(QueryTest, ChineseIsFoundBySomeOfItsSigns) {
    page("ab.zh.01", "\xE6\x9D\xB1\xE4\xBA\xAC\xE9\x83\xBD\xE5\xBA\x81");  // four signs
    EXPECT_THAT(names("\xE6\x9D\xB1"), ElementsAre("ab.zh.01"));
    EXPECT_THAT(names("\xE4\xBA\xAC\xE9\x83\xBD"), ElementsAre("ab.zh.01"));
    EXPECT_THAT(names("\xE6\x9D\xB1\xE4\xBA\xAC\xE9\x83\xBD"), ElementsAre("ab.zh.01"));
    EXPECT_THAT(names("\xE9\x83\xBD\xE4\xBA\xAC"), IsEmpty());
    EXPECT_THAT(names("\xE6\x9D\xB1\xE9\x83\xBD"), IsEmpty());
}
TEST_F(QueryTest, WhatIsNoWordIsLeftOut) {
    EXPECT_THAT(names("tax AND & AND rates"), ElementsAre("ab.en.01.01"));
    EXPECT_THAT(names("&"), IsEmpty());
    EXPECT_THAT(names("NOT &"), IsEmpty());
}

// ---- Scopes ----

TEST_F(QueryTest, WithoutAScopeNothingIsFound) {
    auto asked = query("tax");
    asked.scopes.clear();
    EXPECT_THAT(names(asked), IsEmpty());
}
TEST_F(QueryTest, ADeepScopeHoldsWhatLiesBelow) {
    auto asked = query("@all tax");
    asked.scopes = {{"\\root\\wwwroot\\documents\\ab", Depth::Deep}};
    EXPECT_THAT(names(asked), ElementsAre("dog.pdf"));
    asked.scopes = {{"\\ROOT\\Search\\HTML\\", Depth::Deep}};
    EXPECT_THAT(names(asked), UnorderedElementsAre("ab.en.01.01", "ab.en.02"));
}
TEST_F(QueryTest, AShallowScopeHoldsItsOwnFilesAlone) {
    auto asked = query("NOT nowhere");
    asked.scopes = {{"\\root\\wwwroot\\documents\\ab", Depth::Shallow}};
    EXPECT_THAT(names(asked), ElementsAre("plan.doc"));
}
TEST_F(QueryTest, ScopesAreAlternatives) {
    auto asked = query("NOT nowhere");
    asked.scopes = {{"\\root\\wwwroot\\documents\\ab", Depth::Shallow},
                    {"\\root\\wwwroot\\documents\\ab\\001", Depth::Deep}};
    EXPECT_THAT(names(asked), UnorderedElementsAre("plan.doc", "dog.pdf"));
}
TEST_F(QueryTest, AScopeThatIsGoneOrElsewhereFindsNothing) {
    auto asked = query("@all tax");
    for (const char* path : {"\\root\\wwwroot\\documents\\zz", "\\other\\search", "\\rootless",
                             "search\\html", "\\root\\wwwroot\\documents\\a"}) {
        asked.scopes = {{path, Depth::Deep}};
        EXPECT_THAT(names(asked), IsEmpty()) << path;
    }
}

// ---- Rows ----

TEST_F(QueryTest, ARowHasThePlaceOfTheFile) {
    const auto results = find(query("\"dog tax\""));
    ASSERT_EQ(results->size(), 1);
    const auto row = results->row(0);
    EXPECT_EQ(row.path, "\\root\\wwwroot\\documents\\ab\\001\\dog.pdf");
    EXPECT_EQ(row.filename, "dog.pdf");
    EXPECT_EQ(row.size, std::string("The dog tax form.").size());
    EXPECT_THAT(row.write, testing::MatchesRegex("19(69|70)-[0-9-]+ [0-9:]+"));
    EXPECT_EQ(row.characterization, "The dog tax form.");
}
TEST_F(QueryTest, ARowHasTheColumnsThatAreAskedFor) {
    auto asked = query("\"dog tax\"");
    EXPECT_THAT(find(asked)->row(0).columns, IsEmpty());
    asked.columns = {"doctitle", "dockeywords", "docauthor"};
    EXPECT_THAT(find(asked)->row(0).columns, UnorderedElementsAre(testing::Pair("doctitle", "Form"),
                                                                  testing::Pair("dockeywords", "dog, levy")));
}
TEST_F(QueryTest, RanksAreThousandthsOfTheBest) {
    const auto results = find(query("@all tax"));
    for (std::size_t n = 0; n < results->size(); ++n) {
        EXPECT_GE(results->row(n).rank, 1);
        EXPECT_LE(results->row(n).rank, 1000);
        EXPECT_LE(results->row(n).rank, n == 0 ? 1000 : results->row(n - 1).rank);
    }
}
TEST_F(QueryTest, AFilterAloneRanksAllAlike) {
    const auto results = find(query("#filename=*.html"));
    ASSERT_EQ(results->size(), 4);
    for (std::size_t n = 0; n < 4; ++n) EXPECT_EQ(results->row(n).rank, 1000);
}
TEST_F(QueryTest, EqualRanksComeByTitleThenPath) {
    EXPECT_THAT(names("#filename=*.html"),
                ElementsAre("ab.en.01.01", "ab.en.01.01.07", "ab.en.01", "ab.en.02"));
    EXPECT_THAT(names("#filename=*.*"),
                ElementsAre("plan.doc", "ab.en.01.01", "dog.pdf", "ab.en.01.01.07", "ab.en.01", "ab.en.02"));
}
TEST_F(QueryTest, ResultsAreSortedByColumns) {
    EXPECT_THAT(names(query("#filename=*.html", "doctitle[d]")),
                ElementsAre("ab.en.02", "ab.en.01", "ab.en.01.01.07", "ab.en.01.01"));
    EXPECT_THAT(names(query("@all tax", "filename[a],rank[d]")),
                ElementsAre("ab.en.01.01", "ab.en.02", "dog.pdf"));
    EXPECT_THAT(names(query("@all tax", "audience[d],doctitle")),
                ElementsAre("ab.en.01.01", "dog.pdf", "ab.en.02"));
}
TEST_F(QueryTest, AnUnknownSignOfOrderIsRefused) {
    EXPECT_THROW(find(query("tax", "doctitle[x]")), QueryError);
}
TEST_F(QueryTest, ATextThatIsNoQueryIsRefused) {
    EXPECT_THROW(find(query("tax rates")), QueryError);
}

// ---- What changes ----

TEST_F(QueryTest, ResultsStayAsTheyWere) {
    const auto results = find(query("@all tax"));
    ASSERT_EQ(results->size(), 3);
    const std::string last = results->row(2).filename;
    remove("search/html/en/ab/ab.en.02.html");
    page("ab.en.05", "tax tax tax");
    commit();
    EXPECT_EQ(results->size(), 3);
    std::set<std::string> left;
    for (std::size_t n = 0; n < 3; ++n) left.insert(results->row(n).filename);
    EXPECT_FALSE(left.contains("ab.en.05.html"));
}
TEST_F(QueryTest, ARowThatIsGoneHasNoPath) {
    const auto results = find(query("\"dog tax\""));
    remove("wwwroot/documents/ab/001/dog.pdf");
    EXPECT_EQ(results->row(0).path, "");
    EXPECT_GE(results->row(0).rank, 1);
}
TEST_F(QueryTest, ManyResultsAreAllThereOnceEach) {
    for (int n = 0; n < 900; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    const auto results = find(query("common"));
    ASSERT_EQ(results->size(), 900);
    page("ab.en.09", "common");
    commit();
    std::set<std::string> paths;
    for (std::size_t n = 0; n < 900; ++n) paths.insert(results->row(n).path);
    EXPECT_EQ(paths.size(), 900);
    EXPECT_FALSE(paths.contains("\\root\\search\\html\\en\\ab\\ab.en.09.html"));
}
TEST_F(QueryTest, WhoGoesOnFindsAllOfThemOnceEach) {
    for (int n = 0; n < 900; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    const auto results = find(query("common", "filename"));
    std::set<std::string> paths;
    std::size_t count = 0;
    for (; results->has(count); ++count) paths.insert(results->path(count));
    EXPECT_EQ(count, 900);
    EXPECT_EQ(paths.size(), 900);
    EXPECT_FALSE(results->has(5'000));
    EXPECT_EQ(results->size(), 900);
}
TEST_F(QueryTest, WhatIsPutInLaterIsNotAmongThoseThatFollow) {
    for (int n = 0; n < 900; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    const auto results = find(query("common", "filename"));
    ASSERT_TRUE(results->has(0));
    page("ab.en.09", "common");
    commit();
    std::set<std::string> paths;
    for (std::size_t n = 0; results->has(n); ++n) paths.insert(results->path(n));
    EXPECT_EQ(paths.size(), 900);
    EXPECT_FALSE(paths.contains("\\root\\search\\html\\en\\ab\\ab.en.09.html"));
}
TEST_F(QueryTest, NothingFollowsOnceTheCatalogueIsAnotherOne) {
    for (int n = 0; n < 900; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    const auto results = find(query("common", "filename"));
    std::filesystem::remove_all(database());
    for (int n = 0; n < 900; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    commit();
    std::size_t count = 0;
    for (; results->has(count); ++count) EXPECT_EQ(results->path(count), "");
    EXPECT_GT(count, 0U);
    EXPECT_LT(count, 900U);
}
TEST_F(QueryTest, ManyResultsOfEqualRankComeByPath) {
    for (int n = 999; n >= 100; --n) document("many/" + std::to_string(n) + ".txt", "common word");
    const auto found = names("common");
    ASSERT_EQ(found.size(), 900);
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end()));
}
TEST_F(QueryTest, TooManyWordsBehindABeginningAreRefused) {
    std::string text;
    for (int n = 0; n < 11'000; ++n) text += "a" + std::to_string(n) + " ";
    page("ab.en.08", text);
    EXPECT_THROW(names("a*"), TooManyError);
    EXPECT_THAT(names("a10*"), SizeIs(1));
}

// ---- Abstracts ----

TEST_F(QueryTest, AnAbstractShowsWhereTheWordsStand) {
    std::string text;
    for (int n = 0; n < 500; ++n) text += "filler ";
    page("ab.en.06", text + "the needle and the thread " + text);
    const std::string found = find(query("needle AND thread"))->row(0).characterization;
    EXPECT_THAT(found, HasSubstr("needle and the thread"));
    EXPECT_LE(found.size(), 310);
    EXPECT_THAT(find(query("@all filler"))->row(0).characterization, testing::StartsWith("filler filler"));
}
TEST_F(QueryTest, AnAbstractOfWhatWasFoundByItsTitleIsTheBeginning) {
    EXPECT_EQ(find(query("@doctitle living"))->row(0).characterization, "A house with a garden.");
}

// ---- Did you mean ----

TEST_F(QueryTest, AMisspeltWordIsCorrected) {
    EXPECT_EQ(open()->corrected("gardn plan", "en"), "garden plan");
    EXPECT_EQ(open()->corrected("the towen, hal", "en"), "the town, hall");
}
TEST_F(QueryTest, WordsThatAreThereStay) {
    EXPECT_EQ(open()->corrected("tax rates", "en"), "");
    EXPECT_EQ(open()->corrected("qqqqqqqq", "en"), "");
    EXPECT_EQ(open()->corrected("", "en"), "");
}
TEST_F(QueryTest, AWordThatHasGoneIsSuggestedNoMore) {
    remove("search/html/en/ab/ab.en.01.01.07.html");
    EXPECT_EQ(open()->corrected("gardn", "en"), "");
}

// ---- No catalogue ----

TEST_F(CatalogueTest, WithoutAFolderItIsUnavailable) {
    EXPECT_THROW(open(), UnavailableError);
}
TEST_F(CatalogueTest, AnEmptyFolderIsUnavailable) {
    std::filesystem::create_directories(database());
    EXPECT_THROW(open(), UnavailableError);
}
TEST_F(CatalogueTest, ALaterFormatIsUnavailableAndLeftAlone) {
    page("ab.en.01", "text");
    commit();
    {
        catalogue::Writer writer(database());
        writer.setMetadata("format", "99");
        writer.commit();
    }
    EXPECT_THROW(open(), UnavailableError);
    EXPECT_THROW(catalogue::Writer another(database()), UnavailableError);
}
TEST_F(CatalogueTest, AnEarlierFormatIsMadeAnew) {
    page("ab.en.01", "text");
    commit();
    {
        catalogue::Writer writer(database());
        writer.setMetadata("format", "0");
        writer.commit();
    }
    EXPECT_THROW(open(), UnavailableError);
    page("ab.en.02", "text");
    commit();
    EXPECT_THAT(names("text"), ElementsAre("ab.en.02"));
}
TEST_F(CatalogueTest, ADamagedFileIsUnavailable) {
    page("ab.en.01", "text");
    commit();
    std::ofstream(database() + "/iamglass") << "nonsense";
    EXPECT_THROW(open(), UnavailableError);
}
TEST_F(CatalogueTest, OneWritesAtATime) {
    page("ab.en.01", "text");
    commit();
    const catalogue::Writer writer(database());
    EXPECT_THROW(catalogue::Writer another(database()), catalogue::BusyError);
    EXPECT_THAT(names("text"), ElementsAre("ab.en.01"));
}
TEST_F(CatalogueTest, WhatIsPutInIsFoundOnceItIsCommitted) {
    page("ab.en.01", "text");
    commit();
    catalogue::Writer writer(database());
    writer.put({"wwwroot/documents/a.txt", {}, {"text", "", {}}});
    EXPECT_THAT(names("text"), ElementsAre("ab.en.01"));
    writer.commit();
    EXPECT_THAT(names("text"), SizeIs(2));
}

// ---- What is kept of files ----

TEST_F(CatalogueTest, APageShowsWhatItsFileHoldsNow) {
    page("ab.en.01", "A needle in a haystack.");
    commit();
    std::ofstream(folder.path() + "/search/html/en/ab/ab.en.01.html") << "<p>The needle is gone.</p>";
    EXPECT_EQ(find(query("haystack"))->row(0).characterization, "The needle is gone.");
}
TEST_F(CatalogueTest, APageWhoseFileIsGoneIsShownWithoutText) {
    page("ab.en.01", "A needle in a haystack.", {{"doctitle", "Hay"}});
    commit();
    std::filesystem::remove(folder.path() + "/search/html/en/ab/ab.en.01.html");
    catalogue::Query asked = query("haystack");
    asked.columns = {"doctitle"};
    const auto row = find(asked)->row(0);
    EXPECT_EQ(row.characterization, "");
    EXPECT_THAT(row.columns, ElementsAre(testing::Pair("doctitle", "Hay")));
}
TEST_F(CatalogueTest, AWordThatNoEntryHasAnyMoreIsNotSuggested) {
    page("ab.en.01", "orangery G\xC3\xA4rtner");
    EXPECT_EQ(open()->corrected("orangerie", "en"), "orangery");
    EXPECT_EQ(open()->corrected("G\xC3\xA4rtnex", "en"), "g\xC3\xA4rtner");
    page("ab.en.01", "something else");
    EXPECT_EQ(open()->corrected("orangerie", "en"), "");
    EXPECT_EQ(open()->corrected("G\xC3\xA4rtnex", "en"), "");
}
TEST_F(CatalogueTest, MadeCompactItHoldsWhatItHeldInLessRoom) {
    for (int n = 0; n < 600; ++n)
        page("ab.en." + std::to_string(1000 + n),
             "common word" + std::to_string(n * n) + " rare" + std::to_string(n));
    const auto before = find(query("common"));
    const auto size = [&] {
        std::uintmax_t bytes = 0;
        for (const auto& file : std::filesystem::directory_iterator(database())) bytes += file.file_size();
        return bytes;
    };
    const auto loose = size();
    catalogue::Writer(database()).compact();
    EXPECT_LT(size(), loose * 9 / 10);
    EXPECT_FALSE(std::filesystem::exists(database() + ".compact"));
    EXPECT_EQ(find(query("common"))->size(), 600);
    EXPECT_THAT(names("rare77"), ElementsAre("ab.en.1077"));
    EXPECT_THAT(before->row(500).path, testing::StartsWith("\\root\\search"));
    page("ab.en.2000", "common later");
    EXPECT_EQ(find(query("common"))->size(), 601);
}
TEST_F(CatalogueTest, WhatAnInterruptedCompactingLeftIsInNobodysWay) {
    page("ab.en.01", "word");
    commit();
    std::filesystem::create_directories(database() + ".compact");
    std::ofstream(database() + ".compact/postlist.glass") << "half";
    EXPECT_THAT(names("word"), ElementsAre("ab.en.01"));
    catalogue::Writer(database()).compact();
    EXPECT_FALSE(std::filesystem::exists(database() + ".compact"));
    EXPECT_THAT(names("word"), ElementsAre("ab.en.01"));
}

}  // namespace
}  // namespace torvex::test
