#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Request.h"

namespace torvex {

class Exchange;

/// The request as pages see it: query, form and server variables ("http_host", "remote_addr", ...). Each
/// header field is there as "http_" and its name; names with "_" are left out, as they could pose as another
/// field.
Request toRequest(const Exchange& exchange);
/// One of these server variables, without making the others.
std::string serverVariable(const Exchange& exchange, std::string_view name);

/// Whether a body of this type can be read as a form.
bool isFormType(std::string_view contentType);

/// Whether the request brings a form to an address that takes forms.
bool hasForm(const Exchange& exchange);

/// Whether what the request brings is of a type that its address takes.
bool isBodyType(const Exchange& exchange);

/// Whether a Content-Type field names the media type.
bool isMediaType(std::string_view contentType, std::string_view type);

/// How many fields a form has at most, without reading them.
std::size_t formFields(std::string_view body);

/// The value of the named cookie, "" when it isn't there.
std::string_view cookie(std::string_view cookieField, std::string_view name);

}  // namespace torvex
