// SPDX-License-Identifier: Apache-2.0
// The camera as the source node of the processing framework.

#pragma once

#include "StereoFrameCache.h"
#include "VYRCameraExport.h"
#include "VYRRanges.h"

#include <libs/IPPCoreLib/ImageProcessingNode.h>

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>

class LiveDevice;
struct VYRResolutionInfo;

/// The one source node: owns the camera, applies capture mode and controls, and pushes every frame that the camera
/// library calls back with into its own output queue, as a pooled StereoFrame. Measures the frame rate over windows of
/// at least one second of camera time and publishes a one-line status text per window.
///
/// States:
///  - closed (Instance() is null): opening failed, or Close() was called. Control slots only store their values.
///  - open, idle: after construction and after StopProcessing().
///  - streaming: after a StartProcessing() that found its mode and whose library start succeeded.
///
/// An app joins by ImageProcessingNode::SetInputNode(), clears OutputQueue(), starts its own nodes and then this one;
/// it stops in the same order, nodes first, and clears the queue again. There is one consumer: who takes a frame from
/// the queue has it alone.
///
/// At the limits: with all 32 frames of the pool out, a camera frame is dropped; with a full output queue (31) the
/// frame is dropped and its pool slot stays taken until streaming is next started or stopped. Neither is reported.
///
/// What holds whatever the camera library does, also when it goes on calling back after it was stopped or closed, or
/// on several threads:
///  - after StopProcessing() and after Close() no frame is pushed. After StopProcessing() the pool is whole, unless the
///    camera had been closed before. A callback that is inside may still be with the receivers of a signal; it drops
///    its frame then. Stopping does not wait for receivers.
///  - destruction waits for the callbacks that are inside, receivers of their signals included; later ones are ignored.
///    So a receiver with a direct connection must neither wait for the GUI thread nor destroy the device.
///
/// Ownership: owns the camera handle and the frame pool; frames it pushes are lent. The consumer must be stopped before
/// this object goes.
/// Thread: lives on the GUI thread; everything is called there unless it says otherwise. The signals are emitted on the
/// camera callback thread too.
class VYRCAMERA_EXPORT VYRCameraDevice : public QObject, public ImageProcessingNode
{
    Q_OBJECT

public:
    /// Opens the camera without a capture mode; StartProcessing() finds none until SetResolution().
    VYRCameraDevice();

    /// Opens the camera for a mode: binning code (BinningNames.h), size in pixels, frames per second, all unchecked.
    /// When opening fails the object is valid and closed. The host does this; apps are given the node.
    VYRCameraDevice(int binning, int width, int height, float fps);

    /// Stops streaming and closes the camera.
    ~VYRCameraDevice() override;

    /// Starts streaming in the stored mode with the stored controls, with a fresh frame pool, and emits InfoChanged().
    /// Does nothing while closed, or when the camera knows no such mode; nobody is told. While streaming it starts the
    /// camera again, and every frame that is out counts as free: stop first.
    void StartProcessing() override;

    /// Stops streaming and takes all frames back into the pool, also those that are still queued: whoever stops the
    /// camera clears its output queue. Does nothing unless streaming.
    void StopProcessing() override;

    /// Closes the camera for good; does nothing when it is closed. Not for apps: the camera is the host's.
    void Close() override;

    /// Does nothing: a camera has no input.
    void Process(NodeData* item) override;

    /// Whether a camera is open. Thread: any thread.
    bool IsOpen() const { return Instance() != nullptr; }

    /// The camera library's handle; null while closed. Thread: any thread.
    void* Instance() const { return _instance.load(std::memory_order_relaxed); }

    /// Sets the capture mode for the next StartProcessing(): binning code, size in pixels, frames per second,
    /// unchecked. New values emit InfoChanged() with the previous resolution and a rate of 0; the stored values emit
    /// nothing. To be called while stopped. The host does this when the user chooses a mode; it does not learn of an
    /// app's.
    void SetResolution(int binning, int width, int height, float fps);

    /// Builds the status text from the current measurements and emits InfoChanged(). Thread: any thread.
    void UpdateInfo();

    /// The camera's name, at most 256 bytes of UTF-8, as it and the next three are; empty while closed. What the camera
    /// library gives is not checked.
    QString DeviceName() const;
    /// The camera's serial number.
    QString SerialNumber() const;
    /// The version of the camera's firmware.
    QString FirmwareVersion() const;
    /// When the camera's firmware was built, in the camera's own words.
    QString FirmwareBuildTime() const;

    /// The camera library's version; a null string when it has none.
    QString LibraryVersion() const;

