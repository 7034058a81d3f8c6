#include <chrono>
#include <csignal>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <thread>

#include "cli/ProgramFixture.h"
#include "platform/db/Database.h"
#include "platform/text/Charset.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// A program that publishes is killed at any moment, and what it leaves on the embedded store is looked at.
/// The pages are of three kinds, by their numbers: those that have been live in version 1 and are approved in
/// version 2, new ones, and those that are to be removed with a page below them.
class PublishingSurvivesKillTest : public ProgramTest {
  protected:
    static constexpr int pages = 36;
    static constexpr int bodies = 5;
    static constexpr int groups = 3;
    static constexpr int metadata = 6;

    enum class Kind { Changed, New, Removed };
    static Kind kindOf(int page) { return static_cast<Kind>(page % 3); }
    static int numberOf(int page) { return 1000 + page; }
    static int childOf(int page) { return 2000 + page; }
    static std::string nodeOf(int page) { return fmt::format("aa.en.{:02}", page + 1); }

    void SetUp() override {
        output({"init", site(), "--empty", "--admin-password", "word"});
        fs::create_directories(site() + "/contentTemplates/aa/en");
        std::ofstream(site() + "/contentTemplates/aa/en/page.html")
            << "<!--!torvex_content_start!--><!--!torvex_body_1!--> <!--!torvex_body_2!--> "
               "<!--!torvex_body_3!--> <!--!torvex_body_4!--> "
               "<!--!torvex_body_5!--><!--!torvex_content_end!-->";
        const Store store(*this);
        store.run("insert into TORVEX_SITES (site, name) values ('aa', 'Site')");
        store.run("insert into TORVEX_LANGUAGES (lang, name) values ('en', 'Language')");
        store.run(
            "insert into TORVEX_TEMPLATES (tpl_id, tpl_site, tpl_lang, tpl_filename) "
            "values (5, 'aa', 'en', 'page.html')");
    }

    /// The database, open for as long as the object lives: never while the program runs.
    class Store {
      public:
        explicit Store(const PublishingSurvivesKillTest& test)
            : connection_(database_->open("sqlite:" + test.site() + "/data")) {}
        void run(const std::string& statement) const { connection_->execute(statement); }
        db::Connection& connection() const { return *connection_; }
        /// The first cell of all rows, joined by ",".
        std::string list(const std::string& statement) const {
            std::string joined;
            auto rows = connection_->query(statement);
            while (rows.next()) {
                joined += (joined.empty() ? "" : ",") + rows.value(std::size_t{0}).toText();
            }
            return joined;
        }

      private:
        std::unique_ptr<db::Database> database_ = db::makeDatabase();
        db::Lease connection_;
    };

    void prepare() {
        const Store store(*this);
        db::Transaction transaction(store.connection());
        for (const auto* table :
             {"PAGES_DESIGN", "PAGES_LIVE", "BODIES_DESIGN", "BODIES_LIVE", "PAGES_GROUPS_DESIGN",
              "PAGES_GROUPS_LIVE", "PAGES_METADATA_DESIGN", "PAGES_METADATA_LIVE", "LOGGING"}) {
            store.run(std::string("delete from TORVEX_") + table);
        }
        addPage(store, "DESIGN", 1, "aa.en", 1, "'P', 0, 0");
        addPage(store, "LIVE", 1, "aa.en", 1, "");
        for (int page = 0; page < pages; ++page) prepare(store, page);
        transaction.commit();
        fs::remove_all(site() + "/search/html/en");
    }

    void prepare(const Store& store, int page) {
        const int number = numberOf(page);
        switch (kindOf(page)) {
            case Kind::Changed:
                addPage(store, "DESIGN", number, nodeOf(page), 2, "'M', 1, 0");
                addPage(store, "LIVE", number, nodeOf(page), 1, "");
                break;
            case Kind::New:
                addPage(store, "DESIGN", number, nodeOf(page), 2, "'M', 1, 0");
                break;
            case Kind::Removed:
                addPage(store, "DESIGN", number, nodeOf(page), 1, "'M', 1, 1");
                addPage(store, "LIVE", number, nodeOf(page), 1, "");
                addPage(store, "DESIGN", childOf(page), nodeOf(page) + ".01", 1, "'P', 0, 0");
                addPage(store, "LIVE", childOf(page), nodeOf(page) + ".01", 1, "");
                store.run(fmt::format(
                    "insert into TORVEX_LOGGING (nodeId, yyyymmdd, hits) values ('{}.01', '20260101', 1)",
                    nodeOf(page)));
                break;
        }
    }

