#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

// What visitors see of their second factor, as a piece of HTML for the page of a site or one of the server's own. Works
// without script.

/// The fields of its forms.
namespace factorField {
inline constexpr const char* token = "factor_token";
inline constexpr const char* action = "factor_do";
inline constexpr const char* code = "factor_code";
inline constexpr const char* proof = "factor_proof";
}  // namespace factorField

/// What a form asks for.
namespace factorAction {
inline constexpr std::string_view renew = "renew";
inline constexpr std::string_view drop = "drop";
}  // namespace factorAction

/// Words by their numbers: install/rows/08_words_second_factor.sql and 08_words_visitors_factor.sql.
namespace factorWord {
inline constexpr double wrongCode = 5832;
inline constexpr double tookTooLong = 5833;
inline constexpr double beginAgain = 5837;
inline constexpr double wrongProof = 5838;
inline constexpr double title = 5850;
inline constexpr double isOff = 5871;
inline constexpr double formTooOld = 5975;
inline constexpr double tooMany = 5976;
inline constexpr double staysDemanded = 5978;
inline constexpr double logInAgain = 5987;
}  // namespace factorWord

struct SecondFactorView {
    enum class Page {
        Code,   ///< the password was right: a code
        SetUp,  ///< a new factor
        Codes,  ///< the recovery codes, this once
        Keep,   ///< renewing and dropping
        LogIn,  ///< nobody is logged in
        None    ///< the website has no second factors
    };

    Page page = Page::None;
    double alert = 0;         ///< a word that tells what went wrong; 0 for none
    double notice = 0;        ///< one that tells what was done
    std::string wait{};       ///< seconds, for `tooMany`
    std::string codesLeft{};  ///< how many on paper
    std::string token{};
    std::string action{};     ///< the address that forms are posted to
    std::string secret{};     ///< of the new factor
    std::string enrolment{};  ///< the same as an address, for the picture
    bool isDemanded = false;
    bool lastsUntilLogin = false;  ///< setting it up lets the visitor in
    std::vector<std::string> codes{};
    std::string since{};
    std::string goOn{};  ///< the address to go on to
};

/// All words that views need, in a language.
using FactorWords = std::map<double, std::string>;
/// Their numbers.
const std::vector<double>& factorWords();

std::string secondFactorHtml(const SecondFactorView& view, const FactorWords& words);

}  // namespace torvex
