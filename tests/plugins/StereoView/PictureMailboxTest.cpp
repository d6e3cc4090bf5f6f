// SPDX-License-Identifier: Apache-2.0
// Handing pictures from thread to thread.

#include "PictureFrames.h"

#include <FrameLayout.h>
#include <PictureMailbox.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

namespace {

void publish(PictureMailbox& mailbox, int width, unsigned char grey)
{
    const PictureFrame frame(width, 8, grey, grey);
    mailbox.Back().CopyFrom(*picturesOf(frame.record.asLibraryRecord()));
    mailbox.Publish();
}

TEST(PictureMailbox, IsEmptyAtFirst)
{
    PictureMailbox mailbox;
    EXPECT_FALSE(mailbox.HasNews());
    EXPECT_EQ(mailbox.Take(), nullptr);
}

TEST(PictureMailbox, GivesEachPairOnce)
{
    PictureMailbox mailbox;
    publish(mailbox, 16, 1);
    EXPECT_TRUE(mailbox.HasNews());
    const PicturePair* const pair = mailbox.Take();
    ASSERT_NE(pair, nullptr);
    EXPECT_EQ(pair->Left().constScanLine(0)[0], 1);
    EXPECT_FALSE(mailbox.HasNews());
    EXPECT_EQ(mailbox.Take(), nullptr);
}

TEST(PictureMailbox, TheNewestPairWins)
{
    PictureMailbox mailbox;
    for (int grey = 1; grey <= 5; ++grey)
        publish(mailbox, 16, static_cast<unsigned char>(grey));
    EXPECT_EQ(mailbox.Take()->Left().constScanLine(0)[0], 5);
}

TEST(PictureMailbox, ThePairTakenStaysWhileOthersArrive)
{
    PictureMailbox mailbox;
    publish(mailbox, 16, 1);
    const PicturePair* const pair = mailbox.Take();
    for (int grey = 2; grey <= 9; ++grey)
        publish(mailbox, 16, static_cast<unsigned char>(grey));
    EXPECT_EQ(pair->Left().constScanLine(7)[15], 1);
    EXPECT_EQ(mailbox.Take()->Left().constScanLine(7)[15], 9);
}

TEST(PictureMailbox, ClearForgetsWhatWasNotTaken)
{
    PictureMailbox mailbox;
    publish(mailbox, 16, 1);
    mailbox.Clear();
    EXPECT_FALSE(mailbox.HasNews());
    publish(mailbox, 16, 2);
    EXPECT_EQ(mailbox.Take()->Left().constScanLine(0)[0], 2);
}

/// Left and right of a pair are of one frame, and every row of it: seen from a reader that is as fast as it can be.
TEST(PictureMailbox, NoPairIsEverTorn)
{
    constexpr int width = 256;
    std::vector<std::unique_ptr<PictureFrame>> frames;
    for (int grey = 0; grey < 200; ++grey) {
        const auto shade = static_cast<unsigned char>(grey);
        frames.push_back(std::make_unique<PictureFrame>(width, 64, shade, shade));
    }

    PictureMailbox mailbox;
    std::atomic<bool> done{false};
    std::thread worker([&] {
        for (int round = 0; round < 100; ++round) {
            for (const auto& frame : frames) {
                mailbox.Back().CopyFrom(*picturesOf(frame->record.asLibraryRecord()));
                mailbox.Publish();
            }
        }
        done = true;
    });
    int taken = 0;
    int torn = 0;
    while (!done || mailbox.HasNews()) {
        const PicturePair* const pair = mailbox.Take();
        if (pair == nullptr)
            continue;
        ++taken;
        const unsigned char shade = pair->Left().constScanLine(0)[0];
        const auto isWhole = [shade](const QImage& picture) {
            const unsigned char* const pixels = picture.constBits();
            return std::all_of(pixels, pixels + picture.sizeInBytes(), [shade](unsigned char p) { return p == shade; });
        };
        if (!isWhole(pair->Left()) || !isWhole(pair->Right()))
            ++torn;
    }
    worker.join();
    EXPECT_EQ(torn, 0);
    EXPECT_GT(taken, 0);
}

} // namespace
