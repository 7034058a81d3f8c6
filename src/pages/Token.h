#pragma once

#include <string>
#include <string_view>

namespace torvex {

class Session;

/// What shows that a request was made by a document of ours: a secret that stands in the document, sent back
/// in the field `X-Torvex-Token`. Another site's page can make a browser send its cookie, but can't read this.
/// It belongs to one session and one login in it: an author's, or a visitor's, whose pages hold scripts of others.
namespace pageToken {

/// The field of a request, as a server variable.
inline constexpr std::string_view variable = "http_x_torvex_token";

enum class Side { Authors, Visitors };

/// The session's; made when there is none yet. For `<meta name="torvex-token">` in documents, and for the
/// field `token` of forms.
std::string of(Session& session, Side side = Side::Authors);

/// Whether it is the session's, which it is no more once somebody else is logged in.
bool isOf(const Session& session, std::string_view token, Side side = Side::Authors);

/// Makes the old one of authors worthless: at each login.
void renew(Session& session);

}  // namespace pageToken

}  // namespace torvex
