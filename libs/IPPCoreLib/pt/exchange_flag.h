// SPDX-License-Identifier: Apache-2.0
// The exchange of a flag word.

#pragma once

#include <libs/IPPCoreLib/IPPCoreLibExport.h>

namespace pt {

/// Stores `value` into `*flag` and returns what stood there, as one step towards every other exchange_flag()
/// on the same flag. Flags are spread over 29 process-wide mutexes; unrelated ones may share a mutex.
/// Thread: any thread. Holds no lock when it returns.
IPPCORELIB_EXPORT int exchange_flag(int* flag, int value);

} // namespace pt
