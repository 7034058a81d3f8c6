#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvex {

/// The answer that is being made. Text is collected and sent when the request is done. Used by one request.
class Response {
  public:
    int status = 200;
    std::string contentType = "text/html";
    std::string charset;         ///< "" leaves the choice to the server
    std::optional<int> expires;  ///< minutes until the answer is stale
    std::string cacheControl;    ///< "" for none
    std::vector<std::pair<std::string, std::string>> headers;

    void addHeader(std::string name, std::string value) {
        headers.emplace_back(std::move(name), std::move(value));
    }
    /// Adds UTF-8 text, which is sent in `charset`.
    void write(std::string_view text) { body_.append(text); }
    /// The same; a whole page is mostly written in one piece, which is then taken over.
    void write(std::string&& text) {
        if (body_.empty()) {
            body_ = std::move(text);
        } else {
            body_.append(text);
        }
    }
    void write(const char* text) { body_.append(text); }
    /// Adds bytes; from then on the body is sent as it stands, whatever `charset` says.
    void binaryWrite(std::string_view bytes) {
        body_.append(bytes);
        binary_ = true;
    }
    /// Ends the request at once. Never returns: throws `ResponseEnded`.
    [[noreturn]] void end();
    void redirect(std::string address);

    /// Says what the answer depends on besides what was read for it: it holds as long as this is true. Asked from any
    /// thread and for as long as the server runs.
    using Condition = std::function<bool()>;
    void holdsWhile(Condition condition) { conditions_.push_back(std::move(condition)); }
    std::vector<Condition> takeConditions() { return std::move(conditions_); }

    const std::string& body() const { return body_; }
    std::string takeBody() { return std::move(body_); }
    bool isBinary() const { return binary_; }
    bool isEnded() const { return ended_; }
    /// Whether anything was set or written.
    bool isTouched() const;

  private:
    std::vector<Condition> conditions_;
    std::string body_;
    bool binary_ = false;
    bool ended_ = false;
};

}  // namespace torvex
