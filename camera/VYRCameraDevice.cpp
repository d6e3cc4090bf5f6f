// SPDX-License-Identifier: Apache-2.0
// The camera as the source node of the processing framework.

#include "VYRCameraDevice.h"

#include "BinningNames.h"
#include "LiveDevice.h"
#include "VYRLibrary.h"

#include <QLoggingCategory>

#include <cstring>
#include <limits>
#include <vector>

namespace {

Q_LOGGING_CATEGORY(log, "vyr.camera", QtWarningMsg)

constexpr auto relaxed = std::memory_order_relaxed;

constexpr float temperatureUnknown = -1.0F;

/// No measuring window is open: every timestamp lies below, so that the next frame opens one.
constexpr std::uint64_t noWindow = std::numeric_limits<std::uint64_t>::max();

constexpr double secondsPerTick = 0.0001; // the library's timestamps count 100 µs
constexpr double windowLength = 1.0;      // s

/// Two 8-bit pictures per frame, in mebibytes: 2 / 1048576.
constexpr float mebibytesPerPixel = 1.0F / 524288.0F;

/// The queue's length in decimal. The texts are made once, by the first frame of all, so that none of the later ones
/// asks the heap for its text. They are never destroyed: frames may still arrive while the process exits.
QString lengthText(std::int32_t length)
{
    static const auto* const texts = [] {
        constexpr int lengths = 32; // a node's queue has 31 places
        auto* const made = new std::vector<QString>;
        made->reserve(lengths);
        for (int i = 0; i < lengths; ++i)
            made->push_back(QString::number(i));
        return made;
    }();
    const auto index = static_cast<std::size_t>(length);
    return index < texts->size() ? (*texts)[index] : QString::number(length);
}

} // namespace

VYRCameraDevice::VYRCameraDevice()
    : QObject(nullptr)
    , _binning(0)
    , _width(0)
    , _height(0)
    , _fps(0.0F)
    , _temperature(temperatureUnknown)
    , _lastTimestamp(noWindow)
    , _live(LiveDevice::Reserve())
{
    OpenCamera();
}

VYRCameraDevice::VYRCameraDevice(int binning, int width, int height, float fps)
    : QObject(nullptr)
    , _binning(binning)
    , _width(width)
    , _height(height)
    , _fps(fps)
    , _temperature(temperatureUnknown)
    , _lastTimestamp(noWindow)
    , _live(LiveDevice::Reserve())
{
    OpenCamera();
    if (!IsOpen())
        return;

    // Deliberate, though the test looks upside down: a known mode is applied by StartProcessing(), while the camera is
    // told of an unknown one right here, with the record as the library left it, so that the camera falls back to a
    // mode of its own choice before anybody asks for its frame size.
    VYRResolutionInfo record; // not cleared, see above
    if (FindResolution(record) == 0)
        __VYRParamSet__(Instance(), VYRResolution, record);
}

VYRCameraDevice::~VYRCameraDevice()
{
    StopStreaming();
    // Before the camera is closed, so that a callback that is still inside has its record until it leaves.
    _live->Retire();
    VYRCameraDevice::Close();
    _frameCache.ReleaseCacheObjects();
}

void VYRCameraDevice::OpenCamera()
{
    _live->Admit(this);
    SetName("VYRCamera");
    _frameCache.InitCacheObjects();
    void* handle = nullptr;
    if (OpenVYR(&handle))
        _instance.store(handle, relaxed);
    else
        qCDebug(log, "no camera could be opened");
}

void VYRCameraDevice::StartProcessing()
{
    if (!IsOpen())
        return;
    VYRResolutionInfo record;
    if (FindResolution(record) == 0) {
        qCDebug(log) << "the camera has no mode" << ResolutionKey() << "at" << _fps << "frames per second";
        return;
    }
    _frameCache.ReleaseAll();

    void* const instance = Instance();
    __VYRParamSet__(instance, VYRResolution, record);
    __VYRParamSet__(instance, VYRHorizontalFlip, static_cast<int>(_horizontalFlip));
    __VYRParamSet__(instance, VYRVerticalFlip, static_cast<int>(_verticalFlip));
    // Deliberate: the exposure is followed by a zero, which the camera library takes from its argument list.
    __VYRParamSet__(instance, VYRExposure, static_cast<double>(_exposure), 0);
    __VYRParamSet__(instance, VYRGain, static_cast<double>(_gain));
    __VYRParamSet__(instance, VYRLed, static_cast<double>(_led));

    _streaming.store(StartVYR(instance, &VYRCameraDevice::FrameCallback, this, true), relaxed);
    if (!_streaming.load(relaxed))
        qCDebug(log, "the camera library did not start");

    int width = _width.load(relaxed);
    int height = _height.load(relaxed);
    __VYRParamGet__(instance, VYRFrameSize, &width, &height);
    _width.store(width, relaxed);
    _height.store(height, relaxed);

    ResetMeasurement();
    emit InfoChanged(StatusText(0.0F, temperatureUnknown));
}

