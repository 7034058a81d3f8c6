#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "search/catalogue/Backend.h"

/// What a server and the catalogue of another one say to each other: a connection carries one request and its
/// answer, each as four bytes with its length (the lowest first) and as many bytes.
namespace torvex::catalogue::wire {

inline constexpr std::uint64_t version = 2;
inline constexpr std::size_t lengthSize = 4;
inline constexpr std::size_t longestRequest = 4u << 20;
inline constexpr std::size_t longestAnswer = 64u << 20;
inline constexpr std::uint16_t defaultPort = 8489;

std::string checkRequest();
std::string findRequest(const Query& query, std::size_t most);
std::string rowsRequest(const Query& query, const std::string& database, const std::vector<Hit>& hits);
std::string correctedRequest(std::string_view words, std::string_view language);

/// What a backend answers, or which error it throws.
std::string answer(const Backend& backend, std::string_view request);

/// Read an answer. Throw the error that it carries, or `UnavailableError` when it is none.
void readChecked(std::string_view answer);
Found readFound(std::string_view answer);
std::vector<Row> readRows(std::string_view answer);
std::string readCorrected(std::string_view answer);

std::string withLength(std::string_view message);
std::size_t readLength(std::string_view bytes);

}  // namespace torvex::catalogue::wire
