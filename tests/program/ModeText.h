// SPDX-License-Identifier: Apache-2.0
// A capture mode as a line of the log has it.

#pragma once

#include <camera/VYRResolutionInfo.h>

#include <sstream>
#include <string>

/// For instance "256x240 binning 5 at 24".
inline std::string modeText(const VYRResolutionInfo& mode)
{
    std::ostringstream text;
    text << mode.width << 'x' << mode.height << " binning " << mode.binning << " at " << mode.fps;
    return text.str();
}
