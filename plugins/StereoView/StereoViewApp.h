// SPDX-License-Identifier: Apache-2.0
// The app "Stereo View": the camera's pictures, live, with the camera's controls beside them.

#pragma once

#include "PictureMailbox.h"
#include "ViewChoices.h"

#include <apps/AppInterface.h>

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QTranslator>

#include <cstdint>
#include <memory>
#include <optional>

class ControlPanel;
class PictureView;
class QColor;
class StereoViewNode;
struct SaveOutcome;

/// The plug-in object. Widgets and worker live from start() to stop(): a node's thread starts once in its life, and
/// docks are left as they were found.
/// Thread: GUI thread.
class StereoViewApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    StereoViewApp();
    ~StereoViewApp() override;

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
    void removeWidgets();
    void connectCamera();
    void startStreaming();
    void stopStreaming();
    void storeChoices();
    void checkStream();
    void showFigures();
    bool isFlowing() const;
    bool isUnreadable() const;
    QString streamMessage() const;
    void savePictures();
    void reportSave(const SaveOutcome& outcome);
    void say(const QString& text);
    void sayProblem(const QString& text);

    QTranslator _translator; ///< empty where texts are English
    HostEnvironmentInterface* _host = nullptr;
    PictureView* _view = nullptr;   ///< in the central dock while started
    ControlPanel* _panel = nullptr; ///< in the side dock while started
    PictureMailbox _mailbox;
    const PicturePair* _shown = nullptr;   ///< in the mailbox; the pair on the screen, if there is one
    std::unique_ptr<StereoViewNode> _node; ///< while started
    std::optional<ViewChoices> _choices;   ///< as stored last; none before the first start
    bool _layoutKnown = false;
    bool _modeKnown = false;      ///< whether the camera has the mode that it was started in
    std::uint64_t _lastShown = 0; ///< frames at the last look, to see whether more are coming
    std::uint64_t _lastUnreadable = 0;
    QElapsedTimer _sinceLastFrame;
    QElapsedTimer _sinceLastUnreadable; ///< invalid before the first one
    qint64 _patience = 0;               ///< ms without a frame until the user is told
    QElapsedTimer _sinceLastHistogram;
    QTimer _streamTimer; ///< looks at the stream now and then
    QTimer _storeTimer;  ///< stores choices when the user has stopped changing them
    QThreadPool _saving; ///< one thread that encodes pictures
};
