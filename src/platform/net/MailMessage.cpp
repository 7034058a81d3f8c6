#include "platform/net/MailMessage.h"

#include <algorithm>
#include <fmt/format.h>
#include <sodium.h>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t mostOfLine = 76;
/// Bytes of a text in one encoded word, which with its marks has at most 75 characters.
constexpr std::size_t mostOfWord = 42;
/// A subject beyond that is no subject.
constexpr std::size_t mostOfSubject = 200;

std::string base64(std::string_view bytes) {
    std::string encoded(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(encoded.data(), encoded.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), sodium_base64_VARIANT_ORIGINAL);
    encoded.pop_back();  // the NUL at the end
    return encoded;
}

std::string inLines(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        lines.append(text.substr(0, mostOfLine)).append(lineEnd);
        text.remove_prefix(std::min(mostOfLine, text.size()));
    }
    return lines;
}

bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; }) &&
           text.find("=?") == std::string_view::npos;
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The first bytes of a text, without the half of a character.
std::string_view wordOf(std::string_view text) {
    std::size_t end = std::min(mostOfWord, text.size());
    while (end < text.size() && end > 0 && continuesCharacter(text[end])) --end;
    return text.substr(0, end);
}

std::string withLineEnds(std::string_view text) {
    std::string lines;
    for (const char c : text) {
        if (c == '\r') continue;
        if (c == '\n') lines += '\r';
        lines += c;
    }
    return lines;
}

}  // namespace

std::string mailHeaderText(std::string_view text) {
    std::string line = text::toValidUtf8(text::first(text, mostOfSubject));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7f; },
        ' ');
    if (isPlain(line)) return line;
    std::string words;
    for (std::string_view rest = line; !rest.empty();) {
        const std::string_view word = wordOf(rest);
        words.append(words.empty() ? "" : "\r\n ").append("=?UTF-8?B?").append(base64(word)).append("?=");
        rest.remove_prefix(word.size());
    }
    return words;
}

std::string mailMessage(const Mail& mail, std::string_view id, std::string_view date) {
    return fmt::format(
               "From: {}\r\nTo: {}\r\nSubject: {}\r\nDate: {}\r\nMessage-ID: <{}>\r\n"
               "Auto-Submitted: auto-generated\r\nMIME-Version: 1.0\r\n"
               "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: base64\r\n\r\n",
               mailHeaderText(mail.from), mailHeaderText(mail.to), mailHeaderText(mail.subject),
               mailHeaderText(date), mailHeaderText(id)) +
           inLines(base64(withLineEnds(text::toValidUtf8(mail.text))));
}

}  // namespace torvex