    static void addPage(const Store& store, const std::string& twin, int number, const std::string& node,
                        int version, const std::string& statuses) {
        store.run(fmt::format(
            "insert into TORVEX_PAGES_{} (pageId, nodeId, site, lang, parent, type, title, "
            "template{}) values ({}, '{}', 'aa', 'en', '{}', 'P', 'version {}', 5{})",
            twin, statuses.empty() ? "" : ", editStatus, approveStatus, deleteStatus", number, node,
            node.substr(0, node.size() - 3), version, statuses.empty() ? "" : ", " + statuses));
        for (int i = 1; i <= bodies; ++i) {
            store.connection().execute(
                "insert into TORVEX_BODIES_" + twin + " (pageId, bodyId, bodyText) values (?, ?, ?)",
                {number, i, bodyText(version)});
        }
        for (int i = 0; i < groups; ++i) {
            store.run(fmt::format("insert into TORVEX_PAGES_GROUPS_{} values ({}, {})", twin, number,
                                  version * 10 + i));
        }
        for (int i = 1; i <= metadata; ++i) {
            store.run(fmt::format("insert into TORVEX_PAGES_METADATA_{} values ({}, {}, 0, 'version {}')",
                                  twin, number, i, version));
        }
    }

    /// Long enough that a page's change is more than one page of the database.
    static std::string bodyText(int version) {
        std::string text;
        for (int i = 0; i < 150; ++i) text += fmt::format("<p>version {} of the text</p>\n", version);
        return text + "end";
    }

    static std::string requests(bool asBranch) {
        std::string lines = R"({"login":"sa"})"
                            "\n";
        const auto* call = R"({{"calls":[{{"on":"cManager","do":"{}","with":{{"pageIdent":"{}"}}}}]}})"
                           "\n";
        if (asBranch) return lines + fmt::format(fmt::runtime(call), "publishPageCascading", "aa.en");
        for (int page = 0; page < pages; ++page) {
            lines += fmt::format(fmt::runtime(call), "publishPage", numberOf(page));
        }
        return lines;
    }

    /// Whether it was killed; otherwise it had ended before.
    bool killAfter(std::chrono::microseconds delay, const std::string& input) {
        RunningProgram program(folder(), {"call", "--install", site(), "--batch"}, input);
        std::this_thread::sleep_for(delay);
        program.signal(SIGKILL);
        return program.wait().code == -1;
    }

