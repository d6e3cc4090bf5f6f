// SPDX-License-Identifier: Apache-2.0
// The app "Edges": the edges in the camera's left picture, live.

#pragma once

#include "EdgeMailbox.h"

#include <apps/AppInterface.h>

#include <QObject>

#include <memory>

class EdgeNode;
class EdgeView;
class QLabel;
class QSlider;

/// The plug-in object. Widgets and worker live from start() to stop(): a worker's thread starts once in its life, and
/// the docks are left as they were found.
/// Thread: GUI thread.
class EdgeApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    EdgeApp();
    ~EdgeApp() override;

    void initialize(HostEnvironmentInterface* host) override;
    bool requiresCamera() override;
    QString name() override;
    QString version() override;
    QString description() override;
    QIcon icon() override;
    void start() override;
    void stop() override;
    bool updatePending() override;
    void update() override;
    bool handleKeyEvent(QEvent* event) override;
    QWidget* createSettingsWidget(QWidget* parent) override;

private:
    void buildWidgets();
    QWidget* buildControls();
    void removeWidgets();
    /// For the user to read; empty when there will be pictures.
    QString whatPreventsPictures() const;
    void startStreaming();
    void stopStreaming();
    void setThreshold(int threshold);
    void setDarkOnLight(bool darkOnLight);
    void setFrozen(bool frozen);

    HostEnvironmentInterface* _host = nullptr;
    int _threshold = 40;       ///< 0 to 255
    bool _darkOnLight = false; ///< kept between runs
    bool _frozen = false;      ///< the picture stands still

    EdgeMailbox _mailbox;
    EdgePicture _shown;              ///< the GUI thread's own
    std::unique_ptr<EdgeNode> _node; ///< while started

    EdgeView* _view = nullptr;           ///< in the central dock while started
    QSlider* _thresholdSlider = nullptr; ///< in the side dock while started
    QLabel* _thresholdLabel = nullptr;   ///< beside the slider
    QLabel* _figures = nullptr;          ///< in the bottom dock while started
};
