#include "pages/api/UploadMetadata.h"

#include <gtest/gtest.h>

namespace torvex::api {
namespace {

TEST(UploadMetadataTest, NamesHaveTheirValues) {
    EXPECT_EQ(readUploadMetadata("filename d29ybGQ=,site YWE="),
              UploadMetadata({{"filename", "world"}, {"site", "aa"}}));
    EXPECT_EQ(readUploadMetadata("  filename   d29ybGQ=  ,  site YWE= "),
              UploadMetadata({{"filename", "world"}, {"site", "aa"}}));
}

TEST(UploadMetadataTest, ANameMayHaveNoValue) {
    EXPECT_EQ(readUploadMetadata("replace,site YWE="), UploadMetadata({{"replace", ""}, {"site", "aa"}}));
    EXPECT_EQ(readUploadMetadata("replace "), UploadMetadata({{"replace", ""}}));
}

TEST(UploadMetadataTest, NothingIsToldByAnEmptyField) {
    EXPECT_EQ(readUploadMetadata(""), UploadMetadata());
    EXPECT_EQ(readUploadMetadata("   "), UploadMetadata());
}

TEST(UploadMetadataTest, ValuesMayBeAnyBytes) {
    EXPECT_EQ(readUploadMetadata("a AP8="), UploadMetadata({{"a", std::string("\0\xFF", 2)}}));
}

TEST(UploadMetadataTest, WhatIsntSuchAFieldIsNothing) {
    for (const auto* field : {",", "a,", ",a", "a YWE=,,b YWE=", "a YWE", "a YWE=x", "a Y W E =", "a ====",
                              "a YWE=,a YWE=", "\x01 YWE=", "\xC3\xA4 YWE=", "a YW-_", "a\tYWE="}) {
        EXPECT_EQ(readUploadMetadata(field), std::nullopt) << field;
    }
}

}  // namespace
}  // namespace torvex::api
