// SPDX-License-Identifier: Apache-2.0
// The app "Edges": the edges in the camera's left picture, live.

#include "EdgeApp.h"

#include "EdgeNode.h"
#include "EdgeView.h"
#include "LeftPicture.h"

#include <apps/HostEnvironmentInterface.h>
#include <apps/StatusBarText.h>
#include <camera/VYRCameraDevice.h>

#include <QCheckBox>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPolygon>
#include <QSettings>
#include <QSlider>
#include <QVBoxLayout>

namespace {

constexpr int thresholdStep = 5;

constexpr char darkOnLightKey[] = "DarkOnLight";

/// The user's choices between runs: a file of the app's own.
class Choices : public QSettings
{
public:
    Choices()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("VYRDashboard"),
                    QStringLiteral("EdgeApp"))
    {
    }
};

/// A dock that is on the screen already wants to be told to show what is put into it.
void put(QWidget* widget, QDockWidget* dock)
{
    dock->setWidget(widget);
    widget->show();
}

/// The edges of a box, drawn at twice the size at which the settings dialog shows them, for dense screens.
QPixmap drawnIcon()
{
    QPixmap pixmap(144, 144);
    pixmap.fill(Qt::black);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 5.0));
    painter.drawRect(28, 52, 64, 64);
    painter.drawPolyline(QPolygon({{28, 52}, {52, 28}, {116, 28}, {116, 92}, {92, 116}}));
    painter.drawLine(92, 52, 116, 28);
    return pixmap;
}

} // namespace

EdgeApp::EdgeApp() = default;

EdgeApp::~EdgeApp() = default;

void EdgeApp::initialize(HostEnvironmentInterface* host)
{
    _host = host;
    _darkOnLight = Choices().value(darkOnLightKey, false).toBool();
}

bool EdgeApp::requiresCamera()
{
    return true;
}

QString EdgeApp::name()
{
    return QStringLiteral("Edges");
}

QString EdgeApp::version()
{
    return QStringLiteral("1.0");
}

QString EdgeApp::description()
{
    return QStringLiteral("Shows the edges in the camera's left picture.");
}

QIcon EdgeApp::icon()
{
    return QIcon(drawnIcon());
}

void EdgeApp::start()
{
    _frozen = false;
    _shown = EdgePicture();
    _mailbox.Clear();
    buildWidgets();
    const QString obstacle = whatPreventsPictures();
    if (obstacle.isEmpty())
        startStreaming();
    else
        _view->setMessage(obstacle);
}

void EdgeApp::stop()
{
    if (_node != nullptr)
        stopStreaming();
    removeWidgets();
}

void EdgeApp::buildWidgets()
{
    _view = new EdgeView(_shown);
    _view->setMessage(QStringLiteral("Waiting for the camera"));
    _view->setDarkOnLight(_darkOnLight);
    put(_view, _host->centralDock());

    put(buildControls(), _host->sideDock());

    _figures = new QLabel;
    _figures->setMargin(6);
    put(_figures, _host->bottomDock()); // hidden until there are figures; the host hides it whenever the app changes
}

QWidget* EdgeApp::buildControls()
{
    auto* const controls = new QWidget;
    _thresholdLabel = new QLabel;
    _thresholdSlider = new QSlider(Qt::Horizontal);
    _thresholdSlider->setRange(0, 255);
    _thresholdSlider->setValue(_threshold);
    _thresholdSlider->setAccessibleName(QStringLiteral("Threshold"));
    _thresholdSlider->setToolTip(QStringLiteral("What is weaker is no edge (keys + and -)"));
    connect(_thresholdSlider, &QSlider::valueChanged, this, &EdgeApp::setThreshold);

    auto* const layout = new QVBoxLayout(controls);
    layout->addWidget(_thresholdLabel);
    layout->addWidget(_thresholdSlider);
    layout->addStretch();

    setThreshold(_threshold);
    return controls;
}

