// SPDX-License-Identifier: Apache-2.0
// The calls that bring a file onto the disk, noted and made to fail.

#include "FileCalls.h"

#include <cerrno>
#include <cstdio>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace FileCalls {

std::vector<Call> calls;
int failing = -1;
std::function<void(const std::string& name)> before;

namespace {

/// Notes a call; false when it is to fail.
bool note(const char* name, const struct stat& status)
{
    if (before)
        before(name);
    calls.push_back({name, status.st_ino, status.st_size, S_ISDIR(status.st_mode)});
    if (static_cast<int>(calls.size()) - 1 != failing)
        return true;
    errno = EIO;
    return false;
}

} // namespace

} // namespace FileCalls

#pragma GCC visibility push(default)

extern "C" {

int fsync(int descriptor)
{
    struct stat status = {};
    ::fstat(descriptor, &status);
    if (!FileCalls::note("fsync", status))
        return -1;
    return reinterpret_cast<decltype(&fsync)>(::dlsym(RTLD_NEXT, "fsync"))(descriptor);
}

int rename(const char* from, const char* to) noexcept
{
    struct stat status = {};
    ::lstat(from, &status);
    if (!FileCalls::note("rename", status))
        return -1;
    return reinterpret_cast<decltype(&rename)>(::dlsym(RTLD_NEXT, "rename"))(from, to);
}

} // extern "C"

#pragma GCC visibility pop
