// SPDX-License-Identifier: Apache-2.0
// Asking the camera library for its modes, and the lookups in them.

#include "ResolutionTable.h"

#include "SettingsLogging.h"

#include <camera/VYRLibrary.h>

#include <algorithm>

namespace {

// As floating-point numbers, which are exact for every real sensor and cannot overflow for nonsense.
double squaredDistance(int a, int b)
{
    const double distance = static_cast<double>(a) - b;
    return distance * distance;
}

// The mode for which `measure` gives least; the first of them on a tie. Modes that `accept` refuses do not
// count.
template<class Accept, class Measure>
std::optional<VYRResolutionInfo> least(const std::vector<VYRResolutionInfo>& modes, Accept accept, Measure measure)
{
    const VYRResolutionInfo* best = nullptr;
    double bestMeasure = 0.0;
    for (const VYRResolutionInfo& mode : modes) {
        if (!accept(mode))
            continue;
        const double modeMeasure = measure(mode);
        if (best == nullptr || modeMeasure < bestMeasure) {
            best = &mode;
            bestMeasure = modeMeasure;
        }
    }
    return best != nullptr ? std::optional<VYRResolutionInfo>(*best) : std::nullopt;
}

bool acceptAll(const VYRResolutionInfo&)
{
    return true;
}

// Whether `mode` has exactly this `height` or, `byHeight`, exactly this `width`.
bool inRow(const VYRResolutionInfo& mode, int width, int height, bool byHeight)
{
    return byHeight ? mode.width == width : mode.height == height;
}

std::vector<VYRResolutionInfo> modesOfCamera()
{
    std::array<VYRResolutionInfo, ResolutionTable::capacity> modes;
    const int count = EnumerateResolutions(modes.data(), ResolutionTable::capacity, VYRAny, VYRAny, VYRAny, VYRAnyFps);
    qCDebug(settingsLog) << "The camera library has" << count << "modes";
    return {modes.begin(), modes.begin() + std::clamp(count, 0, ResolutionTable::capacity)};
}

} // namespace

ResolutionTable::ResolutionTable(const std::vector<VYRResolutionInfo>& modes)
    : _slots{{{0, {}}, {1, {}}, {2, {}}, {4, {}}, {8, {}}, {5, {}}, {9, {}}, {6, {}}, {10, {}}}}
{
    for (Slot& slot : _slots) {
        std::copy_if(modes.begin(), modes.end(), std::back_inserter(slot.modes),
                     [&slot](const VYRResolutionInfo& mode) { return mode.binning == slot.binning; });
    }
}

const ResolutionTable& ResolutionTable::supported()
{
    static const ResolutionTable table(modesOfCamera());
    return table;
}

std::optional<ResolutionLimits> ResolutionTable::limits(int binning) const
{
    const Slot* found = slot(binning);
    if (found == nullptr)
        return std::nullopt;
    ResolutionLimits limits;
    for (const VYRResolutionInfo& mode : found->modes) {
        limits.minWidth = std::min(limits.minWidth, mode.width);
        limits.minHeight = std::min(limits.minHeight, mode.height);
        limits.maxWidth = std::max(limits.maxWidth, mode.width);
        limits.maxHeight = std::max(limits.maxHeight, mode.height);
    }
    return limits;
}

std::optional<VYRResolutionInfo> ResolutionTable::largest(int binning) const
{
    const Slot* found = slot(binning);
    if (found == nullptr)
        return std::nullopt;
    return least(found->modes, acceptAll,
                 [](const VYRResolutionInfo& mode) { return -static_cast<double>(mode.width) * mode.height; });
}

std::optional<VYRResolutionInfo> ResolutionTable::nearest(int width, int height, int binning) const
{
    const Slot* found = slot(binning);
    if (found == nullptr)
        return std::nullopt;
    return least(found->modes, acceptAll, [=](const VYRResolutionInfo& mode) {
        return squaredDistance(mode.width, width) + squaredDistance(mode.height, height);
    });
}

std::optional<VYRResolutionInfo> ResolutionTable::nearestInRow(int width, int height, int binning, bool byHeight) const
{
    const Slot* found = slot(binning);
    if (found == nullptr)
        return std::nullopt;
    return least(
        found->modes, [=](const VYRResolutionInfo& mode) { return inRow(mode, width, height, byHeight); },
        [=](const VYRResolutionInfo& mode) {
            return byHeight ? squaredDistance(mode.height, height) : squaredDistance(mode.width, width);
        });
}

std::optional<VYRResolutionInfo> ResolutionTable::nextInRow(const VYRResolutionInfo& current, int value,
                                                            bool byHeight) const
{
    const Slot* found = slot(current.binning);
    if (found == nullptr)
        return std::nullopt;
    const auto extent = [byHeight](const VYRResolutionInfo& mode) { return byHeight ? mode.height : mode.width; };
    const double direction = value > extent(current) ? 1.0 : -1.0;
    const auto ahead = [=](const VYRResolutionInfo& mode) {
        return (static_cast<double>(extent(mode)) - value) * direction;
    };
    return least(
        found->modes,
        [&](const VYRResolutionInfo& mode) {
            return inRow(mode, current.width, current.height, byHeight) && ahead(mode) >= 0.0;
        },
        ahead);
}

const ResolutionTable::Slot* ResolutionTable::slot(int binning) const
{
    const auto found =
        std::find_if(_slots.begin(), _slots.end(), [binning](const Slot& slot) { return slot.binning == binning; });
    return found != _slots.end() ? &*found : nullptr;
}
