// SPDX-License-Identifier: Apache-2.0
// What Qt's offscreen platform itself never frees. Included once by a program that is to run under the leak sanitizer.

#pragma once

#include <qcompilerdetection.h>

// An application without a line of ours leaks as much.
// NOLINTBEGIN(bugprone-reserved-identifier, misc-definitions-in-headers): the sanitizer's name; included once
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen\nleak:QScreen::QScreen\nleak:QWindowSystemInterface\n";
}
// NOLINTEND(bugprone-reserved-identifier, misc-definitions-in-headers)
