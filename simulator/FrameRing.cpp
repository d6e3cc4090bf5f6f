// SPDX-License-Identifier: Apache-2.0
// The memory of the frames: records and pictures, reused in turn.

#include "FrameRing.h"

#include "SensorGeometry.h"

#include <cstdlib>
#include <new>

namespace simulator {

namespace {

constexpr std::size_t pageSize = 4096;
constexpr std::size_t recordSpace = 128; // records apart from each other, on cache lines of their own

constexpr std::size_t roundedUp(std::size_t size, std::size_t step)
{
    return (size + step - 1) / step * step;
}

constexpr std::size_t pictureSpace = roundedUp(sensorArea, pageSize);
constexpr std::size_t recordsSpace = roundedUp(FrameRing::capacity * recordSpace, pageSize);

static_assert(sizeof(VYRFrame1) <= recordSpace);

} // namespace

void FrameRing::Release::operator()(void* memory) const
{
    std::free(memory);
}

FrameRing::FrameRing()
    : _memory(std::aligned_alloc(pageSize, recordsSpace + capacity * 2 * pictureSpace))
{
    if (_memory == nullptr)
        throw std::bad_alloc();
}

FrameSlot FrameRing::next()
{
    const std::size_t index = _next;
    _next = (_next + 1) % capacity;

    auto* const bytes = static_cast<std::uint8_t*>(_memory.get());
    std::uint8_t* const left = bytes + recordsSpace + index * 2 * pictureSpace;
    std::uint8_t* const right = left + pictureSpace;
    auto* const record = new (bytes + index * recordSpace) VYRFrame1{};
    record->recordSize = sizeof(VYRFrame1);
    record->left.place = 0; // on 32 bit the address fills only half of its place
    record->left.pixels = left;
    record->right.place = 0;
    record->right.pixels = right;
    return {record, left, right};
}

} // namespace simulator
