// SPDX-License-Identifier: Apache-2.0
// How recorded pictures of any size come onto the sensors.

#pragma once

#include <opencv2/core/mat.hpp>

namespace simulator {

/// Where a picture of another size than the sensor's lies on the sensor: scaled to be whole and as large as can be,
/// its sides in proportion, in the middle, with black around it.
class SensorFit
{
public:
    explicit SensorFit(cv::Size picture);

    /// Brings a picture (of the size this was made for, 8-bit grey) onto a sensor.
    cv::Mat apply(const cv::Mat& picture) const;

    /// The camera matrix of the picture as one of the sensor.
    cv::Matx33d cameraMatrix(const cv::Matx33d& ofPicture) const;

private:
    cv::Rect _place;
    double _scaleX;
    double _scaleY;
};

} // namespace simulator