void VYRCameraDevice::StopProcessing()
{
    StopStreaming();
}

void VYRCameraDevice::StopStreaming()
{
    if (!IsOpen() || !_streaming.load(relaxed))
        return;
    // Cleared before the library is stopped, so that a callback that is still running ignores its frame.
    _streaming.store(false);
    StopVYR(Instance());
    // A library may come back from that while its callback is still inside. Whoever was already handing a frame over
    // has done so before all frames count as free, and nobody will afterwards.
    _live->HandOvers().WaitUntilNone();
    _frameCache.ReleaseAll();
}

void VYRCameraDevice::Close()
{
    if (!IsOpen())
        return;
    CloseVYR(Instance());
    _instance.store(nullptr);
    _live->HandOvers().WaitUntilNone();
}

void VYRCameraDevice::Process(NodeData*)
{
}

void VYRCameraDevice::SetResolution(int binning, int width, int height, float fps)
{
    const bool unchanged = width == _width.load(relaxed) && height == _height.load(relaxed) && fps == _fps
                        && binning == _binning.load(relaxed);
    if (unchanged)
        return;

    ResetMeasurement();
    // Deliberate: announced before the new values are stored, so the text names the mode that has just ended, and the
    // new mode is named when the camera really runs in it.
    emit InfoChanged(StatusText(0.0F, temperatureUnknown));
    _binning.store(binning, relaxed);
    _width.store(width, relaxed);
    _height.store(height, relaxed);
    _fps = fps;
}

void VYRCameraDevice::UpdateInfo()
{
    emit InfoChanged(StatusText(_measuredFps.load(relaxed), _temperature.load(relaxed)));
}

QString VYRCameraDevice::StatusText(float measuredFps, float temperature) const
{
    const int width = _width.load(relaxed);
    const int height = _height.load(relaxed);
    // In single precision and in this order, as the figure has always been computed. The unit is MiB/s; the label says
    // MB/s, which is kept because people's scripts read it.
    const float rate = measuredFps * mebibytesPerPixel * static_cast<float>(width) * static_cast<float>(height);
    const QString name = binningName(_binning.load(relaxed));
    QString text = QStringLiteral("Resolution: %1x%2, Binning: %3, FPS: %4, Rate: %5 MB/s")
                       .arg(QString::number(width), QString::number(height), name)
                       .arg(static_cast<double>(measuredFps), 8, 'f', 3)
                       .arg(static_cast<double>(rate), 8, 'f', 3);
    if (temperature != temperatureUnknown)
        text += QStringLiteral(", Temp: %1 \u00B0C").arg(static_cast<double>(temperature), 8, 'f', 3);
    return text;
}

QString VYRCameraDevice::DeviceName() const
{
    return TextParameter(VYRDeviceName);
}

QString VYRCameraDevice::SerialNumber() const
{
    return TextParameter(VYRSerialNumber);
}

QString VYRCameraDevice::FirmwareVersion() const
{
    return TextParameter(VYRFirmwareVersion);
}

QString VYRCameraDevice::FirmwareBuildTime() const
{
    return TextParameter(VYRFirmwareBuildTime);
}

QString VYRCameraDevice::TextParameter(int id) const
{
    if (!IsOpen())
        return QString(); // without a camera nobody would write into the buffer
    // Deliberate: neither cleared before the call nor is the result checked; the text is what the library left, up to
    // the first zero byte or the end of the buffer.
    char buffer[VYRTextSize];
    __VYRParamGet__(Instance(), id, buffer);
    return QString::fromUtf8(buffer, static_cast<int>(strnlen(buffer, sizeof(buffer))));
}

QString VYRCameraDevice::LibraryVersion() const
{
    return QString::fromUtf8(GetLibVersion());
}

bool VYRCameraDevice::IsResolutionSupported(int binning, int width, int height, float fps) const
{
    VYRResolutionInfo record;
    return IsOpen() && EnumerateResolutions(&record, 1, width, height, binning, fps) > 0;
}

QString VYRCameraDevice::ResolutionKey() const
{
    return QStringLiteral("R%1x%2_B%3")
        .arg(QString::number(_width.load(relaxed)), QString::number(_height.load(relaxed)),
             binningName(_binning.load(relaxed)));
}

std::int64_t VYRCameraDevice::Parameter18() const
{
    return NumberParameter(VYRParameter18);
}

std::int64_t VYRCameraDevice::Parameter19() const
{
    return NumberParameter(VYRParameter19);
}

std::int64_t VYRCameraDevice::NumberParameter(int id) const
{
    std::int64_t value = 0; // as wide as anything that a library may write through one pointer
    if (IsOpen())
        __VYRParamGet__(Instance(), id, &value);
    return value;
}

void VYRCameraDevice::Exposure(int val)
{
    _exposure = val;
    if (!IsOpen())
        return;
    // The trailing zero as in StartProcessing().
    __VYRParamSet__(Instance(), VYRExposure, static_cast<double>(val), 0);
    ResetFrameRateWindow();
}

