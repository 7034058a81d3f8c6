// The demo from outside: that all of it is there, that it hangs together, and that it guards what it should.

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "cli/ProgramFixture.h"
#include "media/ImageHeader.h"
#include "platform/DateTime.h"
#include "platform/text/Text.h"
#include "support/RawHttpClient.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using Texts = std::set<std::string>;

/// What an expression finds in a text: its first group.
Texts found(const std::string& text, const std::string& expression) {
    const std::regex pattern(expression);
    Texts all;
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
        all.insert((*at)[1]);
    return all;
}

/// "002001" as a path: "002/001/".
std::string pathOf(const std::string& folderId) {
    std::string path;
    for (std::size_t at = 0; at < folderId.size(); at += 3) path += folderId.substr(at, 3) + "/";
    return path;
}

class DemoTest : public ProgramDatabaseTest {
  protected:
    void SetUp() override { said_ = init({"--demo", "--admin-password", "word"}); }

    /// The rows that a statement finds, as objects.
    std::vector<json::object> rows(const std::string& statement) {
        std::vector<json::object> all;
        std::istringstream lines(sql(statement));
        for (std::string line; std::getline(lines, line);) all.push_back(json::parse(line).as_object());
        return all;
    }
    /// The first column of what a statement finds.
    Texts column(const std::string& statement) {
        Texts all;
        for (const auto& row : rows(statement)) all.insert(cell(row, std::string_view(row.begin()->key())));
        return all;
    }
    /// A row's cell by the name of its column, in any case: engines differ in it.
    static std::string cell(const json::object& row, std::string_view name) {
        for (const auto& entry : row) {
            if (!text::equals(std::string_view(entry.key()), name)) continue;
            if (entry.value().is_string()) return std::string(entry.value().as_string());
            return text::fromNumber(entry.value().to_number<double>());
        }
        ADD_FAILURE() << "no column " << name;
        return "";
    }

    /// The files below a folder of the installation, by their paths in it.
    Texts filesBelow(const std::string& name) {
        Texts all;
        const fs::path root = fs::path(site()) / name;
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            if (entry.is_regular_file()) all.insert(fs::relative(entry.path(), root));
        }
        return all;
    }
    /// The password that init showed.
    std::string passwordOf(const std::string& username) {
        const Texts shown = found(said_, "\n    " + username + " +([a-z2-9-]{19})  ");
        return shown.empty() ? std::string() : *shown.begin();
    }

    std::string said_;
};
INSTANTIATE_TEST_SUITE_P(Engines, DemoTest, bothEngines(), engineName);

// ---- Media ----

TEST_P(DemoTest, EveryFileOfItsMediaIsRegisteredAndEveryRegisteredFileIsThere) {
    EXPECT_EQ(column("select img_site || '/' || img_filename as path from TORVEX_IMAGES"),
              filesBelow("wwwroot/images"));
    EXPECT_EQ(column("select doc_site || '/' || doc_filename as path from TORVEX_DOCUMENTS"),
              filesBelow("wwwroot/documents"));
}

TEST_P(DemoTest, MediaAreRegisteredWithTheirSizesAndFolders) {
    for (const auto& row : rows("select * from TORVEX_IMAGES")) {
        const std::string name =
            "site/wwwroot/images/" + cell(row, "img_site") + "/" + cell(row, "img_filename");
        const std::string bytes = content(name);
        EXPECT_EQ(cell(row, "img_size"), std::to_string(bytes.size())) << name;
        const ImageHeader header = readImageHeader([&](std::uint64_t offset, std::size_t length) {
            return bytes.substr(std::min<std::uint64_t>(offset, bytes.size()), length);
        });
        EXPECT_EQ(cell(row, "img_width"), text::fromNumber(header.width.value_or(0))) << name;
        EXPECT_EQ(cell(row, "img_height"), text::fromNumber(header.height.value_or(0))) << name;
    }
    for (const auto& row : rows("select * from TORVEX_DOCUMENTS")) {
        const std::string name =
            "site/wwwroot/documents/" + cell(row, "doc_site") + "/" + cell(row, "doc_filename");
        EXPECT_EQ(cell(row, "doc_size"), std::to_string(content(name).size())) << name;
        EXPECT_EQ("." + cell(row, "doc_type"), fs::path(name).extension()) << name;
    }
}

