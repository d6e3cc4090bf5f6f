// SPDX-License-Identifier: Apache-2.0
// The root class of the thread library.

#include "unknown.h"

namespace pt {

unknown::~unknown() = default;

} // namespace pt
