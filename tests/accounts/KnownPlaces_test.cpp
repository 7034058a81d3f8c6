#include "accounts/KnownPlaces.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(KnownPlaces, AreThoseOfOneName) {
    KnownPlaces places;
    places.add("ann", "a");
    EXPECT_TRUE(places.contains("ann", "a"));
    EXPECT_FALSE(places.contains("ann", "b"));
    EXPECT_FALSE(places.contains("ben", "a"));
}

TEST(KnownPlaces, OfManyTheOldestAreForgotten) {
    KnownPlaces places;
    places.add("ann", "first");
    places.add("ann", "second");
    for (int i = 0; i < 7; ++i) {
        places.add("ann", std::to_string(i));
        places.add("ann", "first");
    }
    EXPECT_TRUE(places.contains("ann", "first"));
    EXPECT_FALSE(places.contains("ann", "second"));
}

TEST(KnownPlaces, OneNameInManyPlacesPushesOutNoOther) {
    KnownPlaces places;
    places.add("ben", "a");
    for (int i = 0; i < 100'000; ++i) places.add("ann", std::to_string(i));
    EXPECT_TRUE(places.contains("ben", "a"));
}

TEST(KnownPlaces, NamesAreBounded) {
    KnownPlaces places(100);
    for (int i = 0; i < 1000; ++i) {
        places.add("ann", "a");
        places.add(std::to_string(i), "a");
    }
    EXPECT_EQ(places.size(), 100U);
    EXPECT_TRUE(places.contains("ann", "a"));
}

}  // namespace
}  // namespace torvex