TEST_P(DemoTest, FoldersAreRegisteredAndGuardedAsTheyLieOnTheDisk) {
    for (const auto& [kind, table, prefix] :
         {std::array{"images", "TORVEX_IMAGES", "img"}, std::array{"documents", "TORVEX_DOCUMENTS", "doc"}}) {
        Texts registered;
        for (const auto& row : rows(fmt::format("select * from {}_FOLDERS", table))) {
            const std::string id = cell(row, "fld_id");
            EXPECT_EQ(cell(row, "fld_level"), std::to_string(id.size() / 3)) << id;
            EXPECT_EQ(cell(row, "fld_parent"), id.substr(0, id.size() - 3)) << id;
            registered.insert(cell(row, "fld_site") + "/" + pathOf(id));
        }
        Texts onDisk;
        for (const std::string& file : filesBelow(fmt::format("wwwroot/{}", kind))) {
            for (auto end = file.find('/', 3); end != std::string::npos; end = file.find('/', end + 1)) {
                onDisk.insert(file.substr(0, end + 1));
            }
        }
        EXPECT_EQ(registered, onDisk);
        EXPECT_THAT(
            column(fmt::format("select {1}_filename from {0} where {1}_fldId <> '' and {1}_filename not like "
                               "substr({1}_fldId, 1, 3) || '/%'",
                               table, prefix)),
            IsEmpty());
        EXPECT_THAT(column(fmt::format(
                        "select fld_id from {}_FOLDERS a where not exists (select 1 from "
                        "TORVEX_FOLDERS_GROUPS b where b.fld_type = '{}' and b.fld_site = a.fld_site and "
                        "b.fld_id = a.fld_id)",
                        table, prefix)),
                    IsEmpty());
    }
}