void VYRCameraDevice::Gain(int val)
{
    _gain = val;
    if (!IsOpen())
        return;
    __VYRParamSet__(Instance(), VYRGain, static_cast<double>(val));
    ResetFrameRateWindow();
}

void VYRCameraDevice::Led(int val)
{
    _led = val;
    if (!IsOpen())
        return;
    __VYRParamSet__(Instance(), VYRLed, static_cast<double>(val));
    ResetFrameRateWindow();
}

void VYRCameraDevice::HFlip(bool val)
{
    _horizontalFlip = val ? 1 : 0;
    if (!IsOpen())
        return;
    __VYRParamSet__(Instance(), VYRHorizontalFlip, val ? 1 : 0);
    ResetFrameRateWindow();
}

void VYRCameraDevice::VFlip(bool val)
{
    _verticalFlip = val ? 1 : 0;
    if (!IsOpen())
        return;
    __VYRParamSet__(Instance(), VYRVerticalFlip, val ? 1 : 0);
    ResetFrameRateWindow();
}

void VYRCameraDevice::SwapCameras(bool val)
{
    if (IsOpen())
        __VYRParamSet__(Instance(), VYRSwapCameras, val ? 1 : 0);
}

void VYRCameraDevice::Undistort(bool val)
{
    if (IsOpen())
        __VYRParamSet__(Instance(), VYRUndistort, val ? 1 : 0);
}

void VYRCameraDevice::IMURange(VYRAccelRange accel, VYRGyroRange gyro)
{
    if (IsOpen())
        __VYRParamSet__(Instance(), VYRImuRange, accel, gyro);
}

void VYRCameraDevice::FrameCallback(const VYRFrameRecord* record, void* userData)
{
    const LiveDevice::Visit visit(userData); // a library may call back after the node is gone
    if (visit)
        static_cast<VYRCameraDevice*>(userData)->OnFrame(record);
}

void VYRCameraDevice::OnFrame(const VYRFrameRecord* record)
{
    if (!IsOpen() || !_streaming.load(relaxed))
        return;
    SmoothTemperature(*record);
    MeasureFrameRate(*record);
    emit QChanged(lengthText(Size()));
    HandOver(record);
}

void VYRCameraDevice::HandOver(const VYRFrameRecord* record)
{
    // Looked at again, since receivers of the signals may have kept this callback for long, or have stopped the camera
    // or closed it themselves. Nobody else's code runs in here, so that a stop never waits longer than for these few
    // steps.
    const CallbackCount::Stay stay(_live->HandOvers());
    if (_instance.load() == nullptr || !_streaming.load())
        return;
    const float measuredFps = _measuredFps.load(relaxed);
    StereoFrame* const frame = _frameCache.Acquire();
    if (frame == nullptr)
        return;
    frame->owner = this;
    frame->record = record;
    frame->fps = measuredFps;
    // Deliberate: the result is ignored. A frame that a full queue refuses is not given back: its slot stays taken
    // until streaming is next started or stopped. A consumer that takes none thus empties the pool, and does not keep
    // the camera busy with filling and refusing the last slot. That costs one slot at most: without it, the pool is
    // empty before the queue is full.
    OutputQueue().Push(frame);
}

void VYRCameraDevice::SmoothTemperature(const VYRFrameRecord& record)
{
    if (record.hasSensorData == 0)
        return;
    const float previous = _temperature.load(relaxed);
    _temperature.store(previous == temperatureUnknown ? record.temperature : (previous + record.temperature) * 0.5F,
                       relaxed);
}

void VYRCameraDevice::MeasureFrameRate(const VYRFrameRecord& record)
{
    const std::uint64_t timestamp = record.timestamp;
    const std::int32_t frames = _frameCount.load(relaxed) + 1;
    _frameCount.store(frames, relaxed);

    const std::uint64_t windowStart = _lastTimestamp.load(relaxed);
    if (timestamp < windowStart) { // no window is open, or the library's counter has started again
        _lastTimestamp.store(timestamp, relaxed);
        _frameCount.store(0, relaxed);
        return;
    }
    const double elapsed = static_cast<double>(timestamp - windowStart) * secondsPerTick;
    if (elapsed < windowLength)
        return;
    _lastTimestamp.store(timestamp, relaxed);
    _frameCount.store(0, relaxed);
    _measuredFps.store(static_cast<float>(frames / elapsed), relaxed);
    UpdateInfo();
}

void VYRCameraDevice::ResetMeasurement()
{
    _measuredFps.store(0.0F, relaxed);
    _temperature.store(temperatureUnknown, relaxed);
    _frameCount.store(0, relaxed);
    ResetFrameRateWindow();
}

void VYRCameraDevice::ResetFrameRateWindow()
{
    _lastTimestamp.store(noWindow, relaxed);
}

int VYRCameraDevice::FindResolution(VYRResolutionInfo& record) const
{
    return EnumerateResolutions(&record, 1, _width.load(relaxed), _height.load(relaxed), _binning.load(relaxed), _fps);
}
