// SPDX-License-Identifier: Apache-2.0
// What this program is called.

#pragma once

namespace Identity {

constexpr char applicationName[] = "VYR Dashboard";
constexpr char applicationVersion[] = "1.0.35.226";

} // namespace Identity
