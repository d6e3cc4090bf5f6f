// SPDX-License-Identifier: Apache-2.0
// What the settings library itself never frees. Included once by a program that is to run under the leak sanitizer.

#pragma once

#include <qcompilerdetection.h>

// A string that the scanner holds when the text breaks off, once a bad file.
// NOLINTBEGIN(bugprone-reserved-identifier,misc-definitions-in-headers): the name is the sanitizer's; see above
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return "leak:libconfig_yylex\nleak:strbuf_append\n";
}
// NOLINTEND(bugprone-reserved-identifier,misc-definitions-in-headers)
