// Measures the site search beside SQLite's FTS5 on the same texts, which it makes from words with natural
// frequencies: search_speed PROGRAM [PAGES [DOCUMENTS [FOLDER]]]. What it makes in FOLDER stays there, and is taken
// again by the next run; its catalogue is made anew where data/search was removed.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "platform/Keys.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/text/Charset.h"
#include "search/ResultList.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Upkeep.h"
#include "search/extraction/TextWorkers.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// Of this thread: what others on the machine do has little to do with it.
double processorMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Words that nobody speaks, in forms as English has them; the n-th is n times rarer than the first.
class Language {
  public:
    explicit Language(std::size_t words) {
        std::mt19937_64 random(1);
        const std::string consonants = "bcdfghklmnprstvw";
        const std::string vowels = "aeiou";
        const char* const endings[] = {"", "s", "ed", "ing", "er", "ly"};
        std::map<std::string, int> known;
        while (words_.size() < words) {
            std::string stem;
            const std::size_t syllables = 1 + random() % 3;
            for (std::size_t n = 0; n < syllables; ++n) {
                stem += consonants[random() % consonants.size()];
                stem += vowels[random() % vowels.size()];
            }
            stem += consonants[random() % consonants.size()];
            for (const char* ending : endings) {
                if (random() % 3 == 0) known.emplace(stem + ending, 0);
            }
            for (auto& [word, isTaken] : known) {
                if (isTaken == 0) words_.push_back(word);
                isTaken = 1;
            }
            if (known.size() > 4096) known.clear();
        }
        std::shuffle(words_.begin(), words_.end(), random);
        double sum = 0;
        for (std::size_t n = 0; n < words_.size(); ++n)
            sums_.push_back(sum += 1.0 / static_cast<double>(n + 1));
    }

    const std::string& word(std::mt19937_64& random) const {
        const double at = std::uniform_real_distribution<double>(0, sums_.back())(random);
        const auto found = std::lower_bound(sums_.begin(), sums_.end(), at);
        return words_[static_cast<std::size_t>(found - sums_.begin())];
    }
    std::string text(std::mt19937_64& random, std::size_t words) const {
        std::string text;
        for (std::size_t n = 0; n < words; ++n) text.append(n == 0 ? "" : " ").append(word(random));
        return text;
    }

  private:
    std::vector<std::string> words_;
    std::vector<double> sums_;
};

struct Text {
    std::string title;
    std::string body;
};

class Store {
  public:
    explicit Store(const std::string& file) {
        const bool isThere = fs::exists(file);
        check(sqlite3_open(file.c_str(), &database_));
        run("pragma journal_mode = wal");
        run("pragma synchronous = normal");
        run("pragma cache_size = -65536");
        if (isThere) return;
        run("create virtual table plain using fts5(title, body, tokenize = 'unicode61 remove_diacritics 2')");
        run("create virtual table stems using fts5(title, body, tokenize = 'porter unicode61')");
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() { sqlite3_close(database_); }

    void run(const char* statement) { check(sqlite3_exec(database_, statement, nullptr, nullptr, nullptr)); }
    void add(const char* statement, const Text& text) {
        sqlite3_stmt* prepared = prepare(statement);
        bind(prepared, 1, text.title);
        bind(prepared, 2, text.body);
        sqlite3_step(prepared);
        sqlite3_finalize(prepared);
    }
    std::size_t firstPage(const std::string& table, const std::string& match) {
        const std::string statement = "select title, snippet(" + table + ", 1, '', '', '', 50) from " +
                                      table + " where " + table + " match ? order by bm25(" + table +
                                      ") limit 20";
        sqlite3_stmt* prepared = prepare(statement.c_str());
        bind(prepared, 1, match);
        std::size_t rows = 0;
        while (sqlite3_step(prepared) == SQLITE_ROW) ++rows;
        sqlite3_finalize(prepared);
        return rows;
    }

  private:
    static void check(int code) {
        if (code != SQLITE_OK) throw std::runtime_error("the store for comparison fails");
    }
    static void bind(sqlite3_stmt* statement, int place, const std::string& text) {
        sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    sqlite3_stmt* prepare(const char* statement) {
        sqlite3_stmt* prepared = nullptr;
        check(sqlite3_prepare_v2(database_, statement, -1, &prepared, nullptr));
        return prepared;
    }

    sqlite3* database_ = nullptr;
};

long residentKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) return std::atol(line.c_str() + 6);
    }
    return 0;
}

