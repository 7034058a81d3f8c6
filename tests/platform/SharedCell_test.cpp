#include "platform/SharedCell.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace torvex {

TEST(SharedCell, HoldsWhatWasStoredLast) {
    SharedCell<std::string> cell;
    EXPECT_TRUE(cell.isEmpty());
    const auto first = std::make_shared<const std::string>("first");
    cell.store(first);
    cell.store(std::make_shared<const std::string>("second"));
    EXPECT_EQ(*cell.load(), "second");
    EXPECT_FALSE(cell.holds(first));
    EXPECT_EQ(first.use_count(), 1);
}

/// Under the sanitizers above all.
TEST(SharedCell, WhatIsReadStaysWholeWhileOthersReplaceIt) {
    SharedCell<std::string> cell(std::make_shared<const std::string>(40, 'a'));
    std::atomic<bool> isDone = false;
    std::vector<std::jthread> readers;
    std::atomic<int> torn = 0;
    for (int reader = 0; reader < 3; ++reader) {
        readers.emplace_back([&] {
            while (!isDone) {
                const auto text = cell.load();
                if (*text != std::string(40, text->front())) ++torn;
            }
        });
    }
    for (int i = 0; i < 20'000; ++i)
        cell.store(std::make_shared<const std::string>(40, static_cast<char>('a' + i % 26)));
    isDone = true;
    readers.clear();
    EXPECT_EQ(torn, 0);
}

}  // namespace torvex
