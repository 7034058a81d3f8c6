#include <boost/json/serialize.hpp>

#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/Kept.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex::api {

namespace {

namespace json = boost::json;

/// A language by its code; the numbers of columns are no business of callers.
bool isCode(const std::string& language) {
    return !language.empty() && !text::isNumeric(language);
}

std::string jsonOfWords(const std::map<int, std::string>& words) {
    json::object all;
    for (const auto& [label, word] : words)
        all[std::to_string(label)] = json::string(text::toValidUtf8(word));
    return json::serialize(all);
}

}  // namespace

void answerLabels(HostContext& host, Api& api) {
    std::string language = text::lowerTrim(host.request.queryString("lang"));
    if (language.empty()) language = languageOf(host, api.words);
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const auto words =
        isCode(language) ? wholeVocabulary(*connection, language) : std::map<int, std::string>();
    if (words.empty()) return answer(host.response, problemFor(host, api, kind::notThere));
    answerKept(host, jsonOfWords(words));
}

}  // namespace torvex::api
