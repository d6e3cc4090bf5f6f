// SPDX-License-Identifier: Apache-2.0
// An app that notes in which mode it is started and what frames reach it.

#include "WitnessApp.h"

#include "CallLog.h"
#include "ModeText.h"

#include <apps/HostEnvironmentInterface.h>
#include <camera/StereoFrame.h>
#include <camera/VYRCameraDevice.h>
#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>
#include <libs/IPPCoreLib/pt/trigger.h>

#include <VYRFrame1.h>

#include <QSize>
#include <QThread>

namespace {

/// What the witness has been told to do badly.
bool has(const char* trouble)
{
    return qgetenv("VYR_TEST_TROUBLE") == trouble;
}

/// How many frames the camera has queued, once there is no room for more, or there should not be.
std::string queued(const VYRCameraDevice& camera)
{
    while (camera.Size() < 31)
        QThread::msleep(10);
    return " with " + std::to_string(camera.Size()) + " frames queued";
}

} // namespace

/// Notes the size of the pictures: that of the first frame, and each other one later.
class SizeNode final : public ImageProcessingNodeWithThread
{
public:
    /// With `holdsFrames` it keeps its first frame until LetGo().
    explicit SizeNode(bool holdsFrames)
        : _holdsFrames(holdsFrames)
    {
    }

    ~SizeNode() override
    {
        StopProcessing(); // the worker ends before the members go that it uses
    }

    void Close() override {}

    void Process(NodeData* item) override
    {
        const auto* const frame = static_cast<StereoFrame*>(item);
        const auto* const record = reinterpret_cast<const VYRFrame1*>(frame->record);
        const QSize size(record->width, record->height);
        if (size != _size) {
            _size = size;
            noteCall("witness frame " + std::to_string(size.width()) + 'x' + std::to_string(size.height()));
        }
        if (_holdsFrames)
            _letGo.wait();
    }

    /// Thread: GUI thread.
    void LetGo() { _letGo.post(); }

private:
    const bool _holdsFrames;
    pt::trigger _letGo{false, false}; ///< once posted, it stays so
    QSize _size;                      ///< of the last frame; only the worker uses it
};

WitnessApp::WitnessApp() = default;

WitnessApp::~WitnessApp() = default;

void WitnessApp::initialize(HostEnvironmentInterface* host)
{
    _host = host;
}

bool WitnessApp::requiresCamera()
{
    return true;
}

QString WitnessApp::name()
{
    return QStringLiteral("Witness");
}

QString WitnessApp::version()
{
    return QString();
}

QString WitnessApp::description()
{
    return QString();
}

QIcon WitnessApp::icon()
{
    return QIcon();
}

void WitnessApp::start()
{
    noteCall("witness start " + modeText(_host->currentResolution()));
    VYRCameraDevice* const camera = _host->cameraDevice();
    _node = std::make_unique<SizeNode>(has("worker"));
    _node->SetInputNode(camera);
    camera->OutputQueue().Clear();
    if (has("start")) {
        camera->StartProcessing();
        QThread::sleep(2);
        noteCall("witness started" + queued(*camera));
        _node->StartProcessing();
        return;
    }
    _node->StartProcessing();
    camera->StartProcessing();
}

void WitnessApp::stop()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    noteCall(has("worker") ? "witness stop" + queued(*camera) : "witness stop");
    _node->LetGo();
    _node->StopProcessing();
    camera->StopProcessing();
    camera->OutputQueue().Clear();
    _node.reset();
}

bool WitnessApp::updatePending()
{
    return false;
}

void WitnessApp::update()
{
}

bool WitnessApp::handleKeyEvent(QEvent*)
{
    return false;
}

QWidget* WitnessApp::createSettingsWidget(QWidget*)
{
    return nullptr;
}
