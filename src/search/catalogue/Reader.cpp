#include "search/catalogue/Reader.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fmt/format.h>

#include "platform/text/Text.h"
#include "search/catalogue/Abstract.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Order.h"
#include "search/catalogue/QueryText.h"
#include "search/catalogue/ShownTexts.h"
#include "search/catalogue/Terms.h"
#include "search/catalogue/Translation.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

/// Each failing attempt means that the catalogue was committed twice during a query.
constexpr int mostAttempts = 10;

void checkFormat(const Xapian::Database& database) {
    const int format = formatOf(database);
    if (format > currentFormat) throw UnavailableError("the catalogue is one of a newer version");
    if (format < currentFormat) throw UnavailableError("the catalogue is still to be made");
}

Xapian::Database openIn(const std::string& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) throw UnavailableError("there is no catalogue yet");
    Xapian::Database database(folder);
    checkFormat(database);
    return database;
}

std::string asFolder(std::string_view scope) {
    std::string folder = text::lower(scope);
    while (folder.starts_with('/')) folder.erase(0, 1);
    while (folder.ends_with('/')) folder.pop_back();
    return folder;
}

/// What lies in any of the scopes. None when that is everything.
std::optional<Xapian::Query> scopeFilter(const Xapian::Database& database, const std::vector<Scope>& scopes) {
    std::set<std::string> terms;
    std::vector<std::string> deep;
    for (const Scope& scope : scopes) {
        const std::string folder = asFolder(scope.path);
        const bool isDeep = scope.depth == Depth::Deep;
        if (isDeep) deep.push_back(folder);
        terms.insert(isDeep ? deepFolderTerm(folder) : folderTerm(folder));
    }
    const auto lieApart = [&] {
        return std::all_of(deep.begin(), deep.end(), [&](const std::string& one) {
            return std::count_if(deep.begin(), deep.end(), [&](const std::string& other) {
                       return one.empty() || other == one || other.starts_with(one + "/");
                   }) == 1;
        });
    };
    if (deep.size() == terms.size() && lieApart()) {
        Xapian::doccount within = 0;
        for (const std::string& term : terms) within += database.get_termfreq(term);
        if (within == database.get_doccount()) return std::nullopt;
    }
    return Xapian::Query(Xapian::Query::OP_OR, terms.begin(), terms.end());
}

std::string asTime(std::int64_t nanoseconds) {
    const std::time_t seconds = nanoseconds / 1'000'000'000;
    std::tm time{};
    ::localtime_r(&seconds, &time);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", time.tm_year + 1900, time.tm_mon + 1,
                       time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
}

Row rowOf(Entry entry, const ShownTexts& texts, const FoundWords& words) {
    Row row;
    row.path = entry.path;
    row.filename = fileNameOf(entry.path);
    row.size = entry.stamp.size;
    row.write = asTime(entry.stamp.modified);
    row.characterization = abstractOf(texts.of(entry), words);
    row.columns = std::move(entry.reading.columns);
    return row;
}

bool isKnown(const Xapian::Database& database, const std::string& word) {
    return database.term_exists(termOf(textField().prefix, word)) ||
           database.term_exists(termOf(anyColumnField().prefix, word));
}

}  // namespace

Reader::Reader(std::string_view installPath)
    : installPath_(installPath), folder_(databaseFolder(installPath)) {}

void Reader::read(const std::function<void(const Xapian::Database&)>& work) const {
    for (int attempt = 1;; ++attempt) {
        try {
            return work(openIn(folder_));
        } catch (const Xapian::DatabaseModifiedError& error) {
            if (attempt == mostAttempts) throw UnavailableError("the catalogue changes too quickly");
        } catch (const Xapian::DatabaseVersionError& error) {
            throw UnavailableError("the catalogue is one of another version: " + error.get_msg());
        } catch (const Xapian::DatabaseError& error) {
            // Opened just while it was swapped for its compact self.
            if (attempt > 1) throw UnavailableError("the catalogue can't be read: " + error.get_msg());
        } catch (const Xapian::Error& error) {
            throw UnavailableError("the catalogue can't be read: " + error.get_msg());
        }
    }
}

