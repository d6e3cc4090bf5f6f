// SPDX-License-Identifier: Apache-2.0
// The exception of the thread library.

#pragma once

#include "unknown.h"

namespace pt {

/// Thrown as a pointer to an object on the heap: `throw new pt::exception;`. Whoever catches it deletes it.
class IPPCORELIB_EXPORT exception : public unknown
{
public:
    /// An exception that says nothing but that it is one.
    exception() = default;
    ~exception() override;
};

} // namespace pt
