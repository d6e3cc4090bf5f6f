// SPDX-License-Identifier: Apache-2.0
// The exchange of a flag word.

#include "exchange_flag.h"

#include <array>
#include <cstdint>
#include <mutex>

namespace pt {

namespace {

constexpr std::size_t lock_count = 29;

// Guards each flag whose address, modulo the number of locks, picks the mutex. Constant-initialised, so that
// threads started by other static objects find it ready.
std::array<std::mutex, lock_count> flag_locks;

} // namespace

int exchange_flag(int* flag, int value)
{
    const std::size_t index = reinterpret_cast<std::uintptr_t>(flag) % lock_count;
    const std::lock_guard<std::mutex> guard(flag_locks[index]);
    const int previous = *flag;
    *flag = value;
    return previous;
}

} // namespace pt
