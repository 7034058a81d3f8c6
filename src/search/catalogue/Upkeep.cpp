#include "search/catalogue/Upkeep.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "platform/Deadline.h"
#include "platform/OperatorLog.h"
#include "platform/files/FileSystem.h"
#include "platform/text/LogText.h"
#include "platform/text/Text.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Queue.h"
#include "search/catalogue/Terms.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

/// So much text waits to be committed: more is quicker and takes more memory.
constexpr std::size_t mostWaiting = 6'000'000;
/// From so many on it is worth while to make the catalogue compact.
constexpr std::size_t manyEntries = 500;
constexpr std::size_t queuedTogether = 200;
/// Two who queue at once may be seen in another order than that of their numbers.
constexpr std::int64_t lookedBack = 50;
constexpr std::uint64_t longestFile = 64u << 20;

/// By the first ones it is settled which words are frequent: they come from all folders, not from the first
/// site and language.
void sampleFirst(std::vector<std::string>& paths) {
    constexpr std::size_t sample = 3'000;
    const std::size_t each = std::max<std::size_t>(paths.size() / sample, 1);
    std::vector<std::string> sorted;
    sorted.reserve(paths.size());
    for (std::size_t n = 0; n < paths.size(); n += each) sorted.push_back(std::move(paths[n]));
    for (std::size_t n = 0; n < paths.size(); ++n) {
        if (n % each != 0) sorted.push_back(std::move(paths[n]));
    }
    paths = std::move(sorted);
}

}  // namespace

Writer& Upkeep::writer() {
    if (!writer_) writer_.emplace(parts_.folder);
    return *writer_;
}

Differences Upkeep::compare() {
    Writer& open = writer();
    std::map<std::string, std::string> known = open.stamps();
    Differences differences;
    parts_.holdings.visit([&](const std::string& path, const FileStamp& stamp) {
        const auto entry = known.find(path);
        const bool isSame = entry != known.end() && entry->second == stampValue(stamp, open.generation());
        if (!isSame) differences.changed.push_back(path);
        if (entry != known.end()) known.erase(entry);
    });
    for (const auto& [path, stamp] : known) differences.gone.push_back(path);
    return differences;
}

void Upkeep::beginAnew() {
    writer().beginGeneration();
}

void Upkeep::plan(Differences differences) {
    planned_.clear();
    planned_.insert(planned_.end(), differences.gone.begin(), differences.gone.end());
    const std::size_t added = differences.changed.size();
    isFilling_ = added >= manyEntries && 2 * added >= writer().count();
    if (isFilling_) sampleFirst(differences.changed);
    planned_.insert(planned_.end(), differences.changed.begin(), differences.changed.end());
}

bool Upkeep::step(std::chrono::milliseconds most) {
    const Deadline until = Deadline::in(most);
    bool isMore = workOffQueue();
    while (!planned_.empty() && !until.hasPassed()) {
        renew(planned_.front());
        planned_.pop_front();
        if (writer().waiting() > mostWaiting) writer().commit();
    }
    isMore = isMore || !planned_.empty();
    if (!isMore) finish();
    return isMore;
}

void Upkeep::finish() {
    if (std::exchange(isFilling_, false)) {
        writer().compact();
        writer_.reset();
    }
    rest();
}

void Upkeep::rest() {
    if (!writer_) return;
    if (writer_->waiting() > 0) writer_->commit();
    writer_.reset();
}

/// True when there may be more.
bool Upkeep::workOffQueue() {
    const db::Lease connection = parts_.openDatabase();
    if (!position_) {
        const std::string stored = writer().metadata(metadata::queue);
        // A new one has nothing, and everything is compared with it.
        position_ =
            stored.empty() ? lastQueued(*connection) : static_cast<std::int64_t>(text::toNumber(stored));
    }
    std::vector<QueuedFile> queued =
        queuedBehind(*connection, *position_ - lookedBack, queuedTogether + lookedBack);
    const bool isMore = queued.size() == queuedTogether + lookedBack;
    std::erase_if(queued, [this](const QueuedFile& file) { return seen_.contains(file.number); });
    if (queued.empty()) return false;
    for (const QueuedFile& file : queued) {
        renew(file.path);
        position_ = std::max(*position_, file.number);
    }
    writer().setMetadata(metadata::queue, std::to_string(*position_));
    writer().commit();
    for (const QueuedFile& file : queued) seen_.insert(file.number);
    seen_.erase(seen_.begin(), seen_.lower_bound(*position_ - lookedBack));
    return isMore;
}

void Upkeep::renew(const std::string& path) {
    if (path.ends_with('/')) {
        renewFolder(path);
    } else {
        renewFile(path);
    }
}

void Upkeep::renewFolder(const std::string& path) {
    for (const std::string& held : writer().pathsBelow(path)) {
        if (!parts_.holdings.stampOf(held)) writer().remove(held);
    }
}

void Upkeep::renewFile(const std::string& path) {
    const auto stamp = parts_.holdings.stampOf(path);
    const std::string known = writer().stampOf(path);
    if (!stamp) {
        if (!known.empty()) writer().remove(path);
    } else if (known != stampValue(*stamp, writer().generation())) {
        writer().put({path, *stamp, read(path, *stamp)});
    }
}

/// A file without a text that can be read is still found by its name.
Reading Upkeep::read(const std::string& path, const FileStamp& stamp) {
    const std::string name(fileNameOf(path));
    if (!hasReadableText(name)) return {};
    try {
        if (stamp.size > longestFile) throw ExtractionError("it is too large");
        const auto bytes = parts_.files.readBytes(parts_.holdings.absolute(path));
        if (!bytes) throw ExtractionError("it can't be read");
        return parts_.extractor.read(name, *bytes);
    } catch (const ReadingEnded&) {
        // With its name alone it would count as read.
        throw;
    } catch (const Error& error) {
        parts_.log.warn(fmt::format("the text of {} is not in the catalogue: {}", forLog(path),
                                    chainForLog(error.what())));
        return {};
    }
}

void Upkeep::tidyQueue() {
    const db::Lease connection = parts_.openDatabase();
    removeOldQueue(*connection, parts_.clock);
}

}  // namespace torvex::catalogue
