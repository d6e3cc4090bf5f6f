// SPDX-License-Identifier: Apache-2.0
// The measuring ranges of the camera's inertial sensors.

#pragma once

/// Accelerometer range. The host passes values through unchanged; larger ones than those named here belong to cameras
/// yet to come.
enum VYRAccelRange : int {
    VYR_ACCEL_RANGE_2G = 0, ///< ±2 g
    VYR_ACCEL_RANGE_4G = 1, ///< ±4 g
    VYR_ACCEL_RANGE_8G = 2, ///< ±8 g
    VYR_ACCEL_RANGE_16G = 3 ///< ±16 g
};

/// Gyroscope range. Passed through unchanged as well.
enum VYRGyroRange : int {
    VYR_GYRO_RANGE_250 = 0,  ///< ±250 °/s
    VYR_GYRO_RANGE_500 = 1,  ///< ±500 °/s
    VYR_GYRO_RANGE_1000 = 2, ///< ±1000 °/s
    VYR_GYRO_RANGE_2000 = 3  ///< ±2000 °/s
};
