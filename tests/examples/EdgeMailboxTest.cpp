// SPDX-License-Identifier: Apache-2.0
// The way of the edge pictures from the worker to the GUI.

#include <EdgeMailbox.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>

namespace {

EdgePicture pictureOfWidth(int width)
{
    EdgePicture picture;
    picture.width = width;
    return picture;
}

TEST(EdgeMailbox, IsEmptyAtFirst)
{
    EdgeMailbox mailbox;
    EdgePicture picture = pictureOfWidth(7);
    EXPECT_FALSE(mailbox.HasNews());
    EXPECT_FALSE(mailbox.Fetch(picture));
    EXPECT_EQ(picture.width, 7) << "nothing was changed";
}

TEST(EdgeMailbox, GivesEachPictureOnce)
{
    EdgeMailbox mailbox;
    EdgePicture picture = pictureOfWidth(3);
    mailbox.Put(picture);
    EXPECT_TRUE(mailbox.HasNews());
    EdgePicture fetched;
    EXPECT_TRUE(mailbox.Fetch(fetched));
    EXPECT_EQ(fetched.width, 3);
    EXPECT_FALSE(mailbox.HasNews());
    EXPECT_FALSE(mailbox.Fetch(fetched));
}

TEST(EdgeMailbox, GivesTheNewest)
{
    EdgeMailbox mailbox;
    for (const int width : {1, 2, 3}) {
        EdgePicture picture = pictureOfWidth(width);
        mailbox.Put(picture);
    }
    EdgePicture fetched;
    EXPECT_TRUE(mailbox.Fetch(fetched));
    EXPECT_EQ(fetched.width, 3);
}

TEST(EdgeMailbox, ClearForgetsWhatNobodyFetched)
{
    EdgeMailbox mailbox;
    EdgePicture picture = pictureOfWidth(3);
    mailbox.Put(picture);
    mailbox.Clear();
    EdgePicture fetched;
    EXPECT_FALSE(mailbox.Fetch(fetched));
}

TEST(EdgeMailbox, ThreeMemoriesGoRound)
{
    EdgeMailbox mailbox;
    EdgePicture mine;
    EdgePicture shown;
    std::set<const unsigned char*> memories;
    for (int i = 0; i < 10; ++i) {
        mine.pixels.assign(100, 0);
        memories.insert(mine.pixels.data());
        mailbox.Put(mine);
        mailbox.Fetch(shown);
    }
    EXPECT_EQ(memories.size(), 3U);
}

TEST(EdgeMailbox, NoPictureIsSeenHalfWritten)
{
    EdgeMailbox mailbox;
    std::atomic<bool> done{false};
    std::thread worker([&] {
        EdgePicture picture;
        for (int i = 1; i <= 20'000; ++i) {
            picture.width = i;
            picture.pixels.assign(64, static_cast<unsigned char>(i % 256));
            mailbox.Put(picture);
        }
        done = true;
    });
    EdgePicture shown;
    int last = 0;
    bool inOrder = true;
    bool whole = true;
    while (!done || mailbox.HasNews()) {
        if (!mailbox.Fetch(shown))
            continue;
        inOrder = inOrder && shown.width > last;
        last = shown.width;
        whole = whole && std::count(shown.pixels.begin(), shown.pixels.end(), last % 256) == 64;
    }
    worker.join();
    EXPECT_TRUE(inOrder);
    EXPECT_TRUE(whole);
    EXPECT_EQ(last, 20'000);
}

} // namespace
