// SPDX-License-Identifier: Apache-2.0
// How recorded pictures of any size come onto the sensors.

#include "SensorFit.h"

#include "../SensorGeometry.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace simulator {

SensorFit::SensorFit(cv::Size picture)
{
    const double scale =
        std::min(static_cast<double>(sensorWidth) / picture.width, static_cast<double>(sensorHeight) / picture.height);
    _place.width = std::clamp(cvRound(picture.width * scale), 1, sensorWidth);
    _place.height = std::clamp(cvRound(picture.height * scale), 1, sensorHeight);
    _place.x = (sensorWidth - _place.width) / 2;
    _place.y = (sensorHeight - _place.height) / 2;
    _scaleX = static_cast<double>(_place.width) / picture.width;
    _scaleY = static_cast<double>(_place.height) / picture.height;
}

cv::Mat SensorFit::apply(const cv::Mat& picture) const
{
    if (picture.cols == sensorWidth && picture.rows == sensorHeight)
        return picture.isContinuous() ? picture : picture.clone();
    cv::Mat sensor = cv::Mat::zeros(sensorHeight, sensorWidth, CV_8UC1);
    cv::resize(picture, sensor(_place), _place.size(), 0.0, 0.0, _scaleX < 1.0 ? cv::INTER_AREA : cv::INTER_LINEAR);
    return sensor;
}

cv::Matx33d SensorFit::cameraMatrix(const cv::Matx33d& ofPicture) const
{
    cv::Matx33d result = ofPicture;
    result(0, 0) *= _scaleX;
    result(0, 1) *= _scaleX;
    result(1, 1) *= _scaleY;
    // Pixel 0 reaches from -0.5 to 0.5.
    result(0, 2) = (ofPicture(0, 2) + 0.5) * _scaleX - 0.5 + _place.x;
    result(1, 2) = (ofPicture(1, 2) + 0.5) * _scaleY - 0.5 + _place.y;
    return result;
}

} // namespace simulator
