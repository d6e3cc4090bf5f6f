// SPDX-License-Identifier: Apache-2.0
// The camera's controls, as last set.

#include "Controls.h"

#include <algorithm>
#include <cmath>

namespace simulator {

double percentOf(double value)
{
    return value > 0.0 ? std::min(value, 100.0) : 0.0;
}

double brightnessFactor(const Controls& controls)
{
    const double exposure = controls.exposure > 0.0 ? controls.exposure / 50.0 : 1.0;
    const double gain = controls.gain > 0.0 ? std::exp2((controls.gain - 50.0) / 25.0) : 1.0;
    return exposure * gain;
}

} // namespace simulator
