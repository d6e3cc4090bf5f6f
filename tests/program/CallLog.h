// SPDX-License-Identifier: Apache-2.0
// The one file in which everybody who takes part in a run of the program notes what happens.

#pragma once

#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <unistd.h>

/// Appends a line to the file that VYR_TEST_LOG names. Lines stand in the order in which they were noted,
/// whichever library or thread they come from, since each is written in one piece.
/// Thread: any thread.
inline void noteCall(const std::string& line)
{
    const char* const path = std::getenv("VYR_TEST_LOG");
    if (path == nullptr)
        return;
    const std::string text = line + '\n';
    const int descriptor = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written != static_cast<ssize_t>(text.size()))
        std::abort(); // a run without its log proves nothing
    ::close(descriptor);
}