TEST_P(DemoTest, PagesLinkToDocumentsOfFoldersAndShowImagesOfFolders) {
    std::string bodies;
    for (const std::string& body : column("select bodyText from TORVEX_BODIES_LIVE")) bodies += body;
    EXPECT_THAT(found(bodies, R"(href="file\((00\d/[^)]*)\))"), SizeIs(testing::Ge(8U)));
    EXPECT_THAT(found(bodies, R"re(<img src="/images/\w\w/(00\d/[^"]*)")re"), SizeIs(testing::Ge(6U)));
}

// ---- Pages ----

TEST_P(DemoTest, EveryPageHasRowsOfItsReadersAndItsMetaData) {
    EXPECT_THAT(column("select pageId from TORVEX_PAGES_LIVE a where not exists (select 1 from "
                       "TORVEX_PAGES_GROUPS_LIVE b where b.pageId = a.pageId)"),
                IsEmpty());
    EXPECT_THAT(
        column(
            "select a.pageId from TORVEX_PAGES_LIVE a inner join TORVEX_METADATA b on b.metaData_site = "
            "a.site "
            "where not exists (select 1 from TORVEX_PAGES_METADATA_LIVE c where c.metaData_pageId = a.pageId "
            "and c.metaData_id = b.metaData_id)"),
        IsEmpty());
}

TEST_P(DemoTest, EveryNotationOfALinkNamesWhatIsThere) {
    const Texts pages = column("select pageId from TORVEX_PAGES_LIVE");
    const auto documents = rows("select doc_site, doc_title, doc_filename from TORVEX_DOCUMENTS");
    const auto isDocument = [&](const std::string& ownSite, const std::string& name) {
        return std::any_of(documents.begin(), documents.end(), [&](const json::object& row) {
            const std::string itsSite = cell(row, "doc_site");
            const std::string file = cell(row, "doc_filename");
            return name == itsSite + "/" + file ||
                   (itsSite == ownSite && (name == file || name == cell(row, "doc_title")));
        });
    };
    const auto expectTargets = [&](const std::string& ownSite, const std::string& text,
                                   const std::string& where) {
        for (const auto& page : found(text, R"(href="page\((\d+)\))"))
            EXPECT_TRUE(pages.contains(page)) << page << where;
        for (const auto& file : found(text, R"(href="file\(([^)]*)\))"))
            EXPECT_TRUE(isDocument(ownSite, file)) << file << where;
    };
    for (const auto& row : rows("select a.pageId, a.site, b.bodyText from TORVEX_PAGES_LIVE a inner join "
                                "TORVEX_BODIES_LIVE b on b.pageId = a.pageId")) {
        expectTargets(cell(row, "site"), cell(row, "bodytext"), " on page " + cell(row, "pageid"));
    }
    for (const auto* folder : {"baseTemplates", "contentTemplates"}) {
        for (const std::string& file : filesBelow(folder)) {
            expectTargets(file.substr(0, 2), content(std::string("site/") + folder + "/" + file),
                          " in " + file);
        }
    }
}

// ---- Hits ----

std::string daysAgo(int days) {
    const auto now = std::chrono::system_clock::now() - std::chrono::hours(24) * days;
    const std::time_t time = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&time, &local);
    return date8({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday});
}

TEST_P(DemoTest, HasBeenReadForThirtyDays) {
    const Texts days = column("select distinct yyyymmdd from TORVEX_LOGGING where nodeId = 'bg.en'");
    EXPECT_EQ(days.size(), 30U);
    // Midnight may have passed since.
    EXPECT_TRUE(*days.rbegin() == daysAgo(1) || *days.rbegin() == daysAgo(2)) << *days.rbegin();
    EXPECT_TRUE(*days.begin() == daysAgo(30) || *days.begin() == daysAgo(31)) << *days.begin();
    EXPECT_THAT(column("select nodeId from TORVEX_LOGGING where uniqueHits > hits or uniqueHits < 1 or "
                       "yyyymmdd <> yyyy || mm || dd"),
                IsEmpty());
    for (const auto* site : {"bg", "ri"}) {
        for (const auto* lang : {"en", "de"}) {
            EXPECT_THAT(column(fmt::format(
                            "select distinct nodeId from TORVEX_LOGGING where site = '{}' and lang = '{}'",
                            site, lang)),
                        SizeIs(testing::Ge(8U)));
        }
    }
}

TEST_P(DemoTest, TheGardenIsReadMostAtWeekends) {
    std::map<bool, std::pair<double, int>> sums;
    for (const auto& row :
         rows("select yyyymmdd, sum(hits) as hits from TORVEX_LOGGING where site = 'bg' group by yyyymmdd")) {
        const std::string day = cell(row, "yyyymmdd");
        const std::chrono::year_month_day date(
            std::chrono::year(std::stoi(day.substr(0, 4))),
            std::chrono::month(static_cast<unsigned>(std::stoi(day.substr(4, 2)))),
            std::chrono::day(static_cast<unsigned>(std::stoi(day.substr(6)))));
        const unsigned weekday = std::chrono::weekday(std::chrono::sys_days(date)).iso_encoding();
        auto& [hits, days] = sums[weekday > 5];
        hits += row.at("hits").to_number<double>();
        ++days;
    }
    EXPECT_GT(sums[true].first / sums[true].second, 1.3 * sums[false].first / sums[false].second);
}

TEST_P(DemoTest, StatisticsShowThirtyDays) {
    const std::string report =
        output({"call", "--install", site(), "--login", "sa", "cManager.statistics", "pageIdent=1",
                "fromDay=", "fromMonth=", "fromYear=", "toDay=", "toMonth=", "toYear=", "statType=1"});
    const std::regex day(R"(class="(day|weekend)\b)");
    EXPECT_EQ(std::distance(std::sregex_iterator(report.begin(), report.end(), day), std::sregex_iterator()),
              30)
        << report;
}

// ---- Served ----

class ServedDemoTest : public DemoTest {
  protected:
    void SetUp() override {
        DemoTest::SetUp();
        server_ = serve();
        port_ = portOf(*server_);
    }
    void TearDown() override {
        if (!server_) return;
        server_->signal(SIGTERM);
        EXPECT_EQ(server_->wait(std::chrono::seconds(15)).code, 0);
    }

    RawReply get(const std::string& target, const std::string& cookie = "") {
        return RawHttpClient(port_).get(target, cookie.empty() ? "" : "Cookie: " + cookie + "\r\n");
    }
    /// The cookie of a visitor who has logged in on a page with a login form.
    std::string logIn(const std::string& username, int loginPage = 44) {
        const std::string form =
            fmt::format("torvex_pageId={}&torvex_loginTarget=group&torvex_username={}&torvex_password={}",
                        loginPage, username, passwordOf(username));
        const RawReply answer = RawHttpClient(port_).ask(
            "POST /tvxLogin.asp HTTP/1.1\r\nHost: 127.0.0.1\r\nSec-Fetch-Site: same-origin\r\n"
            "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
            std::to_string(form.size()) + "\r\n\r\n" + form);
        EXPECT_EQ(answer.status, 302) << username;
        return answer.sessionCookie();
    }

  private:
    std::unique_ptr<RunningProgram> server_;
    std::uint16_t port_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, ServedDemoTest, bothEngines(), engineName);

/// The addresses on this server that a page leads to, files that open in a window of their own included.
Texts targetsOn(const std::string& html) {
    Texts targets = found(html, R"re((?:href|src)="(/[^"#]*)")re");
    const std::regex popup(R"re(top\.popup\('(\w\w)','([^']*)'\))re");
    for (std::sregex_iterator at(html.begin(), html.end(), popup), end; at != end; ++at) {
        targets.insert("/documents/" + (*at)[1].str() + "/" + (*at)[2].str());
    }
    return targets;
}

TEST_P(ServedDemoTest, EveryLinkOfEveryPageResolves) {
    const std::string member = logIn("rowan");
    std::map<std::string, std::string> sources;
    for (const auto& row :
         rows("select pageId from TORVEX_PAGES_LIVE where type <> 'F' and online = 1 and nodeId not like "
              "'%.99.%' and onlineFrom < '20270101' and (onlineTo = '' or onlineTo > '20260101')")) {
        const std::string page = "/tvx.asp?pageId=" + cell(row, "pageid");
        const RawReply reply = get(page, member);
        if (reply.status == 302) continue;  // another group's
        EXPECT_EQ(reply.status, 200) << page;
        EXPECT_THAT(reply.body, Not(HasSubstr("=\"page(")));
        EXPECT_THAT(reply.body, Not(HasSubstr("=\"file(")));
        for (const auto& target : targetsOn(reply.body)) sources.emplace(target, page);
    }
    EXPECT_THAT(sources, SizeIs(testing::Ge(80U)));
    for (const auto& [target, source] : sources) {
        const RawReply reply = get(text::replaceAll(target, "&amp;", "&"), member);
        EXPECT_TRUE(reply.status == 200 || reply.status == 302)
            << reply.status << " " << target << " on " << source;
    }
}

TEST_P(ServedDemoTest, FeedsShowInBothLanguages) {
    EXPECT_THAT(get("/tvx.asp?pageId=46").body, HasSubstr("Lift, then push."));
    EXPECT_THAT(get("/tvx.asp?pageId=316").body, HasSubstr("Erst anheben, dann drücken."));
    const std::string english = get("/tvx.asp?pageId=240").body;
    EXPECT_THAT(english, HasSubstr("<caption>Seed list 2026</caption>"));
    EXPECT_THAT(english, HasSubstr("Scree above the tarn"));
    const std::string german = get("/tvx.asp?pageId=317").body;
    EXPECT_THAT(german, HasSubstr("<caption>Samenliste 2026</caption>"));
    EXPECT_THAT(german, HasSubstr("Schutthalde über dem Karsee"));
    EXPECT_THAT(german, Not(HasSubstr("Scree")));
}

TEST_P(ServedDemoTest, EachGroupReadsItsFoldersAndAStrangerNone) {
    const std::string letter = "/documents/bg/001/friends-letter.txt";
    const std::string rota = "/documents/bg/003/rota.csv";
    const std::string sketch = "/images/bg/001/new-pond.svg";
    for (const auto& guarded : {letter, rota}) {
        const RawReply refused = get(guarded);
        EXPECT_NE(refused.status, 200) << guarded;
        EXPECT_THAT(refused.body, Not(HasSubstr("swap")));
        EXPECT_THAT(refused.body, Not(HasSubstr("Bramble")));
    }
    EXPECT_EQ(get(sketch).field("Content-Type"), "image/gif");

    const std::string flora = logIn("flora");
    EXPECT_THAT(get(letter, flora).body, HasSubstr("plant swap"));
    EXPECT_THAT(get(sketch, flora).field("Content-Type"), HasSubstr("svg"));
    EXPECT_NE(get(rota, flora).status, 200);

    const std::string rowan = logIn("rowan");
    EXPECT_THAT(get(letter, rowan).body, HasSubstr("plant swap"));
    EXPECT_THAT(get(rota, rowan).body, HasSubstr("Bramble"));

    const std::string linde = logIn("linde", 144);
    EXPECT_THAT(get("/documents/bg/001/freundesbrief.txt", linde).body, HasSubstr("Pflanzenbörse"));
    EXPECT_NE(get(rota, linde).status, 200);
    EXPECT_EQ(get("/documents/bg/002/001/riddles.pdf").status, 200);
}

TEST_P(ServedDemoTest, GuardedPagesAskStrangersToLogIn) {
    for (const auto* page : {"41", "42", "141", "142"}) {
        const RawReply reply = get(std::string("/tvx.asp?pageId=") + page);
        EXPECT_EQ(reply.status, 302) << page;
        EXPECT_THAT(reply.field("Location"), HasSubstr(page[0] == '1' ? "pageId=144" : "pageId=44"));
    }
    const std::string rowan = logIn("rowan");
    EXPECT_THAT(get("/tvx.asp?pageId=42", rowan).body, HasSubstr("Volunteers’ board"));
    const std::string flora = logIn("flora");
    EXPECT_EQ(get("/tvx.asp?pageId=42", flora).status, 302);
}

// ---- Visitors ----

TEST_P(DemoTest, EveryVisitorGetsAPasswordOfTheirOwnThatIsShown) {
    const auto visitors = rows("select username, password from TORVEX_USERS");
    ASSERT_EQ(visitors.size(), 4U);
    Texts passwords;
    for (const auto& row : visitors) {
        EXPECT_THAT(cell(row, "password"), testing::StartsWith("strong:"));
        const std::string shown = passwordOf(cell(row, "username"));
        EXPECT_THAT(shown, SizeIs(19));
        passwords.insert(shown);
    }
    EXPECT_EQ(passwords.size(), 4U);
    EXPECT_THAT(said_, HasSubstr("Rowan Teller: Friends, Volunteers\n"));
    EXPECT_THAT(column("select distinct groupId from TORVEX_GROUPS_USERS"), SizeIs(3));
}

}  // namespace
}  // namespace torvex::test