void Reader::check() const {
    read([](const Xapian::Database&) {});
}

Found Reader::find(const Query& query, std::size_t most) const {
    const QueryNode tree = parseQuery(query.text);
    const Order order(query.sortBy);
    Found found;
    read([&](const Xapian::Database& database) {
        found = {};
        if (!query.scopes.empty()) {
            Translation translation(database, query.language);
            Xapian::Query asked = translation.of(tree);
            keepWords(query, translation.foundWords());
            if (const auto scopes = scopeFilter(database, query.scopes)) {
                asked = Xapian::Query(Xapian::Query::OP_FILTER, asked, *scopes);
            }
            Xapian::Enquire enquire(database);
            enquire.set_query(asked);
            found = order.run(database, enquire, most);
        }
        found.database = identityOf(database);
        found.last = database.get_lastdocid();
    });
    return found;
}

void Reader::keepWords(const Query& query, const FoundWords& words) const {
    const std::scoped_lock lock(mutex_);
    keptText_ = query.text;
    keptLanguage_ = query.language;
    keptWords_ = words;
}

FoundWords Reader::wordsOf(const Query& query, const Xapian::Database& database) const {
    {
        const std::scoped_lock lock(mutex_);
        if (keptWords_ && keptText_ == query.text && keptLanguage_ == query.language) return *keptWords_;
    }
    Translation translation(database, query.language);
    translation.of(parseQuery(query.text));
    keepWords(query, translation.foundWords());
    return translation.foundWords();
}

std::vector<Row> Reader::rows(const Query& query, const std::string& databaseName,
                              const std::vector<Hit>& hits) const {
    const ShownTexts texts(installPath_);
    std::vector<Row> rows;
    read([&](const Xapian::Database& database) {
        rows.clear();
        const FoundWords words = wordsOf(query, database);
        const bool isSame = identityOf(database) == databaseName;
        for (const Hit& hit : hits) {
            Row row;
            try {
                if (isSame) {
                    const Xapian::Document document = database.get_document(hit.id);
                    row = rowOf(entryOf(document), texts, words);
                }
            } catch (const Xapian::DocNotFoundError&) {
            }
            row.rank = hit.rank;
            rows.push_back(std::move(row));
        }
    });
    return rows;
}

std::vector<std::string> Reader::paths(const Query& /*query*/, const std::string& databaseName,
                                       const std::vector<Hit>& hits) const {
    std::vector<std::string> paths;
    read([&](const Xapian::Database& database) {
        paths.assign(hits.size(), std::string());
        if (identityOf(database) != databaseName) return;
        for (std::size_t i = 0; i < hits.size(); ++i) {
            try {
                paths[i] = database.get_document(hits[i].id).get_value(slot::path);
            } catch (const Xapian::DocNotFoundError&) {
            }
        }
    });
    return paths;
}

std::string Reader::corrected(std::string_view words, std::string_view /*language*/) const {
    constexpr std::size_t longest = 250;
    constexpr std::size_t mostWords = 10;
    const std::string_view asked = cut(words, longest);
    std::string result;
    read([&](const Xapian::Database& database) {
        result.clear();
        std::size_t copied = 0;
        std::size_t count = 0;
        for (WordReader reader(asked); reader.next();) {
            const Word& word = reader.word();
            if (word.isSign || isKnown(database, word.folded) || ++count > mostWords) continue;
            const std::string written = text::lower(asked.substr(word.begin, word.end - word.begin));
            const std::string better = database.get_spelling_suggestion(written);
            if (better.empty() || !isKnown(database, folded(better))) continue;
            result.append(asked.substr(copied, word.begin - copied)).append(better);
            copied = word.end;
        }
        if (copied > 0) result.append(asked.substr(copied));
    });
    return result;
}

}  // namespace torvex::catalogue
