// SPDX-License-Identifier: Apache-2.0
// The app "Stereo View": the camera's pictures, live, with the camera's controls beside them.

#include "StereoViewApp.h"

#include "ControlPanel.h"
#include "FrameLayout.h"
#include "GreyHistogram.h"
#include "PictureSaver.h"
#include "PictureView.h"
#include "StereoViewIcon.h"
#include "StereoViewNode.h"

#include <apps/HostEnvironmentInterface.h>
#include <apps/StatusBarText.h>
#include <apps/Translation.h>

#include <camera/VYRCameraDevice.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, "vyr.stereoview", QtWarningMsg)

using namespace std::chrono_literals;

constexpr auto streamInterval = 250ms;
constexpr auto storeDelay = 1000ms;
constexpr qint64 histogramInterval = 67; // ms, 15 a second

/// For how many milliseconds frames may stay away before the user is told: a second, or two frames and a half of a slow
/// mode.
qint64 patienceAt(float framesPerSecond)
{
    constexpr double aSecond = 1000.0;
    return std::llround(framesPerSecond > 0.0F ? std::max(aSecond, 2.5 * aSecond / framesPerSecond) : aSecond);
}

} // namespace

StereoViewApp::StereoViewApp()
{
    if (loadTranslation(_translator, QStringLiteral("StereoViewApp"), QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&_translator);
    _saving.setMaxThreadCount(1);
    // A stop does not wait for pictures that are being saved, only the end of the program does: they are copies.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { _saving.waitForDone(); });
    _streamTimer.setInterval(streamInterval);
    connect(&_streamTimer, &QTimer::timeout, this, &StereoViewApp::checkStream);
    _storeTimer.setInterval(storeDelay);
    _storeTimer.setSingleShot(true);
    connect(&_storeTimer, &QTimer::timeout, this, &StereoViewApp::storeChoices);
}

StereoViewApp::~StereoViewApp() = default;

void StereoViewApp::initialize(HostEnvironmentInterface* host)
{
    _host = host;
}

bool StereoViewApp::requiresCamera()
{
    return true;
}

QString StereoViewApp::name()
{
    return QStringLiteral("Stereo View"); // what the settings file knows it by, in every language
}

QString StereoViewApp::version()
{
    return QStringLiteral("1.0");
}

QString StereoViewApp::description()
{
    return tr("Shows both pictures of the camera live, sets exposure, gain and light, and saves pictures.");
}

QIcon StereoViewApp::icon()
{
    return stereoViewIcon();
}

QWidget* StereoViewApp::createSettingsWidget(QWidget*)
{
    return nullptr; // everything there is to set is in the side dock
}

void StereoViewApp::start()
{
    stop(); // a second start is a fresh one
    _layoutKnown = isFrameLayoutKnown(frameLayoutName());
    if (!_layoutKnown)
        qCDebug(log) << "unknown picture layout" << frameLayoutName();
    buildWidgets();
    connectCamera();
    startStreaming();
    checkStream();
    _streamTimer.start();
}

void StereoViewApp::buildWidgets()
{
    _view = new PictureView;
    _panel = new ControlPanel;
    _host->centralDock()->setWidget(_view);
    _host->sideDock()->setWidget(_panel);
    _view->show(); // a dock shows only what it is given while it is hidden itself
    _panel->show();

    connect(_panel, &ControlPanel::arrangementChanged, _view, &PictureView::setArrangement);
    connect(_panel, &ControlPanel::saveRequested, this, &StereoViewApp::savePictures);
    // Loaded once: where nothing can be stored, the user's choices still last as long as the program.
    if (!_choices)
        _choices = loadViewChoices();
    _panel->setChoices(*_choices);
    connect(_panel, &ControlPanel::choicesChanged, &_storeTimer, QOverload<>::of(&QTimer::start));
}

void StereoViewApp::connectCamera()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    const ViewChoices choices = _panel->choices();
    camera->Exposure(choices.exposure);
    camera->Gain(choices.gain);
    camera->Led(choices.led);
    camera->HFlip(choices.horizontalFlip);
    camera->VFlip(choices.verticalFlip);
    connect(_panel, &ControlPanel::exposureChanged, camera, &VYRCameraDevice::Exposure);
    connect(_panel, &ControlPanel::gainChanged, camera, &VYRCameraDevice::Gain);
    connect(_panel, &ControlPanel::ledChanged, camera, &VYRCameraDevice::Led);
    connect(_panel, &ControlPanel::horizontalFlipChanged, camera, &VYRCameraDevice::HFlip);
    connect(_panel, &ControlPanel::verticalFlipChanged, camera, &VYRCameraDevice::VFlip);
    connect(_panel, &ControlPanel::swapCamerasChanged, camera, &VYRCameraDevice::SwapCameras);
    connect(_panel, &ControlPanel::undistortChanged, camera, &VYRCameraDevice::Undistort);
}

