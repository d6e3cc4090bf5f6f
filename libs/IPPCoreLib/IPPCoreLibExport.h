// SPDX-License-Identifier: Apache-2.0
// Marks what libIPPCoreLib.so offers to the host and to apps.

#pragma once

/// Visible on both sides of the library boundary. The importing side needs it as well: type information and
/// tables of virtual operations that the compiler emits there must be merged with the library's own.
#define IPPCORELIB_EXPORT __attribute__((visibility("default")))
