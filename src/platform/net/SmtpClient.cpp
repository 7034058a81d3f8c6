#include "platform/net/SmtpClient.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <ctime>
#include <fmt/format.h>
#include <new>
#include <sodium.h>

#include "platform/Errors.h"
#include "platform/net/CurlHandles.h"
#include "platform/net/HttpDate.h"
#include "platform/net/MailAddress.h"
#include "platform/net/MailMessage.h"
#include "platform/text/Hexadecimal.h"

namespace torvex {

namespace {

void initialiseLibraries() {
    curl::initialise();
    if (sodium_init() < 0) throw Error("the system gives no random numbers");
}

template <typename Value>
void set(CURL* handle, CURLoption option, Value value) {
    const CURLcode code = curl_easy_setopt(handle, option, value);
    if (code != CURLE_OK) throw MailError(curl_easy_strerror(code), false);
}

/// What of the mail hasn't been taken yet.
struct Upload {
    std::string_view rest;
};

std::size_t onRead(char* buffer, std::size_t size, std::size_t count, void* self) noexcept {
    auto& rest = static_cast<Upload*>(self)->rest;
    const std::size_t taken = std::min(size * count, rest.size());
    std::memcpy(buffer, rest.data(), taken);
    rest.remove_prefix(taken);
    return taken;
}

/// Anything but 0 ends the transfer.
int onProgress(void* cancelled, curl_off_t, curl_off_t, curl_off_t, curl_off_t) noexcept {
    return static_cast<const std::atomic<bool>*>(cancelled)->load() ? 1 : 0;
}

/// "Sun, 22 Nov 2026 05:30:00 +0000".
std::string mailDate(std::time_t now) {
    constexpr std::size_t zone = 3;  // "GMT", which mails write in digits
    const std::string date = httpDate(now);
    return date.substr(0, date.size() - zone) + "+0000";
}

std::string uniqueId(std::string_view sender) {
    return randomName(16) + std::string(sender.substr(sender.find('@')));
}

std::string addressOf(const MailServer& server) {
    const bool isV6 = server.host.find(':') != std::string::npos;
    return fmt::format(fmt::runtime(isV6 ? "{}://[{}]:{}" : "{}://{}:{}"),
                       server.tls == MailTls::Always ? "smtps" : "smtp", server.host, server.port);
}

/// The server's answer when it has refused something: those that begin with a 5 are its last word.
MailError failureOf(CURL* handle, CURLcode code, const char* details) {
    constexpr long firstLasting = 500;
    long answer = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &answer);
    const bool isRefusal =
        code == CURLE_RECV_ERROR || code == CURLE_SEND_ERROR || code == CURLE_WEIRD_SERVER_REPLY;
    const std::string reason = *details != '\0' ? details : curl_easy_strerror(code);
    return {reason, isRefusal && answer >= firstLasting};
}

void goTo(CURL* handle, const MailServer& server) {
    set(handle, CURLOPT_URL, addressOf(server).c_str());
    set(handle, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    set(handle, CURLOPT_PROXY, "");
    set(handle, CURLOPT_NOSIGNAL, 1L);
    set(handle, CURLOPT_QUICK_EXIT, 1L);
    set(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(server.time.count()));
    if (server.tls == MailTls::StartTls) set(handle, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (server.user.empty()) return;
    set(handle, CURLOPT_USERNAME, server.user.c_str());
    set(handle, CURLOPT_PASSWORD, server.password.c_str());
}

void demandAddress(const std::string& address) {
    if (!isMailAddress(address))
        throw MailError("\"" + mailHeaderText(address) + "\" is no mail address", true);
}

}  // namespace

SmtpClient::SmtpClient(MailServer server) : server_(std::move(server)) {
    initialiseLibraries();
}

void SmtpClient::send(const Mail& mail) {
    demandAddress(mail.from);
    demandAddress(mail.to);
    const std::string message = mailMessage(mail, uniqueId(mail.from), mailDate(std::time(nullptr)));
    Upload upload{message};
    const curl::Easy easy(curl_easy_init());
    const curl::List recipients(curl_slist_append(nullptr, ("<" + mail.to + ">").c_str()));
    if (!easy || !recipients) throw std::bad_alloc();
    CURL* handle = easy.get();
    std::array<char, CURL_ERROR_SIZE> details{};
    set(handle, CURLOPT_ERRORBUFFER, details.data());
    goTo(handle, server_);
    set(handle, CURLOPT_MAIL_FROM, ("<" + mail.from + ">").c_str());
    set(handle, CURLOPT_MAIL_RCPT, recipients.get());
    set(handle, CURLOPT_UPLOAD, 1L);
    set(handle, CURLOPT_READFUNCTION, &onRead);
    set(handle, CURLOPT_READDATA, static_cast<void*>(&upload));
    set(handle, CURLOPT_NOPROGRESS, 0L);
    set(handle, CURLOPT_XFERINFOFUNCTION, &onProgress);
    set(handle, CURLOPT_XFERINFODATA, static_cast<void*>(&isCancelled_));
    const CURLcode code = curl_easy_perform(handle);
    if (code != CURLE_OK) throw failureOf(handle, code, details.data());
}

}  // namespace torvex
