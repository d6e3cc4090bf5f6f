// SPDX-License-Identifier: Apache-2.0
// The app "Frame Counter".

#include "FirstApp.h"

#include "FrameCountNode.h"

#include <apps/HostEnvironmentInterface.h>
#include <camera/VYRCameraDevice.h>

#include <QDockWidget>
#include <QLabel>

FirstApp::FirstApp() = default;

FirstApp::~FirstApp() = default;

void FirstApp::initialize(HostEnvironmentInterface* host)
{
    _host = host;
}

bool FirstApp::requiresCamera()
{
    return true;
}

QString FirstApp::name()
{
    return QStringLiteral("Frame Counter");
}

QString FirstApp::version()
{
    return QStringLiteral("1.0");
}

QString FirstApp::description()
{
    return QStringLiteral("Counts the frames that come from the camera.");
}

QIcon FirstApp::icon()
{
    return QIcon(); // the host shows none
}

void FirstApp::start()
{
    _framesShown = 0;
    _label = new QLabel(QStringLiteral("Waiting for frames"));
    _label->setAlignment(Qt::AlignCenter);
    _host->centralDock()->setWidget(_label);

    VYRCameraDevice* const camera = _host->cameraDevice();
    _node = std::make_unique<FrameCountNode>(); // a new one each time: its thread starts once
    _node->SetInputNode(camera);
    camera->OutputQueue().Clear();
    _node->StartProcessing(); // the consumer before the producer
    camera->StartProcessing();
}

void FirstApp::stop()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    _node->StopProcessing(); // the consumer first here, too
    camera->StopProcessing();
    camera->OutputQueue().Clear();
    _node.reset();

    delete _label; // the dock lets go of it, and is free for the next app
    _label = nullptr;
}

bool FirstApp::updatePending()
{
    return _node != nullptr && _node->Frames() != _framesShown;
}

void FirstApp::update()
{
    _framesShown = _node->Frames();
    _label->setText(QStringLiteral("%1 frames, %2 per second")
                        .arg(_framesShown)
                        .arg(static_cast<double>(_node->FramesPerSecond()), 0, 'f', 1));
}

bool FirstApp::handleKeyEvent(QEvent*)
{
    return false; // no key is ours
}

QWidget* FirstApp::createSettingsWidget(QWidget*)
{
    return nullptr; // nothing to set
}
