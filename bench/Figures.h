// SPDX-License-Identifier: Apache-2.0
// How a benchmark program reports what it has measured.

#pragma once

#include <cstdio>
#include <string>

/// Prints one measured figure on standard output, for bench/table.py: what was asked, with its unit, who answered, and
/// the value, tab-separated. Our own contender is called "ours".
inline void printFigure(const std::string& question, const std::string& contender, double value)
{
    std::printf("%s\t%s\t%.9g\n", question.c_str(), contender.c_str(), value);
    std::fflush(stdout);
}
