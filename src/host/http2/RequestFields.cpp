#include "host/http2/RequestFields.h"

#include <charconv>

#include "host/http/MethodNames.h"

namespace torvex::http2 {

namespace {

constexpr std::size_t perField = 4;                               // ": " and the end of the line
constexpr std::size_t perLine = sizeof "  HTTP/2.0\r\n\r\n" - 1;  // beside method and path

std::optional<std::uint64_t> numberOf(std::string_view digits) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

}  // namespace

void RequestFields::add(std::string_view name, std::string_view value) {
    size_ += name.size() + value.size() + perField;
    if (size_ + perLine > limits_.header && refusal_ == 0) refusal_ = 431;
    if (refusal_ != 0) return;
    if (name.starts_with(':')) return addPseudo(name, value);
    if (name == "cookie") return addCookie(value);
    fields_.push_back(keep(name, value));
    if (fields_.size() > limits_.fields) refusal_ = 431;
}

RequestFields::Field RequestFields::keep(std::string_view name, std::string_view value) {
    const Field field{bytes_.size(), name.size(), value.size()};
    bytes_.append(name).append(value);
    return field;
}

void RequestFields::addPseudo(std::string_view name, std::string_view value) {
    if (name == ":path" && value.size() > limits_.requestLine) {
        refusal_ = 414;
    } else if (name == ":path") {
        path_ = keep(name, value);
    } else if (name == ":method") {
        method_ = keep(name, value);
    } else if (name == ":authority") {
        authority_ = keep(name, value);
    }
}

/// Cookies come one by one, so that the same ones needn't be sent again; they are one field.
void RequestFields::addCookie(std::string_view value) {
    if (!cookies_.empty()) cookies_ += "; ";
    cookies_ += value;
}

std::string_view RequestFields::nameOf(const Field& field) const {
    return std::string_view(bytes_).substr(field.begin, field.name);
}

std::string_view RequestFields::valueOf(const Field& field) const {
    return std::string_view(bytes_).substr(field.begin + field.name, field.value);
}

int RequestFields::makeHead(RequestHead& head, bool hasBody) {
    if (refusal_ != 0) return refusal_;
    head.version = 20;
    head.keepAlive = true;
    head.methodText = valueOf(method_);
    head.method = methodOf(head.methodText);
    settleTarget(head);
    addFields(head);
    if (!settleHost(head)) return 400;
    const std::string_view length = head.field("Content-Length");
    head.contentLength = numberOf(length);
    if (!length.empty() && !head.contentLength) return 400;
    head.hasBody = hasBody && head.contentLength != 0U;
    return head.fields.size() > limits_.fields ? 431 : 0;
}

/// Nobody is led on to other servers from here: such requests name nothing that could be asked of this one.
void RequestFields::settleTarget(RequestHead& head) const {
    head.target = valueOf(path_);
    if (!head.target.empty()) return;
    head.target = "/";
    head.method = Method::Unknown;
}

void RequestFields::addFields(RequestHead& head) const {
    head.fields.reserve(fields_.size() + 2);
    for (const Field& field : fields_) head.fields.emplace_back(nameOf(field), valueOf(field));
    if (!cookies_.empty()) head.fields.emplace_back("cookie", cookies_);
}

/// The host stands in ":authority", in "host", or the same in both.
bool RequestFields::settleHost(RequestHead& head) const {
    const std::string_view authority = valueOf(authority_);
    const std::size_t hosts = head.count("host");
    if (authority.empty()) return hosts == 1;
    if (hosts == 0) head.fields.emplace_back("host", authority);
    return hosts == 0 || (hosts == 1 && ascii::equals(head.field("host"), authority));
}

}  // namespace torvex::http2
