#pragma once

/// What callers are told of a value that doesn't fit: labels of the interface's vocabulary
/// (install/rows/08_words_codes.sql), each a sentence of its own.
namespace torvex::operations::need {

inline constexpr int given = 5024;
inline constexpr int knownName = 5025;
inline constexpr int once = 5026;
inline constexpr int number = 5027;
inline constexpr int wholeNumber = 5028;
inline constexpr int boolean = 5029;
inline constexpr int moment = 5030;
inline constexpr int textFormat = 5031;
inline constexpr int text = 5032;
inline constexpr int singleValue = 5033;
inline constexpr int cleanText = 5034;
inline constexpr int smallerNumber = 5035;
inline constexpr int writable = 5036;
inline constexpr int days = 5037;

// Of a batch.
inline constexpr int object = 5040;
inline constexpr int list = 5041;
inline constexpr int texts = 5042;
inline constexpr int deed = 5043;
inline constexpr int expectation = 5044;

// Of an upload.
inline constexpr int mediaKind = 5050;
inline constexpr int siteCode = 5051;
inline constexpr int folderNumber = 5052;
inline constexpr int fileName = 5053;
inline constexpr int content = 5054;

}  // namespace torvex::operations::need
