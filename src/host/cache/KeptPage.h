#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/cache/Ingredients.h"
#include "host/http/Answer.h"
#include "host/http/ContentCoding.h"
#include "platform/SharedCell.h"

namespace torvex {

class ApplicationValues;
struct Look;
struct RequestHead;

/// An answer as it was made.
struct MadePage {
    Answer answer;                     ///< with its body in memory
    std::vector<std::string> views{};  ///< the nodes that whoever gets it views
    bool compresses = false;           ///< for whoever takes it so
};

/// A finished answer with what it was made of. Safe to share between threads.
class KeptPage {
  public:
    using Bytes = std::shared_ptr<const std::string>;

    /// `changes` are those of the application's values at a moment before the first of them was read.
    KeptPage(Ingredients made, std::uint64_t changes, MadePage page);

    /// Whether the answer, made anew at the moment of the look or later, would be the same.
    bool stands(const ApplicationValues& application, const Look& look) const;

    /// Whether the request says that it knows the answer; then `notModified` is all it needs.
    bool isKnownTo(const RequestHead& head) const;
    Answer notModified() const;

    /// The form in which a request is answered: `Identity` when nothing is gained, or wanted.
    Coding codingFor(const RequestHead& head) const;
    /// Whether the form is at hand; it is made otherwise, which takes a millisecond or some.
    bool hasForm(Coding coding) const { return coding == Coding::Identity || !form(coding).isEmpty(); }
    Answer answer(Coding coding);
    /// For the first one, who has waited long enough: in whatever form is quickest made.
    Answer firstAnswer(const RequestHead& head) const;

    const std::vector<std::string>& views() const { return views_; }
    const RequestQuestions& questions() const { return made_.questions; }
    /// Of memory, with all forms, whether they are made yet or not.
    std::size_t bytes() const;

  private:
    SharedCell<std::string>& form(Coding coding) const { return forms_[static_cast<std::size_t>(coding)]; }
    Answer withBody(Answer::Body body, Coding coding) const;
    bool standsAt(const ApplicationValues& application, const Look& look) const;
    bool standsInApplication(const ApplicationValues& application) const;
    bool standsInContent(const db::SharedStates& content) const;

    const Ingredients made_;
    const std::vector<std::string> views_;
    Answer head_;  ///< without its body
    Bytes body_;
    std::string etag_;
    std::string caching_;  ///< the fields that a "not modified" has, too
    bool isEncoded_ = false;
    mutable std::array<SharedCell<std::string>, 4> forms_;
    // What was looked at last and found to make no difference.
    mutable std::atomic<std::uint64_t> lastLook_ = 0;
    mutable std::atomic<std::uint64_t> changes_;
    mutable SharedCell<db::TableStates> states_;
};

}  // namespace torvex
