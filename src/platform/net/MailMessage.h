#pragma once

#include <string>
#include <string_view>

#include "platform/DateTime.h"
#include "platform/net/MailTransport.h"

namespace torvex {

/// The mail as it goes over the line: header lines and the text in base64, each line ended by CR LF. Whatever
/// stands in the fields, they are one header line each. `id` is unique in the world; `date` is the moment as
/// mails write it.
std::string mailMessage(const Mail& mail, std::string_view id, std::string_view date);

/// A text for a header line: control characters are blanks, and what is beyond ASCII is in encoded words.
std::string mailHeaderText(std::string_view text);

}  // namespace torvex
