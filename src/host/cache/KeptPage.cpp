#include "host/cache/KeptPage.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <sodium.h>

#include "host/cache/Looks.h"
#include "host/http/AnswerParts.h"
#include "host/http/ByteRange.h"
#include "host/http/RequestHead.h"
#include "host/http/SecurityFields.h"
#include "platform/ApplicationValues.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Weak, as it stands for all forms of the answer. Whoever writes pages must not be able to make two of one tag.
std::string tagOf(const Answer& head, std::string_view body) {
    crypto_generichash_state state;
    std::array<unsigned char, 16> hash{};
    const std::string status = std::to_string(head.status);
    crypto_generichash_init(&state, nullptr, 0, hash.size());
    for (const std::string_view part : {std::string_view(status), std::string_view(head.fields), body})
        crypto_generichash_update(&state, reinterpret_cast<const unsigned char*>(part.data()), part.size());
    crypto_generichash_final(&state, hash.data(), hash.size());
    std::string tag("W/\"");
    for (const unsigned char byte : hash) tag += fmt::format("{:02x}", byte);
    return tag + "\"";
}

/// "http_user_agent" is asked of the field User-Agent; names of fields ignore case.
std::string fieldOf(std::string_view variable) {
    return text::replaceAll(std::string(variable.substr(5)), "_", "-");
}

/// The cookie says whether there is a session, for which nothing here was made.
std::string varyOf(const RequestQuestions& questions) {
    std::string vary("Accept-Encoding, Cookie");
    for (const RequestQuestion& question : questions) {
        const bool isField = question.name.starts_with("http_") && question.name != "http_host";
        if (isField) vary.append(", ").append(fieldOf(question.name));
    }
    return vary;
}

/// Of a page's fields those that a "not modified" has, too. What stands in the place of others' would be overwritten by
/// them in whoever's store the page lies.
std::string fieldsWithoutPage(std::string_view fields) {
    std::string lines;
    while (!fields.empty()) {
        const std::string_view line = answerParts::takeLine(fields);
        const std::string_view name = line.substr(0, line.find(':'));
        if (ascii::equals(name, "Cache-Control") || SecurityFields::has(name)) lines += line;
    }
    return lines;
}

}  // namespace

KeptPage::KeptPage(Ingredients made, std::uint64_t changes, MadePage page)
    : made_(std::move(made)),
      views_(std::move(page.views)),
      head_(std::move(page.answer)),
      changes_(changes),
      states_(made_.states) {
    body_ = std::make_shared<const std::string>(std::get<std::string>(std::move(head_.body)));
    head_.body = std::string();
    isEncoded_ = page.compresses && body_->size() >= leastEncoded;
    etag_ = tagOf(head_, *body_);
    caching_ = fieldsWithoutPage(head_.fields);
    const std::string added = fmt::format("ETag: {}\r\nVary: {}\r\n", etag_, varyOf(made_.questions));
    head_.fields += added;
    caching_ += added;
}

/// What another loop has found by a later look holds for this one.
bool KeptPage::stands(const ApplicationValues& application, const Look& look) const {
    std::uint64_t last = lastLook_.load(std::memory_order_acquire);
    if (last >= look.number) return true;
    if (!standsAt(application, look)) return false;
    while (last < look.number &&
           !lastLook_.compare_exchange_weak(last, look.number, std::memory_order_acq_rel)) {
    }
    return true;
}

bool KeptPage::standsAt(const ApplicationValues& application, const Look& look) const {
    return made_.holdsOn(look.today) && made_.holdsByConditions() && standsInContent(look.content) &&
           standsInApplication(application) && made_.holdsInFiles();
}

/// What was looked at last stands for all that is looked at again.
bool KeptPage::standsInApplication(const ApplicationValues& application) const {
    const std::uint64_t now = application.changes();
    if (changes_.load(std::memory_order_relaxed) == now) return true;
    if (!made_.holdsInApplication(application)) return false;
    changes_.store(now, std::memory_order_relaxed);
    return true;
}

bool KeptPage::standsInContent(const db::SharedStates& content) const {
    if (!content) return false;
    if (states_.holds(content)) return true;
    if (!made_.holdsInContent(content)) return false;
    states_.store(content);
    return true;
}

bool KeptPage::isKnownTo(const RequestHead& head) const {
    const FileConditions conditions{.ifNoneMatch = head.field("If-None-Match")};
    const FileVersion version{.size = body_->size(), .etag = std::string_view(etag_).substr(2)};
    return !conditions.ifNoneMatch.empty() && head_.status == 200 &&
           std::holds_alternative<NotModified>(select(conditions, version));
}

Answer KeptPage::notModified() const {
    Answer answer;
    answer.status = 304;
    answer.hasLength = false;
    answer.fields = caching_;
    answer.replacesFields = head_.replacesFields;
    return answer;
}

Coding KeptPage::codingFor(const RequestHead& head) const {
    return isEncoded_ ? preferredCoding(head, smallestFirst) : Coding::Identity;
}

Answer KeptPage::withBody(Answer::Body body, Coding coding) const {
    Answer answer = head_;
    answer.body = std::move(body);
    if (coding != Coding::Identity) answer.addField("Content-Encoding", codingName(coding));
    return answer;
}

Answer KeptPage::answer(Coding coding) {
    if (coding == Coding::Identity) return withBody(body_, coding);
    Bytes bytes = form(coding).load();
    if (!bytes) {
        bytes = std::make_shared<const std::string>(encodedAs(coding, *body_, Effort::Once));
        form(coding).store(bytes);
    }
    return withBody(std::move(bytes), coding);
}

Answer KeptPage::firstAnswer(const RequestHead& head) const {
    const Coding coding = isEncoded_ ? preferredCoding(head, quickestFirst) : Coding::Identity;
    if (coding == Coding::Identity) return withBody(body_, coding);
    return withBody(encodedAs(coding, *body_, Effort::EachTime), coding);
}

/// Forms are smaller than what they are made of, and there are three at most.
std::size_t KeptPage::bytes() const {
    std::size_t sum = sizeof *this + 2 * body_->size() + head_.fields.size() + caching_.size();
    for (const auto& [name, value] : made_.application) sum += sizeof value + name.size() + 64;
    for (const auto& [path, stamp] : made_.files) sum += sizeof stamp + path.size();
    for (const RequestQuestion& question : made_.questions) sum += sizeof question + question.name.size();
    return sum;
}

}  // namespace torvex
