// SPDX-License-Identifier: Apache-2.0
// The controls beside the pictures.

#pragma once

#include "StereoViewNode.h"
#include "ViewChoices.h"

#include <QScrollArea>

struct GreyHistogram;
class HistogramView;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QGridLayout;
class QLabel;
class QSlider;
class QVBoxLayout;

/// What the panel tells of the stream.
struct StreamFigures
{
    StreamCounts counts;
    QSize pictureSize;             ///< empty while there is no picture
    double nodeMilliseconds = 0.0; ///< the worker's time per frame
    bool flowing = false;          ///< whether frames are coming
};

/// Camera controls, arrangement, histogram and figures in a panel 275 pixels wide or wider; scrolls where the window
/// is too low for it.
/// Thread: GUI thread.
class ControlPanel : public QScrollArea
{
    Q_OBJECT

public:
    explicit ControlPanel(QWidget* parent = nullptr);

    /// Sets the controls; emits the signals of those that change.
    void setChoices(const ViewChoices& choices);
    ViewChoices choices() const;

    void showFigures(const StreamFigures& figures);
    void showHistograms(const GreyHistogram& left, const GreyHistogram& right);

    /// A line about the pictures that were saved last, with more of it in the tool tip.
    void showSaved(const QString& text, const QString& toolTip);

signals:
    // Ranges and meanings as in ViewChoices.
    void exposureChanged(int exposure);
    void gainChanged(int gain);
    void ledChanged(int led);
    void horizontalFlipChanged(bool flip);
    void verticalFlipChanged(bool flip);
    void swapCamerasChanged(bool swap);
    void undistortChanged(bool undistort);
    void arrangementChanged(PictureArrangement arrangement);

    /// Follows each of the above.
    void choicesChanged();

    void saveRequested();

private:
    class InputGuard;
    struct NumberTexts
    {
        QString title;
        QString toolTip;
        QString zero; ///< what 0 reads
    };
    using NumberSignal = void (ControlPanel::*)(int);
    using FlagSignal = void (ControlPanel::*)(bool);

    QWidget* buildCameraGroup();
    QWidget* buildPictureGroup();
    QWidget* buildStreamGroup();
    QSlider* addNumber(QGridLayout* grid, const QString& name, const NumberTexts& texts, NumberSignal changed);
    QCheckBox* addFlag(QGridLayout* grid, int row, int column, const QString& name, FlagSignal changed);
    QLabel* addFigure(QFormLayout* form, const QString& title, const QString& name);
    void onArrangementIndex(int index);

    InputGuard* const _inputGuard; ///< a child
    QSlider* _exposure = nullptr;
    QSlider* _gain = nullptr;
    QSlider* _led = nullptr;
    QCheckBox* _horizontalFlip = nullptr;
    QCheckBox* _verticalFlip = nullptr;
    QCheckBox* _swapCameras = nullptr;
    QCheckBox* _undistort = nullptr;
    QComboBox* _arrangement = nullptr;
    HistogramView* _histogram = nullptr;
    QLabel* _brightness = nullptr;
    QLabel* _pictureSize = nullptr;
    QLabel* _frameRate = nullptr;
    QLabel* _dropped = nullptr;
    QLabel* _unreadable = nullptr;
    QLabel* _nodeTime = nullptr;
    QLabel* _saved = nullptr;
};
