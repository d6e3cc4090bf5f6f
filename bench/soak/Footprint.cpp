// SPDX-License-Identifier: Apache-2.0
// What this process holds just now.

#include "Footprint.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <malloc.h>
#include <unistd.h>

namespace {

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::size_t residentPages()
{
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident;
}

} // namespace

Footprint Footprint::measure()
{
    const struct mallinfo2 heap = mallinfo2();
    return {residentPages() * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), heap.uordblks + heap.hblkhd,
            entriesOf("/proc/self/fd"), entriesOf("/proc/self/task")};
}
