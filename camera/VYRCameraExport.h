// SPDX-License-Identifier: Apache-2.0
// Marks what libVYRCamera.so offers to the host and to apps.

#pragma once

/// Visible on both sides of the library boundary, so that type information is merged across it.
#define VYRCAMERA_EXPORT __attribute__((visibility("default")))
