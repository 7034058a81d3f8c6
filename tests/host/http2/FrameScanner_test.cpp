#include "host/http2/FrameScanner.h"

#include <gtest/gtest.h>
#include <vector>

#include "host/http2/FrameBudget.h"
#include "support/Http2Client.h"

namespace torvex::http2 {

namespace {

using test::frameOf;

const std::string opening(NGHTTP2_CLIENT_MAGIC, NGHTTP2_CLIENT_MAGIC_LEN);

/// The types of the frames that begin in the bytes, which come in pieces of a size.
std::vector<int> typesOf(FrameScanner& scanner, std::string_view bytes, std::size_t piece) {
    std::vector<int> types;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size())))
        scanner.scan(bytes.substr(0, piece),
                     [&](const FrameScanner::Head& head) { types.push_back(head.type); });
    return types;
}

TEST(FrameScannerTest, FindsEachFrameHoweverTheyAreCut) {
    const std::string bytes = opening + frameOf(NGHTTP2_SETTINGS, 0, 0, "") +
                              frameOf(NGHTTP2_DATA, 0, 1, std::string(300, '\1')) + frameOf(0x77, 0, 5, "x") +
                              frameOf(NGHTTP2_PING, 0, 0, "12345678");
    for (std::size_t piece : {1U, 2U, 7U, 9U, 10U, 100U, 1000U}) {
        FrameScanner scanner;
        EXPECT_EQ(typesOf(scanner, bytes, piece),
                  (std::vector<int>{NGHTTP2_SETTINGS, NGHTTP2_DATA, 0x77, NGHTTP2_PING}))
            << piece;
    }
}

TEST(FrameScannerTest, ReadsTheHeadOfAFrame) {
    FrameScanner scanner;
    scanner.scan(opening + frameOf(NGHTTP2_PRIORITY, 0x24, 0x01020304, "12345"),
                 [](const FrameScanner::Head& head) {
                     EXPECT_EQ(head.size, 5U);
                     EXPECT_EQ(head.type, NGHTTP2_PRIORITY);
                     EXPECT_EQ(head.flags, 0x24);
                     EXPECT_EQ(head.id, 0x01020304U);
                 });
}

TEST(FrameScannerTest, AHeaderIsUnderWayUntilItsLastByteHasCome) {
    FrameScanner scanner;
    const std::string first = frameOf(NGHTTP2_HEADERS, 0, 1, "abc");
    const std::string last = frameOf(NGHTTP2_CONTINUATION, NGHTTP2_FLAG_END_HEADERS, 1, "def");
    typesOf(scanner, opening, 100);
    EXPECT_FALSE(scanner.isInHeader());
    typesOf(scanner, first, 100);
    EXPECT_TRUE(scanner.isInHeader());
    typesOf(scanner, last.substr(0, last.size() - 1), 100);
    EXPECT_TRUE(scanner.isInHeader());
    typesOf(scanner, last.substr(last.size() - 1), 100);
    EXPECT_FALSE(scanner.isInHeader());
    EXPECT_EQ(scanner.headers(), 1U);
}

TEST(FrameBudgetTest, IsSpentAndFillsUpWithTime) {
    const FrameBudget::TimePoint begin{};
    FrameBudget budget(begin);
    for (int i = 0; i < 500; ++i) EXPECT_TRUE(budget.spend(FrameBudget::reset, begin));
    EXPECT_FALSE(budget.spend(FrameBudget::reset, begin));
    const auto later = begin + std::chrono::seconds(1);
    int more = 0;
    while (budget.spend(FrameBudget::reset, later)) ++more;
    EXPECT_EQ(more, 49);  // the one above is paid for as well
}

TEST(FrameBudgetTest, HoldsNoMoreThanAtFirst) {
    const FrameBudget::TimePoint begin{};
    FrameBudget budget(begin);
    const auto later = begin + std::chrono::hours(1);
    int count = 0;
    while (budget.spend(FrameBudget::settings, later)) ++count;
    EXPECT_EQ(count, 100);
}

TEST(FrameBudgetTest, WhatAReaderTakesPaysForItsWindows) {
    const FrameBudget::TimePoint begin{};
    FrameBudget budget(begin);
    for (int i = 0; i < 100'000; ++i) {
        budget.earn(FrameBudget::sent);
        ASSERT_TRUE(budget.spend(FrameBudget::window, begin) && budget.spend(FrameBudget::window, begin))
            << i;
    }
}

}  // namespace

}  // namespace torvex::http2