void StereoViewApp::startStreaming()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    _mailbox.Clear();
    _lastShown = 0;
    _lastUnreadable = 0;
    const VYRResolutionInfo mode = _host->currentResolution();
    _patience = patienceAt(mode.fps);
    // Without a camera nothing is wrong with the mode.
    _modeKnown = !camera->IsOpen() || camera->IsResolutionSupported(mode.binning, mode.width, mode.height, mode.fps);
    _sinceLastFrame.start();
    _sinceLastUnreadable.invalidate();
    _sinceLastHistogram.invalidate();

    // The consumer first, so that it stands ready. Step by step rather than by an ImageProcessingPipeline, which owns
    // its nodes: the camera is the host's.
    _node = std::make_unique<StereoViewNode>(_mailbox, _layoutKnown);
    _node->SetInputNode(camera);
    camera->OutputQueue().Clear();
    _node->StartProcessing();
    camera->StartProcessing();

    // The camera node does not remember these two, so they are sent again with every start.
    const ViewChoices choices = _panel->choices();
    camera->SwapCameras(choices.swapCameras);
    camera->Undistort(choices.undistort);
}

void StereoViewApp::stop()
{
    if (_node == nullptr)
        return;
    _streamTimer.stop();
    stopStreaming();
    storeChoices();
    removeWidgets();
}

void StereoViewApp::stopStreaming()
{
    // The worker first: when the camera stops, it takes all frames back. What is still queued then is nobody's.
    VYRCameraDevice* const camera = _host->cameraDevice();
    _node->StopProcessing();
    camera->StopProcessing();
    camera->OutputQueue().Clear();
    _node.reset();
}

void StereoViewApp::removeWidgets()
{
    // A dock lets go of a widget that is deleted, and then has none.
    delete std::exchange(_view, nullptr);
    delete std::exchange(_panel, nullptr);
    _shown = nullptr;
}

bool StereoViewApp::updatePending()
{
    return _mailbox.HasNews();
}

void StereoViewApp::update()
{
    const PicturePair* const pair = _mailbox.Take();
    if (pair == nullptr || _view == nullptr)
        return;
    _shown = pair;
    _view->showPair(pair);
    _view->setMessage(QString());

    if (_sinceLastHistogram.isValid() && _sinceLastHistogram.elapsed() < histogramInterval)
        return;
    _sinceLastHistogram.start();
    _panel->showHistograms(histogramOf(pair->Left()), histogramOf(pair->Right()));
}

bool StereoViewApp::handleKeyEvent(QEvent* event)
{
    if (event->type() != QEvent::KeyPress || _view == nullptr)
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_S || (key->modifiers() & ~Qt::ShiftModifier) != Qt::NoModifier)
        return false;
    if (!key->isAutoRepeat()) // one press, one pair
        savePictures();
    return true;
}

void StereoViewApp::storeChoices()
{
    _storeTimer.stop();
    if (_panel == nullptr)
        return;
    _choices = _panel->choices();
    storeViewChoices(*_choices);
}

void StereoViewApp::checkStream()
{
    const StreamCounts counts = _node->Counts();
    if (counts.shown != _lastShown)
        _sinceLastFrame.start();
    if (counts.unreadable != _lastUnreadable)
        _sinceLastUnreadable.start();
    _view->setMessage(streamMessage());
    showFigures();
    _lastShown = counts.shown;
    _lastUnreadable = counts.unreadable;
}

bool StereoViewApp::isFlowing() const
{
    return _sinceLastFrame.elapsed() < _patience;
}

bool StereoViewApp::isUnreadable() const
{
    return _sinceLastUnreadable.isValid() && _sinceLastUnreadable.elapsed() < _patience;
}

QString StereoViewApp::streamMessage() const
{
    if (!_layoutKnown) {
        return tr("The pictures cannot be shown:\n"
                  "the picture layout of this camera library is not known.");
    }
    if (isFlowing())
        return QString();
    if (isUnreadable())
        return tr("The camera's frames cannot be read");
    if (!_modeKnown)
        return tr("The camera has no such mode.\nChoose one under Settings, Camera.");
    return tr("No frames from the camera");
}

void StereoViewApp::showFigures()
{
    StreamFigures figures;
    figures.counts = _node->Counts();
    figures.pictureSize = _shown == nullptr ? QSize() : _shown->Size();
    figures.nodeMilliseconds = _node->TakeAverageMilliseconds();
    figures.flowing = isFlowing();
    _panel->showFigures(figures);
}

void StereoViewApp::savePictures()
{
    if (_shown == nullptr) {
        sayProblem(tr("There is no picture to save yet"));
        return;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QDateTime now = QDateTime::currentDateTime();
    // Copies of our own: the pair changes with the next frame, while encoding takes as long as one or two of them.
    const QImage left = _shown->Left().copy();
    const QImage right = _shown->Right().copy();
    _saving.start([this, folder, now, left, right] {
        const SaveOutcome outcome = savePicturePair(folder, now, left, right);
        QMetaObject::invokeMethod(
            this, [this, outcome] { reportSave(outcome); }, Qt::QueuedConnection);
    });
}

void StereoViewApp::reportSave(const SaveOutcome& outcome)
{
    // Without the folder: the status bar is as wide as its text, and a long path would widen the window.
    if (!outcome.saved) {
        sayProblem(tr("Saving to the pictures folder failed: %1").arg(outcome.problem));
        return;
    }
    say(tr("Saved %1").arg(outcome.fileBase));
    if (_panel != nullptr)
        _panel->showSaved(outcome.fileBase, QDir::toNativeSeparators(outcome.folder));
}

void StereoViewApp::say(const QString& text)
{
    if (StatusBarText* const field = _host->statusText(1))
        field->setStatusText(text);
}

void StereoViewApp::sayProblem(const QString& text)
{
    if (StatusBarText* const field = _host->statusText(1))
        field->setStatusTextColored(text.toHtmlEscaped(), Qt::red);
}
