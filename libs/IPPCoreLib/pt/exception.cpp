// SPDX-License-Identifier: Apache-2.0
// The exception of the thread library.

#include "exception.h"

namespace pt {

exception::~exception() = default;

} // namespace pt
