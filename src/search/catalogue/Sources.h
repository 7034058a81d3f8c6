#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <xapian.h>

namespace torvex::catalogue {

/// The entries of which a value in one of some slots is as it should be. A value is looked at only where all else
/// of a query holds, so that these belong beside terms that leave few entries.
class ValueSource : public Xapian::PostingSource {
  public:
    explicit ValueSource(std::vector<Xapian::valueno> slots) : slots_(std::move(slots)) {}

    Xapian::doccount get_termfreq_min() const override { return 0; }
    Xapian::doccount get_termfreq_est() const override { return most_; }
    Xapian::doccount get_termfreq_max() const override { return most_; }
    Xapian::docid get_docid() const override { return at_; }
    void next(double least) override;
    void skip_to(Xapian::docid id, double least) override;
    bool check(Xapian::docid id, double least) override;
    bool at_end() const override { return isAtEnd_; }
    void init(const Xapian::Database& database) override;
    std::string get_description() const override { return "ValueSource"; }

  protected:
    /// Whether a value in the slot at this place is as it should be.
    virtual bool holds(std::size_t place, const std::string& value) const = 0;

  private:
    std::vector<Xapian::valueno> slots_;
    std::vector<Xapian::ValueIterator> values_;  ///< for each of them
    Xapian::doccount most_ = 0;
    Xapian::docid at_ = 0;  ///< the last one that was looked at
    bool isAtEnd_ = false;
};

/// The traces of the words of a phrase.
struct PhraseTrace {
    Xapian::valueno slot = 0;
    std::string trace;
    bool isCoded = false;  ///< as `codedTraceOf` makes them
};

/// Those with these words one behind the other, as any of the traces tells them: an entry has one of them.
class PhraseSource final : public ValueSource {
  public:
    explicit PhraseSource(std::vector<PhraseTrace> traces);
    PostingSource* clone() const override { return new PhraseSource(traces_); }

  protected:
    bool holds(std::size_t place, const std::string& value) const override;

  private:
    std::vector<PhraseTrace> traces_;
};

/// Those whose file name matches one of the patterns, in which "*" stands for any characters and "?" for one.
class FileNameSource final : public ValueSource {
  public:
    explicit FileNameSource(std::vector<std::string> patterns);
    PostingSource* clone() const override { return new FileNameSource(patterns_); }

  protected:
    bool holds(std::size_t place, const std::string& value) const override;

  private:
    std::vector<std::string> patterns_;
};

/// Both in small letters.
bool matchesPattern(std::string_view name, std::string_view pattern);

}  // namespace torvex::catalogue
