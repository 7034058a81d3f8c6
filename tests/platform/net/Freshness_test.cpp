#include "platform/net/Freshness.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using namespace std::chrono_literals;

constexpr auto noon = std::chrono::system_clock::time_point(std::chrono::seconds(1'781'524'800));

std::chrono::seconds fresh(const FreshnessFields& fields) {
    return freshnessOf(fields, noon).fresh;
}
std::chrono::seconds freshBy(std::string_view cacheControl) {
    FreshnessFields fields;
    fields.cacheControl = cacheControl;
    return fresh(fields);
}
std::chrono::seconds staleBy(std::string_view cacheControl) {
    FreshnessFields fields;
    fields.cacheControl = cacheControl;
    return freshnessOf(fields, noon).staleIfError;
}

TEST(Freshness, NothingIsGuessed) {
    EXPECT_EQ(freshBy(""), 0s);
    EXPECT_EQ(freshBy("public"), 0s);
    FreshnessFields fields;
    fields.date = "Mon, 15 Jun 2026 12:00:00 GMT";
    EXPECT_EQ(fresh(fields), 0s);
}

TEST(Freshness, IsWhatTheSourceSays) {
    EXPECT_EQ(freshBy("max-age=60"), 60s);
    EXPECT_EQ(freshBy("public, Max-Age = \"60\" "), 60s);
    EXPECT_EQ(freshBy("max-age=60, s-maxage=10"), 10s);
    EXPECT_EQ(freshBy("max-age=-1"), 0s);
    EXPECT_EQ(freshBy("max-age=soon"), 0s);
    EXPECT_EQ(freshBy("max-age=99999999999999999999"), 24h);
}

TEST(Freshness, SomeAnswersAreForNobodyElse) {
    for (const char* control : {"no-store, max-age=60", "private, max-age=60", "max-age=60, no-cache"}) {
        EXPECT_EQ(freshBy(control), 0s) << control;
    }
    FreshnessFields fields;
    fields.cacheControl = "max-age=60";
    fields.vary = "*";
    EXPECT_EQ(fresh(fields), 0s);
    fields.vary = "Accept-Encoding";
    EXPECT_EQ(fresh(fields), 60s);
    fields.setsCookie = true;
    EXPECT_EQ(fresh(fields), 0s);
}

TEST(Freshness, AnExpiryCountsFromTheDateOfTheAnswer) {
    FreshnessFields fields;
    fields.expires = "Mon, 15 Jun 2026 13:00:00 GMT";
    EXPECT_EQ(fresh(fields), 1h);
    fields.date = "Mon, 15 Jun 2026 12:59:00 GMT";
    EXPECT_EQ(fresh(fields), 60s);
    fields.expires = "0";
    EXPECT_EQ(fresh(fields), 0s);
    fields.cacheControl = "max-age=5";
    EXPECT_EQ(fresh(fields), 5s);
}

TEST(Freshness, WhatItHasAgedElsewhereIsOver) {
    FreshnessFields fields;
    fields.cacheControl = "max-age=60";
    fields.age = "50";
    EXPECT_EQ(fresh(fields), 10s);
    fields.age = "70";
    EXPECT_EQ(fresh(fields), 0s);
}

TEST(Freshness, InPlaceOfAFailureOnlyWhenTheSourceAllowsIt) {
    EXPECT_EQ(staleBy("max-age=60"), 0s);
    EXPECT_EQ(staleBy("max-age=60, stale-if-error=300"), 300s);
    EXPECT_EQ(staleBy("max-age=60, stale-if-error=300, must-revalidate"), 0s);
    EXPECT_EQ(staleBy("no-store, stale-if-error=300"), 0s);
}

}  // namespace
}  // namespace torvex
