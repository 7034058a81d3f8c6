#include "pages/api/Words.h"

#include <array>

#include "pages/AcceptLanguage.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex::api {

namespace {

constexpr std::chrono::seconds longestKept{60};
constexpr std::string_view english = "en";
constexpr std::string_view selectLanguages =
    "select lang_id from TORVEX_INTERFACE_LANGUAGES where lang_enabled = 1 order by id";

/// Sentences of problems stand among the words of the interface's newer parts; "not logged in" and "no right"
/// are words of all of it.
bool isOfProblems(int label) {
    return label >= 5000 || label == 44 || label == 45;
}

std::map<int, std::string> sentencesIn(db::Connection& connection, const std::string& language) {
    auto all = wholeVocabulary(connection, language);
    std::erase_if(all, [](const auto& one) { return !isOfProblems(one.first); });
    return all;
}

std::vector<std::string> languageCodes(db::Connection& connection) {
    std::vector<std::string> codes;
    auto rows = connection.query(selectLanguages, {});
    while (rows.next()) codes.push_back(text::lowerTrim(rows.text("lang_id")));
    return codes;
}

}  // namespace

void Words::refresh(HostContext& host) {
    {
        const std::scoped_lock guard(mutex_);
        const auto now = Clock::now();
        if (readAt_ != Clock::time_point::min() && now - readAt_ < longestKept) return;
        readAt_ = now;
    }
    const auto connection = db::openOwn(host);
    auto read = std::make_shared<Languages>();
    for (const std::string& code : languageCodes(*connection)) (*read)[code] = sentencesIn(*connection, code);
    const std::scoped_lock guard(mutex_);
    languages_ = std::move(read);
}

std::shared_ptr<const Words::Languages> Words::languages() const {
    const std::scoped_lock guard(mutex_);
    return languages_;
}

std::string Words::sentence(std::string_view language, int label, std::initializer_list<Place> places) const {
    const auto known = languages();
    for (const std::string_view wanted : {language, english}) {
        const auto words = known->find(wanted);
        if (words == known->end()) continue;
        const auto found = words->second.find(label);
        if (found == words->second.end()) continue;
        std::string filled = found->second;
        for (const auto& [name, value] : places)
            filled = text::replaceAll(filled, "{" + std::string(name) + "}", value);
        return filled;
    }
    return {};
}

std::string Words::languageFor(std::string_view acceptLanguage) const {
    const auto known = languages();
    const std::string liked =
        likedLanguage(acceptLanguage, [&](const std::string& language) { return known->contains(language); });
    return liked.empty() ? std::string(english) : liked;
}

std::string languageOf(const HostContext& host, const Words& words) {
    if (!host.session.text(sessionKey::authorName).empty()) {
        std::string own = text::lowerTrim(host.session.text(sessionKey::interfaceLanguage));
        if (!own.empty()) return own;
    }
    return words.languageFor(host.request.serverVariable("http_accept_language"));
}

}  // namespace torvex::api
