// SPDX-License-Identifier: Apache-2.0
// What this process holds just now.

#include "Footprint.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <malloc.h>

namespace {

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::size_t anonymousKilobytes()
{
    // Counted page by page: what /proc/self/status and statm tell may be off by as much as is looked for.
    std::ifstream memory("/proc/self/smaps_rollup");
    std::string word;
    while (memory >> word && word != "Anonymous:") {
    }
    std::size_t kilobytes = 0;
    memory >> kilobytes;
    return kilobytes;
}

} // namespace

Footprint Footprint::measure()
{
    const struct mallinfo2 heap = mallinfo2();
    return {anonymousKilobytes() * 1024, heap.uordblks + heap.hblkhd, entriesOf("/proc/self/fd"),
            entriesOf("/proc/self/task")};
}