std::uint64_t bytesIn(const std::string& folder) {
    std::uint64_t bytes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) bytes += entry.file_size();
    }
    return bytes;
}

/// With the bytes of all texts; there once they are made.
std::string sizeFileIn(const std::string& folder) {
    return folder + "/texts.size";
}

class Bench {
  public:
    /// Without a folder, one is made for this run.
    Bench(std::string program, std::size_t pages, std::size_t documents, const std::string& folder)
        : folder_(folder.empty() ? fs::temp_directory_path().string() + "/torvex_search_speed" : folder),
          isKept_(!folder.empty()),
          program_(std::move(program)),
          pages_(pages),
          documents_(documents) {
        host_.application.set(applicationKey::installPath, folder_);
    }
    ~Bench() {
        if (!isKept_) fs::remove_all(folder_);
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    void run() {
        const std::string sizeFile = sizeFileIn(folder_);
        if (!fs::exists(sizeFile)) {
            make();
            std::ofstream(sizeFile) << textBytes_;
        }
        std::ifstream(sizeFile) >> textBytes_;
        if (!fs::exists(catalogue::databaseFolder(folder_))) index();
        guard();
        compare();
    }

  private:
    void make() {
        fs::create_directories(folder_ + "/wwwroot/documents/ab");
        fs::create_directories(folder_ + "/search/html/en/ab");
        std::mt19937_64 random(2);
        store_.run("begin");
        for (std::size_t n = 0; n < pages_ + documents_; ++n) {
            const bool isPage = n < pages_;
            const Text text{language_.text(random, 3 + random() % 5),
                            language_.text(random, isPage ? 100 + random() % 400 : 1000 + random() % 2000)};
            textBytes_ += text.title.size() + text.body.size();
            if (isPage) {
                const std::string file = fmt::format("{}/search/html/en/ab/{}.html", folder_, nodeOf(n));
                std::ofstream(file) << charset::toUtf16File(
                    "<HTML>\r\n<HEAD>\r\n<TITLE>" + text.title +
                    "</TITLE>\r\n<META NAME=\"MS.LOCALE\" CONTENT=\"EN\">\r\n</HEAD>\r\n<BODY>\r\n<p>" +
                    text.body + "</p>\r\n</BODY>\r\n</HTML>\r\n");
            } else {
                std::ofstream(fmt::format("{}/wwwroot/documents/ab/file{}.txt", folder_, n)) << text.body;
            }
            store_.add("insert into plain (title, body) values (?, ?)", text);
            store_.add("insert into stems (title, body) values (?, ?)", text);
        }
        store_.run("commit");
        store_.run("insert into plain (plain) values ('optimize')");
        store_.run("insert into stems (stems) values ('optimize')");
        fmt::print("{} pages, {} documents, {:.1f} MB of text\n", pages_, documents_,
                   static_cast<double>(textBytes_) / 1e6);
    }

    void index() {
        DiskFileSystem files({folder_});
        catalogue::TextWorkers extractor(program_);
        catalogue::Upkeep upkeep({catalogue::databaseFolder(folder_),
                                  {folder_, "documents"},
                                  files,
                                  extractor,
                                  host_.log,
                                  host_.clock,
                                  [this] { return pools_->open("sqlite:" + folder_ + "/data"); }});
        const long before = residentKilobytes();
        long most = before;
        const auto begin = Clock::now();
        upkeep.plan(upkeep.compare());
        for (bool isMore = true; isMore; most = std::max(most, residentKilobytes()))
            isMore = upkeep.step(std::chrono::milliseconds(100));
        const double seconds = milliseconds(Clock::now() - begin) / 1000;
        const std::uint64_t size = bytesIn(catalogue::databaseFolder(folder_));
        fmt::print(
            "indexing: {:.1f} s, {:.0f} files/s; memory {:+} MB; catalogue {:.1f} MB, {:.2f} times the "
            "text\n",
            seconds, static_cast<double>(pages_ + documents_) / seconds, (most - before) / 1024,
            static_cast<double>(size) / 1e6, static_cast<double>(size) / static_cast<double>(textBytes_));
    }

    static std::string nodeOf(std::size_t page) {
        return fmt::format("ab.en.{:02}.{:02}.{:02}", page / 10'000 + 10, page / 100 % 100, page % 100);
    }

    /// Every second page is for members alone.
    void guard() {
        host_.application.set(applicationKey::isExtranet, true);
        host_.application.set(applicationKey::documentSecurity, true);
        host_.application.set(applicationKey::documentsName, "documents/");
        host_.application.set(applicationKey::documentsPath, folder_ + "/wwwroot/documents/");
        auto connection = pools_->open("sqlite:" + folder_ + "/data");
        auto found = connection->query("select pageId from TORVEX_PAGES_LIVE where pageId = 1000");
        if (found.next()) return;
        db::Transaction transaction(*connection);
        for (std::size_t n = 0; n < pages_; ++n) {
            const double pageId = static_cast<double>(1'000 + n);
            for (const char* table : {"TORVEX_PAGES_DESIGN", "TORVEX_PAGES_LIVE"}) {
                const bool isLive = std::string_view(table).ends_with("LIVE");
                connection->execute(fmt::format("insert into {} (pageId, nodeId, type, navigation, title{}) "
                                                "values (?, ?, 'P', 'A', 'page'{})",
                                                table, isLive ? ", online" : "", isLive ? ", 1" : ""),
                                    {pageId, std::string_view(nodeOf(n))});
            }
            connection->execute("insert into TORVEX_PAGES_GROUPS_LIVE (pageId, groupId) values (?, ?)",
                                {pageId, n % 2 == 0 ? 1 : 5});
        }
        connection->execute(
            "insert into TORVEX_FOLDERS_GROUPS (fld_site, fld_id, fld_type, groupId) "
            "values ('ab', '', 'doc', 1)");
        transaction.commit();
    }

    struct Asked {
        std::string ours;
        std::string theirs;
        std::string table = "plain";
    };

    /// As the search page composes it.
    static std::string composed(char sign, const std::string& expression) {
        return fmt::format("(({0}all {1}) OR ({0}filename {1}))", sign, expression);
    }
    static std::string joined(const std::vector<std::string>& words, const std::string& with) {
        std::string all;
        for (const std::string& word : words) all.append(all.empty() ? "" : with).append(word);
        return all;
    }

    std::vector<std::string> words(std::size_t count) {
        std::vector<std::string> words;
        for (std::size_t n = 0; n < count; ++n) words.push_back(language_.word(random_));
        return words;
    }

    void compare() {
        const auto all = [](const std::vector<std::string>& words) {
            return Asked{composed('@', joined(words, " AND ")), joined(words, " AND ")};
        };
        const auto some = [](const std::vector<std::string>& words) {
            return Asked{composed('@', joined(words, " OR ")), joined(words, " OR ")};
        };
        measure("one word", [&] { return all(words(1)); });
        measure("two words", [&] { return all(words(2)); });
        measure("five words", [&] { return all(words(5)); });
        measure("some of two words", [&] { return some(words(2)); });
        measure("some of five words", [&] { return some(words(5)); });
        measure("phrase", [&] {
            const std::string phrase = '"' + joined(words(2), " ") + '"';
            return Asked{composed('@', phrase), phrase};
        });
        measure("prefix", [&] {
            std::string prefix;
            do prefix = words(1).front();
            while (prefix.size() < 3);
            prefix.resize(3);
            return Asked{composed('@', prefix + "*"), prefix + "*"};
        });
        measure("stemming", [&] {
            const std::string word = words(1).front();
            return Asked{composed('$', word), word, "stems"};
        });
    }

    static catalogue::Query queryOf(const std::string& text) {
        catalogue::Query query;
        query.text = text;
        query.language = "en";
        query.columns = {"doctitle", "dockeywords"};
        query.sortBy = "rank[d],doctitle";
        query.scopes = {{"\\root\\search\\html\\", catalogue::Depth::Deep},
                        {"\\root\\wwwroot\\documents", catalogue::Depth::Deep}};
        return query;
    }

    std::size_t ask(const std::string& text) {
        const auto open = catalogue::open(host_.context(), "torvex", "\\root\\");
        const auto results = open->find(queryOf(text));
        std::size_t rows = 0;
        while (rows < 20 && results->has(rows)) results->row(rows++);
        return rows;
    }

    /// What this visitor may see of it.
    std::size_t askWithRights(const std::string& text) {
        const auto connection = pools_->open("sqlite:" + folder_ + "/data");
        const auto open = catalogue::open(host_.context(), "torvex", "\\root\\");
        const auto results = std::make_shared<KeptResults>();
        results->results = open->find(queryOf(text));
        SearchRun run;
        run.search.rootPath = "\\root\\";
        run.search.maxResults = 100;
        run.search.resultsPerPage = 20;
        run.search.security = {.forPages = true, .forDocuments = true};
        run.running = {std::make_shared<KeptQuery>(), results};
        const ResultList list = listedResults(host_.context(), *connection, run);
        for (const ShownResult& shown : list.shown) results->results->row(shown.row);
        return list.shown.size();
    }

    void measure(const char* name, const std::function<Asked()>& make) {
        constexpr int queries = 300;
        Times ours;
        Times guarded;
        Times theirs;
        std::size_t seen = 0;
        for (int n = -20; n < queries; ++n) {
            const Asked asked = make();
            const auto timed = [&](Times& times, const auto& work) {
                const auto begin = Clock::now();
                const double processor = processorMilliseconds();
                work();
                if (n < 0) return;
                times.processor.push_back(processorMilliseconds() - processor);
                times.wall.push_back(milliseconds(Clock::now() - begin));
            };
            timed(ours, [&] { ask(asked.ours); });
            timed(guarded, [&] { seen += askWithRights(asked.ours); });
            timed(theirs, [&] { store_.firstPage(asked.table, asked.theirs); });
        }
        fmt::print("{:18} {}\n{:>18} {}\n{:>18} {}\n", name, ours.summary(), "with rights", guarded.summary(),
                   "fts5", theirs.summary());
        if (seen == 0) throw std::runtime_error("this visitor sees nothing");
    }

    struct Times {
        static double at(std::vector<double>& times, double part) {
            std::sort(times.begin(), times.end());
            return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
        }
        std::string summary() {
            return fmt::format("p50 {:6.2f} p99 {:6.2f} ms (processor {:6.2f} {:6.2f})", at(wall, 0.5),
                               at(wall, 0.99), at(processor, 0.5), at(processor, 0.99));
        }

        std::vector<double> wall;
        std::vector<double> processor;
    };

    const std::string folder_;
    const bool isKept_;
    const std::string program_;
    const std::size_t pages_;
    const std::size_t documents_;
    const Language language_{60'000};
    std::mt19937_64 random_{3};
    test::TestHost host_;
    /// An installation with nothing in it, for its queue; or that of an earlier run, filled.
    struct Made {
        Made(const std::string& folder, const std::string& program, bool isKept) {
            if (isKept && fs::exists(sizeFileIn(folder))) return;
            // A folder that somebody has named is never emptied.
            if (!isKept) fs::remove_all(folder);
            const std::string command =
                program + " init " + folder + " --empty --admin-password word > /dev/null";
            if (std::system(command.c_str()) != 0) throw std::runtime_error("no installation can be made");
        }
    } made_{folder_, program_, isKept_};
    Store store_{folder_ + "/texts.db"};
    std::unique_ptr<db::Database> pools_ = db::makeDatabase();
    std::uint64_t textBytes_ = 0;
};

}  // namespace
}  // namespace torvex

int main(int count, char** arguments) {
    if (count < 2) {
        fmt::print("usage: {} PROGRAM [PAGES [DOCUMENTS [FOLDER]]]\n", arguments[0]);
        return 2;
    }
    // Each line as it is known: the whole takes a while.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const auto number = [&](int place, std::size_t otherwise) {
        return count > place ? static_cast<std::size_t>(std::atoll(arguments[place])) : otherwise;
    };
    torvex::Bench(arguments[1], number(2, 100'000), number(3, 5'000), count > 4 ? arguments[4] : "").run();
    return 0;
}