    std::chrono::microseconds timeOf(const std::string& input) {
        const auto begin = std::chrono::steady_clock::now();
        const ProgramResult result = run({"call", "--install", site(), "--batch"}, input);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_THAT(result.out, Not(HasSubstr("-99")));
        EXPECT_THAT(result.out, Not(HasSubstr("error")));
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                     begin);
    }

    // ---- What is left ----

    /// Everything that a twin holds of a page, in one text.
    static std::string held(const Store& store, const std::string& twin, int number) {
        const std::string of = fmt::format("{} where pageId = {}", twin, number);
        const std::string ofMetadata = fmt::format("{} where metaData_pageId = {}", twin, number);
        return fmt::format("{}|{}|{}|{}", store.list("select title from TORVEX_PAGES_" + of),
                           store.list("select bodyText from TORVEX_BODIES_" + of + " order by bodyId"),
                           store.list("select groupId from TORVEX_PAGES_GROUPS_" + of + " order by groupId"),
                           store.list("select metaData_value from TORVEX_PAGES_METADATA_" + ofMetadata));
    }

    static std::string whole(int version) {
        std::string texts;
        std::string numbers;
        std::string values;
        for (int i = 0; i < bodies; ++i) texts += (i == 0 ? "" : ",") + bodyText(version);
        for (int i = 0; i < groups; ++i) numbers += fmt::format("{}{}", i == 0 ? "" : ",", version * 10 + i);
        for (int i = 0; i < metadata; ++i) values += fmt::format("{}version {}", i == 0 ? "" : ",", version);
        return fmt::format("version {}|{}|{}|{}", version, texts, numbers, values);
    }
    static constexpr const char* nothing = "|||";

    /// Whether the page has become what it was to be; that it has done so as a whole, or not at all.
    bool isDone(const Store& store, int page) {
        SCOPED_TRACE(nodeOf(page));
        const int number = numberOf(page);
        const std::string status = store.list(fmt::format(
            "select editStatus || approveStatus || deleteStatus from TORVEX_PAGES_DESIGN where pageId = {}",
            number));
        if (kindOf(page) == Kind::Removed) return isRemoved(store, page, status);
        const bool done = status == "P00";
        if (!done) {
            EXPECT_EQ(status, "M10");
        }
        const std::string before = kindOf(page) == Kind::New ? nothing : whole(1);
        EXPECT_EQ(held(store, "LIVE", number), done ? whole(2) : before);
        EXPECT_EQ(held(store, "DESIGN", number), whole(2));
        return done;
    }

    bool isRemoved(const Store& store, int page, const std::string& status) {
        const bool done = status.empty();
        if (!done) {
            EXPECT_EQ(status, "M11");
        }
        for (const int number : {numberOf(page), childOf(page)}) {
            for (const auto* twin : {"DESIGN", "LIVE"}) {
                EXPECT_EQ(held(store, twin, number), done ? nothing : whole(1)) << twin;
            }
        }
        // The hits are in a file of their own, which commits behind the content: they may be left of a page
        // that is gone, but never are they lost of one that stays.
        const std::string hits =
            store.list(fmt::format("select hits from TORVEX_LOGGING where nodeId = '{}.01'", nodeOf(page)));
        if (!done) {
            EXPECT_EQ(hits, "1");
        }
        return done;
    }

    void expectWholeSnapshots() {
        const std::string root = site() + "/search/html";
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            if (entry.path().extension() != ".html") continue;
            SCOPED_TRACE(entry.path());
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            const std::string text = charset::decodeFile(bytes, true);
            EXPECT_TRUE(text.starts_with("<HTML>\r\n"));
            EXPECT_TRUE(text.ends_with("</HTML>\r\n"));
            const bool isNew = text.find("<TITLE>version 2<") != std::string::npos;
            EXPECT_EQ(text.find(isNew ? "version 1" : "version 2"), std::string::npos);
        }
    }

    void expectFinePieces(bool asBranch) {
        const Store store(*this);
        EXPECT_EQ(store.list("pragma integrity_check"), "ok");
        int done = 0;
        for (int page = 0; page < pages; ++page) done += isDone(store, page) ? 1 : 0;
        if (asBranch) {
            EXPECT_THAT(done, AnyOf(0, pages));
        }
        done_ += done;
        expectWholeSnapshots();
    }

    int done_ = 0;  ///< pages that were published or removed before a kill
};

TEST_F(PublishingSurvivesKillTest, EveryPageIsPublishedAsAWholeOrNotAtAll) {
    constexpr int kills = 50;
    std::chrono::microseconds needed[2];
    for (const bool asBranch : {false, true}) {
        prepare();
        needed[asBranch ? 1 : 0] = timeOf(requests(asBranch));
        expectFinePieces(asBranch);
    }
    EXPECT_EQ(done_, 2 * pages);

    done_ = 0;
    std::random_device source;
    const unsigned seed = source();
    std::mt19937 random(seed);
    int killed = 0;
    for (int round = 0; killed < kills && round < 3 * kills; ++round) {
        SCOPED_TRACE(fmt::format("seed {}, round {}", seed, round));
        const bool asBranch = round % 4 == 3;
        prepare();
        std::uniform_int_distribution<long> delay(0, needed[asBranch ? 1 : 0].count());
        if (killAfter(std::chrono::microseconds(delay(random)), requests(asBranch))) ++killed;
        expectFinePieces(asBranch);
        if (HasFailure()) return;
    }
    EXPECT_GE(killed, kills);
    // Otherwise the kills came too early to show anything.
    EXPECT_GT(done_, kills);

    output({"snapshot", "--install", site(), "--all"});
    for (const auto& entry : fs::recursive_directory_iterator(site() + "/search")) {
        EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path();
    }
}

}  // namespace
}  // namespace torvex::test
