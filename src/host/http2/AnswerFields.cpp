#include "host/http2/AnswerFields.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <iterator>

#include "host/http/AnswerParts.h"
#include "host/http/Ascii.h"

namespace torvex::http2 {

namespace {

constexpr std::array<std::string_view, 5> ofConnections = {"connection", "keep-alive", "proxy-connection",
                                                           "transfer-encoding", "upgrade"};
constexpr std::string_view status = ":status";

bool isOfConnections(std::string_view name) {
    return std::find(ofConnections.begin(), ofConnections.end(), name) != ofConnections.end();
}

nghttp2_nv pairOf(char* name, std::size_t nameSize, char* value, std::size_t valueSize) {
    // What is secret stays out of the table, where its bytes could be guessed by the size of later answers.
    const bool isSecret = std::string_view(name, nameSize) == "set-cookie";
    return {reinterpret_cast<std::uint8_t*>(name), reinterpret_cast<std::uint8_t*>(value), nameSize,
            valueSize, static_cast<std::uint8_t>(isSecret ? NGHTTP2_NV_FLAG_NO_INDEX : NGHTTP2_NV_FLAG_NONE)};
}

}  // namespace

void AnswerFields::set(const Answer& answer, std::string_view date, std::string_view common) {
    text_.clear();
    list_.clear();
    auto out = std::back_inserter(text_);
    fmt::format_to(out, "{}{}\r\ndate: {}\r\n", status, answer.status, date);
    if (answer.hasLength) fmt::format_to(out, "content-length: {}\r\n", answerParts::bodyLength(answer));
    answerParts::appendFields(text_, answer, common);
    const std::size_t first = text_.find('\r');
    list_.push_back(pairOf(text_.data(), status.size(), text_.data() + status.size(), first - status.size()));
    for (std::size_t begin = first + 2; begin < text_.size();) {
        const std::size_t end = std::min(text_.find("\r\n", begin), text_.size());
        addLine(begin, end);
        begin = end + 2;
    }
}

void AnswerFields::addLine(std::size_t begin, std::size_t end) {
    char* const line = text_.data() + begin;
    const std::size_t name = std::string_view(line, end - begin).find(':');
    if (name == std::string_view::npos) return;
    std::transform(line, line + name, line, ascii::lower);
    if (isOfConnections({line, name})) return;
    const std::string_view value = ascii::trimmed({line + name + 1, end - begin - name - 1});
    const auto at = static_cast<std::size_t>(value.data() - line);
    list_.push_back(pairOf(line, name, line + (value.empty() ? name : at), value.size()));
}

}  // namespace torvex::http2
