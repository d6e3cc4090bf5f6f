// SPDX-License-Identifier: Apache-2.0
// The app's icon.

#pragma once

#include <QIcon>

/// Two overlapping pictures, one warm and one cold, drawn in sizes up to 144 pixels.
/// Thread: GUI thread.
QIcon stereoViewIcon();
