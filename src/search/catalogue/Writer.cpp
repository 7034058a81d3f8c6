#include "search/catalogue/Writer.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <set>

#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Terms.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

namespace fs = std::filesystem;

/// What the library throws is none of the standard's errors.
template <typename Work>
auto translated(Work work) -> decltype(work()) try {
    return work();
} catch (const Xapian::DatabaseLockError& error) {
    throw BusyError("the catalogue is being written by another: " + error.get_msg());
} catch (const Xapian::DatabaseCorruptError& error) {
    throw DamagedError("the catalogue is damaged: " + error.get_msg());
} catch (const Xapian::DatabaseVersionError& error) {
    throw UnavailableError("the catalogue is one of another version: " + error.get_msg());
} catch (const Xapian::Error& error) {
    std::string reason = error.get_msg();
    if (error.get_error_string() != nullptr) reason.append(": ").append(error.get_error_string());
    throw UnavailableError("the catalogue can't be written: " + reason);
}

/// Room that entries take while they wait to be committed, beyond the text itself.
constexpr std::size_t bytesOfEntry = 2'000;

}  // namespace

Writer::Writer(const std::string& folder, std::size_t tellingEntries)
    : folder_(folder), tellingEntries_(tellingEntries) {
    translated([&] { open(folder); });
}

void Writer::open(const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw UnavailableError("the folder " + folder + " can't be made: " + error.message());
    // Left by a copy or a repair that was cut short: the library would only say that it can't open it.
    if (fs::exists(folder + "/iamglass", error) && !fs::exists(folder + "/postlist.glass", error)) {
        throw DamagedError("the catalogue is damaged: files of it are missing");
    }
    database_ = Xapian::WritableDatabase(folder, Xapian::DB_CREATE_OR_OPEN);
    const int format = formatOf(database_);
    if (format > currentFormat) throw UnavailableError("the catalogue is one of a newer version");
    if (format < currentFormat) {
        if (database_.get_doccount() > 0 || format > 0) {
            database_.close();
            database_ = Xapian::WritableDatabase(folder, Xapian::DB_CREATE_OR_OVERWRITE);
        }
        begin();
    }
    generation_ = database_.get_metadata(std::string(metadata::generation));
    frequent_ = FrequentWords::in(database_);
}

void Writer::begin() {
    database_.set_metadata(std::string(metadata::format), std::to_string(currentFormat));
    database_.set_metadata(std::string(metadata::generation), "1");
    database_.set_metadata(std::string(metadata::identity), database_.get_uuid());
    database_.commit();
}

void Writer::beginGeneration() {
    translated([&] {
        generation_ = text::fromNumber(text::toNumber(generation_) + 1);
        database_.set_metadata(std::string(metadata::generation), generation_);
        database_.commit();
    });
}

std::map<std::string, std::string> Writer::stamps() const {
    return translated([&] {
        std::map<std::string, std::string> stamps;
        auto stamp = database_.valuestream_begin(slot::stamp);
        for (auto path = database_.valuestream_begin(slot::path);
             path != database_.valuestream_end(slot::path); ++path) {
            if (stamp == database_.valuestream_end(slot::stamp)) break;
            stamp.skip_to(path.get_docid());
            stamps.emplace(*path, *stamp);
        }
        return stamps;
    });
}

std::string Writer::stampOf(std::string_view path) const {
    return translated([&] {
        const std::string term = pathTerm(path);
        const auto found = database_.postlist_begin(term);
        if (found == database_.postlist_end(term)) return std::string();
        return database_.get_document(*found).get_value(slot::stamp);
    });
}

std::vector<std::string> Writer::pathsBelow(std::string_view folder) const {
    return translated([&] {
        while (folder.ends_with('/')) folder.remove_suffix(1);
        const std::string term = deepFolderTerm(text::lower(folder));
        std::vector<std::string> paths;
        for (auto at = database_.postlist_begin(term); at != database_.postlist_end(term); ++at)
            paths.push_back(database_.get_document(*at).get_value(slot::path));
        return paths;
    });
}

/// Its folded words, those of its text and of the columns that every document may have.
std::set<std::string> Writer::wordsUnder(const std::string& pathTerm) const {
    std::set<std::string> words;
    const auto found = database_.postlist_begin(pathTerm);
    if (found == database_.postlist_end(pathTerm)) return words;
    const std::string columns = anyColumnField().prefix;
    const auto isCapital = [](const std::string& term) { return term[0] >= 'A' && term[0] <= 'Z'; };
    for (auto at = database_.termlist_begin(*found); at != database_.termlist_end(*found); ++at) {
        const std::string term = *at;
        if (!isCapital(term)) words.insert(term);
        if (term.starts_with(columns)) words.insert(term.substr(columns.size()));
    }
    return words;
}

/// What an entry was made of isn't kept, so what it no longer has is told by its folded words: a spelling with
/// accents may stay behind, but is suggested only while some entry has its word.
void Writer::renewSpellings(const std::string& pathTerm, const std::vector<std::string>& spellings) {
    std::set<std::string> gone = wordsUnder(pathTerm);
    for (const std::string& word : spellings) {
        if (gone.erase(folded(word)) == 0) database_.add_spelling(word);
    }
    for (const std::string& word : gone) database_.remove_spelling(word);
}

void Writer::put(const Entry& entry) {
    translated([&] {
        const std::string term = pathTerm(entry.path);
        renewSpellings(term, spellingsOf(entry));
        database_.replace_document(term, documentOf(entry, generation_, frequent_));
    });
    waiting_ += entry.reading.text.size() + bytesOfEntry;
}

void Writer::remove(std::string_view path) {
    translated([&] {
        const std::string term = pathTerm(path);
        renewSpellings(term, {});
        database_.delete_document(term);
    });
    waiting_ += bytesOfEntry;
}

std::string Writer::metadata(std::string_view key) const {
    return translated([&] { return database_.get_metadata(std::string(key)); });
}

void Writer::setMetadata(std::string_view key, std::string_view value) {
    translated([&] { database_.set_metadata(std::string(key), std::string(value)); });
}

void Writer::commit() {
    translated([&] {
        database_.commit();
        if (frequent_.areNone() && database_.get_doccount() >= tellingEntries_ &&
            !FrequentWords::areSettledIn(database_)) {
            chooseFrequentWords();
        }
    });
    waiting_ = 0;
}

void Writer::chooseFrequentWords() {
    frequent_ = FrequentWords::chosenFrom(database_);
    frequent_.storeIn(database_);
    database_.commit();
}

std::size_t Writer::count() const {
    return database_.get_doccount();
}

void Writer::compact() {
    const std::string compacted = folder_ + ".compact";
    std::error_code ignored;
    fs::remove_all(compacted, ignored);
    try {
        commit();
        database_.compact(compacted, Xapian::DBCOMPACT_NO_RENUMBER | Xapian::Compactor::FULL);
        ::renameat2(AT_FDCWD, compacted.c_str(), AT_FDCWD, folder_.c_str(), RENAME_EXCHANGE);
    } catch (const Xapian::Error&) {
        // It stays as large as it is.
    }
    database_.close();
    fs::remove_all(compacted, ignored);
}

void removeDamaged(const std::string& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    if (error) throw UnavailableError("the damaged catalogue can't be removed: " + error.message());
}

}  // namespace torvex::catalogue