void EdgeApp::removeWidgets()
{
    // A dock lets go of a widget that is deleted, and then has none.
    delete _host->centralDock()->widget();
    delete _host->sideDock()->widget();
    delete _host->bottomDock()->widget();
    _host->bottomDock()->hide();
    _view = nullptr;
    _thresholdSlider = nullptr;
    _thresholdLabel = nullptr;
    _figures = nullptr;
}

QString EdgeApp::whatPreventsPictures() const
{
    if (!canReadPictures())
        return QStringLiteral("The pictures of this camera library cannot be read.");
    const VYRResolutionInfo mode = _host->currentResolution();
    if (!_host->cameraDevice()->IsResolutionSupported(mode.binning, mode.width, mode.height, mode.fps))
        return QStringLiteral("The camera has no such mode. Choose one under Settings, Camera.");
    return QString();
}

void EdgeApp::startStreaming()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    _node = std::make_unique<EdgeNode>(_mailbox, _threshold); // a new one each time: its thread starts once
    _node->SetInputNode(camera);
    camera->OutputQueue().Clear();
    _node->StartProcessing(); // the consumer before the producer
    camera->StartProcessing();
}

void EdgeApp::stopStreaming()
{
    VYRCameraDevice* const camera = _host->cameraDevice();
    _node->StopProcessing(); // the consumer first here, too: when the camera stops, it takes all frames back
    camera->StopProcessing();
    camera->OutputQueue().Clear();
    _node.reset();
}

bool EdgeApp::updatePending()
{
    return !_frozen && _mailbox.HasNews();
}

void EdgeApp::update()
{
    if (!_mailbox.Fetch(_shown))
        return;
    _view->update();
    _figures->setText(QStringLiteral("Edges on %1 % of the picture, %2 frames per second")
                          .arg(_shown.edgeShare * 100.0, 0, 'f', 1)
                          .arg(static_cast<double>(_shown.framesPerSecond), 0, 'f', 1));
    _host->bottomDock()->show();
}

bool EdgeApp::handleKeyEvent(QEvent* event)
{
    if (event->type() != QEvent::KeyPress || _view == nullptr)
        return false;
    const auto* const press = static_cast<QKeyEvent*>(event);
    if ((press->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0)
        return false; // the menus'
    switch (press->key()) {
    case Qt::Key_Plus:
        _thresholdSlider->setValue(_threshold + thresholdStep);
        return true;
    case Qt::Key_Minus:
        _thresholdSlider->setValue(_threshold - thresholdStep);
        return true;
    case Qt::Key_Space:
        if (!press->isAutoRepeat()) // held down, it is pressed once
            setFrozen(!_frozen);
        return true;
    default:
        return false; // nobody's of ours; the host goes on with it
    }
}

QWidget* EdgeApp::createSettingsWidget(QWidget* parent)
{
    auto* const tab = new QWidget(parent);
    auto* const darkOnLight = new QCheckBox(QStringLiteral("Dark edges on a light ground"));
    darkOnLight->setChecked(_darkOnLight);
    connect(darkOnLight, &QCheckBox::toggled, this, &EdgeApp::setDarkOnLight);

    auto* const layout = new QVBoxLayout(tab);
    layout->addWidget(darkOnLight);
    layout->addStretch();
    return tab;
}

void EdgeApp::setThreshold(int threshold)
{
    _threshold = threshold;
    _thresholdLabel->setText(QStringLiteral("Threshold: %1").arg(threshold));
    if (_node != nullptr)
        _node->SetThreshold(threshold);
}

void EdgeApp::setDarkOnLight(bool darkOnLight)
{
    _darkOnLight = darkOnLight;
    Choices().setValue(darkOnLightKey, darkOnLight);
    if (_view != nullptr) // an app that is not current has a settings tab all the same
        _view->setDarkOnLight(darkOnLight);
}

void EdgeApp::setFrozen(bool frozen)
{
    _frozen = frozen;
    if (StatusBarText* const field = _host->statusText(1)) // clears itself after a second
        field->setStatusText(frozen ? QStringLiteral("The picture stands still") : QStringLiteral("Live again"));
}
