// SPDX-License-Identifier: Apache-2.0
// The camera's binning codes and their names.

#pragma once

#include "VYRCameraExport.h"

#include <QMap>
#include <QString>

/// The display names, "1x1" to "4x4" (horizontal × vertical), by binning code. Bits 0–1 of a code give the horizontal
/// binning as a power of two, bits 2–3 the vertical one: 0, 1, 2, 4, 5, 6, 8, 9 and 10. Process-wide, never changed.
/// Thread: any thread.
VYRCAMERA_EXPORT const QMap<int, QString>& binningNameByCode();

/// The codes by display name; its keys are in string order. Process-wide, never changed.
/// Thread: any thread.
VYRCAMERA_EXPORT const QMap<QString, int>& binningCodeByName();

/// The name of `code`; empty for one outside the table.
/// Thread: any thread.
VYRCAMERA_EXPORT QString binningName(int code);
