#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <xapian.h>

#include "platform/Errors.h"
#include "search/catalogue/Entry.h"
#include "search/catalogue/FrequentWords.h"

namespace torvex::catalogue {

/// Another process, or another thread of this one, is writing.
class BusyError : public Error {
  public:
    using Error::Error;
};
/// The catalogue was found damaged: `removeDamaged` before it can be made anew.
class DamagedError : public Error {
  public:
    using Error::Error;
};

/// The catalogue, to be written: by one at a time. What isn't committed is seen by nobody, and lost with
/// the process; what is survives it. Used by one thread. Throws `BusyError`, `DamagedError`, and
/// `UnavailableError` for a folder that can't be written, a full disk, or a catalogue of a newer version.
class Writer {
  public:
    /// Makes what isn't there, and makes anew what is of an earlier format. By the first `tellingEntries` it is
    /// settled which words are frequent.
    explicit Writer(const std::string& folder, std::size_t tellingEntries = 2'000);

    const std::string& generation() const { return generation_; }
    /// From now on all entries are out of date.
    void beginGeneration();

    std::size_t count() const;  ///< of entries
    /// The stamps of all entries (see `stampValue`) by path.
    std::map<std::string, std::string> stamps() const;
    /// "" when there is no entry of this path.
    std::string stampOf(std::string_view path) const;
    std::vector<std::string> pathsBelow(std::string_view folder) const;

    void put(const Entry& entry);
    void remove(std::string_view path);

    std::string metadata(std::string_view key) const;
    void setMetadata(std::string_view key, std::string_view value);

    /// How much has been put in since the last commit, in bytes.
    std::size_t waiting() const { return waiting_; }
    void commit();

    /// Puts what was committed into two thirds of the room: for a database that was just filled. Readers go on
    /// meanwhile; the catalogue is the old one or the new one whenever the process is killed. Closes it: the
    /// object can't be used any more. Does nothing where the disk has no room for both, or can't swap folders.
    void compact();

  private:
    void open(const std::string& folder);
    void begin();
    void chooseFrequentWords();
    std::set<std::string> wordsUnder(const std::string& pathTerm) const;
    void renewSpellings(const std::string& pathTerm, const std::vector<std::string>& spellings);

    Xapian::WritableDatabase database_;
    std::string folder_;
    std::string generation_;
    std::size_t tellingEntries_;
    FrequentWords frequent_;
    std::size_t waiting_ = 0;
};

/// Removes what is left of a catalogue. All in it can be read from the files again.
void removeDamaged(const std::string& folder);

}  // namespace torvex::catalogue
