// SPDX-License-Identifier: Apache-2.0
// Undistortion of a recording by the calibration that came with it.

#pragma once

#include "SensorFit.h"

#include <opencv2/core/mat.hpp>

#include <array>
#include <filesystem>

namespace simulator {

/// Removes the lenses' distortion and turns both pictures so that the same point lies on the same row in both, cut to
/// where both sensors saw something.
class Rectification
{
public:
    /// Reads M1, D1, M2, D2, R and T, as OpenCV writes them, which hold for the pictures that `fit` was made for.
    /// Throws UnreadableRecording when one of them is missing or has another shape.
    Rectification(const std::filesystem::path& calibration, const SensorFit& fit);

    /// Rectifies a sensor's picture. The eye is 0 or 1. Thread: any thread.
    void apply(int eye, const cv::Mat& sensor, cv::Mat& rectified) const;

private:
    struct Maps
    {
        cv::Mat positions;
        cv::Mat weights;
    };

    std::array<Maps, 2> _maps;
};

} // namespace simulator
