// SPDX-License-Identifier: Apache-2.0
// System calls of a process, forbidden, so that a test can tell that there are none.

#pragma once

/// Whether this build and kernel can do it: not under a sanitizer, whose run-time library makes calls of its own.
bool canForbidSystemCalls();

/// From now on every system call but the one of endProcess() ends the process by a signal. For good: to be called in a
/// child process.
void forbidSystemCalls();

/// Ends the process at once, without the C library's farewell.
[[noreturn]] void endProcess(int status);
