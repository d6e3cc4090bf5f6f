// SPDX-License-Identifier: Apache-2.0
// Lets the program that includes this, once, overlook what Qt's offscreen platform never frees.

#pragma once

#include "OffscreenLeaks.h"

#include <qcompilerdetection.h>

// NOLINTBEGIN(bugprone-reserved-identifier, misc-definitions-in-headers): the sanitizer's name; included once
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return offscreenLeaks;
}
// NOLINTEND(bugprone-reserved-identifier, misc-definitions-in-headers)
