#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/http/RequestHead.h"
#include "installation/ServerOptions.h"

namespace torvex::http2 {

/// Gathers the fields of one request as they come and makes a head of them, as requests of HTTP/1.1 have one. It keeps
/// no more of them than a request may have.
class RequestFields {
  public:
    explicit RequestFields(const RequestLimits& limits) : limits_(limits) {}

    /// The session has checked that names and values are well-formed, and which of the names with a colon there are.
    void add(std::string_view name, std::string_view value);

    /// So much more than a header may be that nobody sends it in good faith.
    bool isExcessive() const { return size_ > 4 * limits_.header; }

    /// Whether no body goes with the answer; known also of a request that is refused.
    bool isHead() const { return valueOf(method_) == "HEAD"; }

    /// What is wrong with the request, as a status; 0 when `head` is there. Its texts lie in here.
    int makeHead(RequestHead& head, bool hasBody);

  private:
    struct Field {
        std::size_t begin = 0;
        std::size_t name = 0;
        std::size_t value = 0;
    };

    Field keep(std::string_view name, std::string_view value);
    void addPseudo(std::string_view name, std::string_view value);
    void addCookie(std::string_view value);
    bool settleHost(RequestHead& head) const;
    void settleTarget(RequestHead& head) const;
    void addFields(RequestHead& head) const;
    std::string_view valueOf(const Field& field) const;
    std::string_view nameOf(const Field& field) const;

    const RequestLimits& limits_;
    std::string bytes_;
    std::string cookies_;
    std::vector<Field> fields_;
    Field method_;
    Field path_;
    Field authority_;
    std::size_t size_ = 0;  ///< as HTTP/1.1 would count it
    int refusal_ = 0;
};

}  // namespace torvex::http2
