// SPDX-License-Identifier: Apache-2.0
// The capture modes that the camera supports, grouped by binning.

#pragma once

#include <camera/VYRResolutionInfo.h>

#include <array>
#include <optional>
#include <vector>

/// The smallest and largest width and height of the modes of one binning, in binned pixels.
///
/// For a binning without modes each value is the one that the search starts with, so minima exceed maxima.
struct ResolutionLimits
{
    int minWidth = 16777215;
    int minHeight = 16777215;
    int maxWidth = 0;
    int maxHeight = 0;
};

/// All supported capture modes: nine slots, one a binning, each with its modes in the order in which the
/// camera library enumerated them. On a tie every lookup keeps the mode that was enumerated first.
///
/// A binning code that is none of the nine is unknown: every lookup returns nothing for it.
///
/// Thread: any thread; a table never changes.
class ResolutionTable
{
public:
    /// How many modes the camera library is asked for at most.
    static constexpr int capacity = 32768;

    /// Sorts `modes` into the slots. Modes with an unknown binning code are left out.
    explicit ResolutionTable(const std::vector<VYRResolutionInfo>& modes);

    /// The table of the camera, asked of the camera library at the first call and kept until the process
    /// ends.
    ///
    /// Thread: GUI thread, for it calls the camera library. Needs 768 KB of stack at the first call.
    static const ResolutionTable& supported();

    /// The limits of a binning; those of an empty slot are the start values of ResolutionLimits.
    std::optional<ResolutionLimits> limits(int binning) const;

    /// The mode with the most pixels; nothing for a binning without modes.
    std::optional<VYRResolutionInfo> largest(int binning) const;

    /// The mode with the smallest squared distance in width and height; nothing for a binning without modes.
    std::optional<VYRResolutionInfo> nearest(int width, int height, int binning) const;

    /// The mode of exactly this `height` that is nearest in width or, `byHeight`, the mode of exactly this
    /// `width` that is nearest in height; nothing when no mode is that high, or that wide.
    std::optional<VYRResolutionInfo> nearestInRow(int width, int height, int binning, bool byHeight) const;

    /// The first mode that a search meets which starts at width `value` and moves on in the direction in
    /// which `value` lies from the width of `current`, among the modes of the binning and height of
    /// `current`. `byHeight`, the same of heights, at the width of `current`. Nothing when there is none up
    /// to the limits of the binning.
    std::optional<VYRResolutionInfo> nextInRow(const VYRResolutionInfo& current, int value, bool byHeight) const;

private:
    struct Slot
    {
        int binning;
        std::vector<VYRResolutionInfo> modes;
    };

    const Slot* slot(int binning) const;

    std::array<Slot, 9> _slots;
};
