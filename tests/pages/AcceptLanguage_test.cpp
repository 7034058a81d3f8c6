#include "pages/AcceptLanguage.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

std::string liked(std::string_view acceptLanguage) {
    return likedLanguage(acceptLanguage,
                         [](const std::string& language) { return language == "de" || language == "en"; });
}

TEST(AcceptLanguage, TheOneThatIsLikedBestIsTaken) {
    EXPECT_EQ(liked("de"), "de");
    EXPECT_EQ(liked("fr-FR,de-AT;q=0.8,en;q=0.5"), "de");
    EXPECT_EQ(liked("de;q=0.3, en;q=0.7"), "en");
    EXPECT_EQ(liked("en, de"), "en");
    EXPECT_EQ(liked("DE-de"), "de");
}

TEST(AcceptLanguage, WhatIsUnknownOrUnwantedIsNotTaken) {
    for (const char* nothing : {"", "fr", ",;,", "*", "de;q=0", "de;q=x"})
        EXPECT_EQ(liked(nothing), "") << nothing;
}

}  // namespace
}  // namespace torvex
