#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A text as a QR code, drawn in SVG for HTML: dark on white with its quiet border, whatever the colours around it. Who
/// doesn't see it is told `title`. Of the class "qr-picture", by which styles can give it another size. Throws `Error`
/// for a text that is too long.
std::string qrPicture(std::string_view text, std::string_view title);

}  // namespace torvex
