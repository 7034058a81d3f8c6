#include "host/http/ContentCoding.h"

#include <array>
#include <gtest/gtest.h>

#include "host/http/RequestHead.h"
#include "support/Decoded.h"

namespace torvex {
namespace {

constexpr std::array all{Coding::Brotli, Coding::Zstd, Coding::Gzip};

std::string_view preferred(std::string_view accepted) {
    return codingName(preferredCoding(accepted, all));
}

TEST(ContentCoding, WithoutAWishTheBytesGoAsTheyAre) {
    EXPECT_EQ(preferred(""), "");
    EXPECT_EQ(preferred("identity"), "");
    EXPECT_EQ(preferred("deflate, compress"), "");
}

TEST(ContentCoding, TheServersPreferenceDecidesBetweenEqualWeights) {
    EXPECT_EQ(preferred("gzip, deflate, br, zstd"), "br");
    EXPECT_EQ(preferred("gzip, zstd"), "zstd");
    EXPECT_EQ(preferred("gzip"), "gzip");
    EXPECT_EQ(codingName(preferredCoding("br, gzip", std::array{Coding::Gzip, Coding::Brotli})), "gzip");
}

TEST(ContentCoding, TheHigherWeightGoesFirst) {
    EXPECT_EQ(preferred("br;q=0.5, gzip;q=0.8"), "gzip");
    EXPECT_EQ(preferred("br;q=0.001, gzip;q=0.002"), "gzip");
    EXPECT_EQ(preferred("gzip;q=0.5, identity;q=0.8"), "");
    EXPECT_EQ(preferred("gzip;q=0.5, identity;q=0.5"), "gzip");
}

TEST(ContentCoding, AWeightOfNothingRefuses) {
    EXPECT_EQ(preferred("br;q=0, gzip"), "gzip");
    EXPECT_EQ(preferred("br;q=0.000"), "");
    EXPECT_EQ(preferred("*;q=0"), "");
    EXPECT_EQ(preferred("identity;q=0"), "");
}

TEST(ContentCoding, AStarStandsForAllThatAreNotNamed) {
    EXPECT_EQ(preferred("*"), "br");
    EXPECT_EQ(preferred("br;q=0, *"), "zstd");
    EXPECT_EQ(preferred("gzip;q=0.9, *;q=0.1"), "gzip");
}

TEST(ContentCoding, NamesAreReadInAnyCaseWithBlanksAndByTheOldOne) {
    EXPECT_EQ(preferred("  GZIP ; Q=0.7 ,, "), "gzip");
    EXPECT_EQ(preferred("x-gzip"), "gzip");
    EXPECT_EQ(preferred("gzippy"), "");
}

TEST(ContentCoding, WhatIsNoWeightCountsAsNone) {
    EXPECT_EQ(preferred("gzip;q=lots"), "gzip");
    EXPECT_EQ(preferred("gzip;level=9"), "gzip");
    EXPECT_EQ(preferred("gzip;level=9;q=0"), "");
    EXPECT_EQ(preferred("gzip;"), "gzip");
    EXPECT_EQ(preferred(std::string(100'000, ',')), "");
    EXPECT_EQ(preferred(std::string(10'000, ';')), "");
}

TEST(ContentCoding, SeveralFieldsCountTogether) {
    RequestHead head;
    head.fields = {{"Accept-Encoding", "gzip;q=0.5"}, {"Host", "a"}, {"accept-encoding", "br;q=0.9"}};
    EXPECT_EQ(preferredCoding(head, all), Coding::Brotli);
    EXPECT_EQ(preferredCoding(RequestHead{}, all), Coding::Identity);
}

TEST(ContentCoding, WhatIsEncodedIsReadAgain) {
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "Zeile " + std::to_string(i) + " über den Garten\n";
    for (const Coding coding : all) {
        for (const Effort effort : {Effort::Once, Effort::EachTime}) {
            for (const std::string_view bytes : {std::string_view(text), std::string_view()}) {
                const std::string encoded = encodedAs(coding, bytes, effort);
                EXPECT_EQ(test::decoded(codingName(coding), encoded), bytes) << codingName(coding);
            }
            EXPECT_LT(encodedAs(coding, text, effort).size(), text.size() / 4);
        }
    }
    EXPECT_EQ(encodedAs(Coding::Identity, "as it is", Effort::Once), "as it is");
}

TEST(ContentCoding, PicturesAndArchivesAreNoTexts) {
    for (const char* type : {"text/css; charset=utf-8", "TEXT/HTML", "image/svg+xml", "application/xml",
                             "application/json", "text/javascript"})
        EXPECT_TRUE(isTextType(type)) << type;
    for (const char* type : {"", "image/png", "application/zip", "font/woff2",
                             "application/vnd.openxmlformats-officedocument.wordprocessingml.document"})
        EXPECT_FALSE(isTextType(type)) << type;
}

}  // namespace
}  // namespace torvex