    /// Whether the open camera has this mode: binning code, size in pixels, frames per second within the mode's bounds.
    /// False while closed. -1 for a value means any.
    bool IsResolutionSupported(int binning, int width, int height, float fps) const;

    /// The current mode as a key for files and settings, such as "R640x480_B2x2", for instance of a calibration.
    /// Thread: any thread.
    QString ResolutionKey() const;

    /// A value of the camera library whose meaning is the library's own; 0 while closed and when it gives none.
    std::int64_t Parameter18() const;
    /// Another one, likewise.
    std::int64_t Parameter19() const;

    /// The pool that frames are lent from: the node's own, for as long as that lives. Thread: any thread.
    StereoFrameCache& FrameCache() { return _frameCache; }

signals:
    /// The status text: resolution, binning, frames per second, data rate (labelled MB/s, counted in 2²⁰ bytes) and,
    /// once known, temperature in degrees Celsius. Once a second of camera time, and at every start.
    /// Thread: GUI thread and camera callback thread.
    void InfoChanged(QString infoString);

    /// The number of frames waiting in the output queue, in decimal, once per frame. Thread: camera callback thread.
    void QChanged(QString infoString);

public slots:
    // Controls. Those of the first five are remembered and applied by the next StartProcessing(), also when they were
    // set while no camera was open; they begin a new frame-rate window. Numbers are passed on unchecked.

    /// Sets the exposure, in the camera library's units: for the simulated camera 1 to 100, in percent of the longest.
    /// 0 leaves it to the camera. Remembered: the next StartProcessing() applies it, also when no camera is open now.
    void Exposure(int val);
    /// Sets the gain, in the camera library's units: for the simulated camera 1 to 100, where 50 is neutral and 25 more
    /// doubles. 0 leaves it to the camera. Remembered.
    void Gain(int val);
    /// Sets the brightness of the LED, in the camera library's units: for the simulated camera 0 (off) to 100, in
    /// percent. Remembered.
    void Led(int val);
    /// Mirrors each picture left to right. Remembered.
    void HFlip(bool val);
    /// Turns each picture upside down. Remembered.
    void VFlip(bool val);

    // Controls that the camera keeps to itself: without a camera they do nothing, and nothing is remembered.

    /// Swaps the left and the right picture. Not remembered: sent again by whoever wants it after the next start.
    void SwapCameras(bool val);
    /// Undistorts the pictures. Not remembered either.
    void Undistort(bool val);
    /// Sets the ranges of the inertial sensors; values are passed on unchecked. Not remembered either.
    void IMURange(VYRAccelRange accel, VYRGyroRange gyro);

private:
    static void FrameCallback(const VYRFrameRecord* record, void* userData);

    void OpenCamera();
    void OnFrame(const VYRFrameRecord* record);
    void HandOver(const VYRFrameRecord* record);
    void SmoothTemperature(const VYRFrameRecord& record);
    void MeasureFrameRate(const VYRFrameRecord& record);
    void ResetMeasurement();
    void ResetFrameRateWindow();
    void StopStreaming();
    int FindResolution(VYRResolutionInfo& record) const;
    QString StatusText(float measuredFps, float temperature) const;
    QString TextParameter(int id) const;
    std::int64_t NumberParameter(int id) const;

    // What the camera callback thread reads or writes as well is atomic, relaxed: every value stands for itself, and a
    // frame that meets a half-made change is measured or labelled wrongly once, which nobody sees.
    std::atomic<std::int32_t> _binning;
    std::atomic<std::int32_t> _width;
    std::atomic<std::int32_t> _height;
    float _fps; ///< the requested frame rate
    std::uint8_t _verticalFlip = 0;
    std::uint8_t _horizontalFlip = 0;
    std::atomic<void*> _instance{nullptr};
    std::int32_t _exposure = 0;
    std::int32_t _gain = 0;
    std::int32_t _led = 0;
    std::atomic<std::int32_t> _frameCount{0};
    std::atomic<float> _measuredFps{0.0F};
    std::atomic<float> _temperature;           ///< degrees Celsius, or temperatureUnknown
    std::atomic<std::uint64_t> _lastTimestamp; ///< opened the current window, in 100 µs, or noWindow
    std::atomic<bool> _streaming{false};       ///< not relaxed where it closes the hand-over of frames
    StereoFrameCache _frameCache;
    LiveDevice* const _live; ///< borrowed from the list of living nodes
};

static_assert(sizeof(std::atomic<float>) == sizeof(float), "same place as a plain float");
static_assert(sizeof(std::atomic<void*>) == sizeof(void*), "same place as a plain pointer");
static_assert(sizeof(std::atomic<std::uint64_t>) == sizeof(std::uint64_t), "same place as a plain 64-bit word");
