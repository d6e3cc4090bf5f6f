// SPDX-License-Identifier: Apache-2.0
// CallbackCount: waiting until every callback has left.

#include <camera/CallbackCount.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

namespace {

TEST(CallbackCount, WaitReturnsAtOnceWhenNobodyIsInside)
{
    CallbackCount count;
    count.WaitUntilNone();
    {
        const CallbackCount::Stay stay(count);
    }
    count.WaitUntilNone();
}

TEST(CallbackCount, WaitEndsWithTheLastStay)
{
    constexpr auto moment = std::chrono::milliseconds(20); // enough for a wait that ends too early
    CallbackCount count;
    std::optional<CallbackCount::Stay> first;
    first.emplace(count);
    std::optional<CallbackCount::Stay> second;
    second.emplace(count);
    std::atomic<bool> ended{false};
    std::thread owner([&] {
        count.WaitUntilNone();
        ended = true;
    });
    EXPECT_FALSE(waitFor([&] { return ended.load(); }, moment));
    first.reset();
    EXPECT_FALSE(waitFor([&] { return ended.load(); }, moment));
    second.reset();
    EXPECT_TRUE(waitFor([&] { return ended.load(); }));
    owner.join();
}

} // namespace
