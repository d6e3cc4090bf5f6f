// SPDX-License-Identifier: Apache-2.0
// Undistortion of a recording by the calibration that came with it.

#include "Rectification.h"

#include "../SensorGeometry.h"
#include "Recording.h"

#include <opencv2/calib3d.hpp>
#include <opencv2/core/persistence.hpp>
#include <opencv2/imgproc.hpp>

#include <string>

namespace simulator {

namespace {

class Calibration
{
public:
    explicit Calibration(const std::filesystem::path& file)
        : _file(file.string())
    {
        try {
            _storage.open(_file, cv::FileStorage::READ);
        } catch (const cv::Exception&) {
            // Told below.
        }
        if (!_storage.isOpened())
            throw UnreadableRecording(_file + ": cannot be read as a calibration");
    }

    /// A matrix of 64-bit numbers; 0 rows or columns stand for any number of them.
    cv::Mat matrix(const char* name, int rows, int columns) const
    {
        cv::Mat result;
        try {
            _storage[name] >> result;
        } catch (const cv::Exception&) {
            result.release();
        }
        if (result.empty() || (rows != 0 && result.rows != rows) || (columns != 0 && result.cols != columns))
            throw UnreadableRecording(_file + ": has no matrix " + name + " of the right shape");
        result.convertTo(result, CV_64F);
        return result;
    }

private:
    std::string _file;
    cv::FileStorage _storage;
};

} // namespace

Rectification::Rectification(const std::filesystem::path& calibration, const SensorFit& fit)
{
    const Calibration read(calibration);
    const std::array<cv::Matx33d, 2> cameras = {fit.cameraMatrix(read.matrix("M1", 3, 3)),
                                                fit.cameraMatrix(read.matrix("M2", 3, 3))};
    const std::array<cv::Mat, 2> distortions = {read.matrix("D1", 0, 0), read.matrix("D2", 0, 0)};
    const cv::Mat rotation = read.matrix("R", 3, 3);
    const cv::Mat translation = read.matrix("T", 3, 1);
    const cv::Size size(sensorWidth, sensorHeight);
    try {
        std::array<cv::Mat, 2> turns;
        std::array<cv::Mat, 2> projections;
        cv::Mat depths;
        cv::stereoRectify(cameras[0], distortions[0], cameras[1], distortions[1], size, rotation, translation, turns[0],
                          turns[1], projections[0], projections[1], depths, cv::CALIB_ZERO_DISPARITY, 0.0);
        for (std::size_t eye = 0; eye < 2; ++eye) {
            cv::initUndistortRectifyMap(cameras[eye], distortions[eye], turns[eye], projections[eye], size, CV_16SC2,
                                        _maps[eye].positions, _maps[eye].weights);
        }
    } catch (const cv::Exception&) {
        throw UnreadableRecording(calibration.string() + ": is no calibration of two cameras");
    }
}

void Rectification::apply(int eye, const cv::Mat& sensor, cv::Mat& rectified) const
{
    const Maps& maps = _maps[static_cast<std::size_t>(eye)];
    cv::remap(sensor, rectified, maps.positions, maps.weights, cv::INTER_LINEAR);
}

} // namespace simulator
