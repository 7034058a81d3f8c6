#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace torvex {

struct RequestHead;

/// In what form a body is sent (RFC 9110, 8.4.1).
enum class Coding { Identity, Gzip, Brotli, Zstd };

/// As in `Content-Encoding`; "" for `Identity`.
std::string_view codingName(Coding coding);

/// What is offered for bytes that are kept, and for those that are made for one request.
inline constexpr std::array smallestFirst{Coding::Brotli, Coding::Zstd, Coding::Gzip};
inline constexpr std::array quickestFirst{Coding::Zstd, Coding::Brotli, Coding::Gzip};

/// Of `offered`, in the server's order of preference, the one that a request's `Accept-Encoding` gives the
/// most weight; `Identity` when it takes none of them or prefers the bytes as they are, and also when it
/// refuses everything, which is answered all the same.
Coding preferredCoding(std::string_view accepted, std::span<const Coding> offered);
/// The same for a request, whose fields of that name count together.
Coding preferredCoding(const RequestHead& head, std::span<const Coding> offered);

/// How much time a smaller result is worth: `Once` for what is kept, some milliseconds for 64 KiB; `EachTime` for
/// an answer that is made for one request, a tenth of one.
enum class Effort { Once, EachTime };

/// The bytes in the form of the coding. Throws `Error` when the library fails. Safe from any thread.
std::string encodedAs(Coding coding, std::string_view bytes, Effort effort);

/// Whether a media type is one of texts: they have a charset and get much smaller, unlike pictures and archives.
bool isTextType(std::string_view mediaType);

/// Smaller ones fit into one packet as they are.
inline constexpr std::size_t leastEncoded = 1024;

}  // namespace torvex
