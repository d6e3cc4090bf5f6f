// SPDX-License-Identifier: Apache-2.0
// The calls that bring a file onto the disk, noted and made to fail.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

/// The test program defines these POSIX functions itself, in front of the C library's, so that the code under test
/// calls them here. They are noted, then fail if told to, else do the real thing.
namespace FileCalls {

struct Call
{
    std::string name; ///< "fsync" or "rename"
    ino_t file;       ///< what is flushed or renamed
    off_t size;       ///< of it, at that moment
    bool isFolder;
};

/// All calls since it was last cleared.
extern std::vector<Call> calls;

/// The number of the call that fails with EIO, counting from 0 at the last clearing; -1 for none.
extern int failing;

/// If set, called with the name of each call before that does anything.
extern std::function<void(const std::string& name)> before;

} // namespace FileCalls
