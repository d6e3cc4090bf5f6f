// SPDX-License-Identifier: Apache-2.0
// The end of the process when a thread primitive fails or is misused.

#pragma once

#include <libs/IPPCoreLib/IPPCoreLibExport.h>

namespace pt {

/// Codes of the thread library's own fatal errors. The process exits with the low eight bits.
enum fatal_code : int {
    fatal_thread_create = 0xC0028,    ///< exit status 40
    fatal_primitive_create = 0xC0029, ///< exit status 41: a trigger or a timed semaphore
    fatal_wait_for_self = 0xC002F,    ///< exit status 47
    fatal_wait_for_autofree = 0xC0030 ///< exit status 48
};

/// Takes the code and the message of a fatal error. May return: the process ends all the same.
using fatal_handler = void (*)(int code, const char* message);

/// Replaces the process-wide handler and returns the previous one; null installs none, so that nothing is
/// printed. The initial handler writes "\nInternal [%04x]: %s\n" with code and message to standard error.
/// Thread: any thread.
IPPCORELIB_EXPORT fatal_handler set_fatal_handler(fatal_handler handler);

/// Calls the handler, if one is installed, then ends the process with `exit(code)`. Never returns.
/// Thread: any thread.
[[noreturn]] IPPCORELIB_EXPORT void fatal(int code, const char* message);

} // namespace pt
