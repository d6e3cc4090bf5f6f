// SPDX-License-Identifier: Apache-2.0
// What the camera node's frame callback asks of the heap: exactly.

#include <FakeVYR.h>
#include <camera/VYRCameraDevice.h>
#include <tests/support/AllocationCount.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <memory>

namespace {

/// As many as the queue's list has in one block, so that every round goes through a whole block.
constexpr std::size_t framesPerRound = 64;

class FrameAllocation : public testing::Test
{
protected:
    FrameAllocation()
    {
        FakeVYR::reset();
        _device.StartProcessing();
        for (int i = 0; i < 200; ++i) { // past the first of everything
            emitFrame(0);
            consume();
        }
    }

    /// The allocations of `count` frames that a consumer keeps up with, without what the consumer itself asks for.
    std::size_t allocationsOf(std::size_t count)
    {
        std::size_t allocations = 0;
        for (std::size_t i = 0; i < count; ++i) {
            allocations += emitFrame(0);
            consume();
        }
        return allocations;
    }

    static std::size_t emitFrame(std::uint32_t timestamp)
    {
        const std::size_t before = allocationCount();
        FakeVYR::emitFrame(timestamp);
        return allocationCount() - before;
    }

    void consume()
    {
        if (NodeData* const item = _device.OutputQueue().Pop(0))
            item->Release();
    }

    VYRCameraDevice _device{5, 320, 240, 30.0F};
    QObject _receiver;
};

constexpr std::size_t frames = 10 * framesPerRound;
constexpr std::size_t rounds = frames / framesPerRound;

TEST_F(FrameAllocation, IsCounted)
{
    const std::size_t before = allocationCount();
    const auto text = std::make_unique<QString>(QString::number(12345));
    EXPECT_EQ(allocationCount() - before, 2U) << "one by operator new, one by Qt for the characters";
}

TEST_F(FrameAllocation, WithoutAReceiverIsNone)
{
    EXPECT_EQ(allocationsOf(frames), 0U);
}

TEST_F(FrameAllocation, WithADirectReceiverIsNone)
{
    QString last;
    QObject::connect(
        &_device, &VYRCameraDevice::QChanged, &_receiver, [&](const QString& text) { last = text; },
        Qt::DirectConnection);
    EXPECT_EQ(allocationsOf(frames), 0U);
    EXPECT_EQ(last, "0");
}

TEST_F(FrameAllocation, WithAQueuedReceiverIsTwoForQtsEventAndItsCopyOfTheText)
{
    int received = 0;
    QObject::connect(
        &_device, &VYRCameraDevice::QChanged, &_receiver, [&] { ++received; }, Qt::QueuedConnection);
    std::size_t allocations = 0;
    for (std::size_t i = 0; i < rounds; ++i) { // delivered in between, so that Qt's list of events does not grow
        allocationsOf(framesPerRound);
        QCoreApplication::processEvents();
    }
    for (std::size_t i = 0; i < rounds; ++i) {
        allocations += allocationsOf(framesPerRound);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(allocations, 2 * frames);
    EXPECT_EQ(static_cast<std::size_t>(received), 2 * frames);
}

TEST_F(FrameAllocation, WithAnEmptyPoolIsNone)
{
    for (int i = 0; i < 40; ++i)
        emitFrame(0);
    std::size_t allocations = 0;
    for (int i = 0; i < 640; ++i)
        allocations += emitFrame(0);
    EXPECT_EQ(allocations, 0U);
}

} // namespace
