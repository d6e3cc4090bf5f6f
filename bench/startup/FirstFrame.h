// SPDX-License-Identifier: Apache-2.0
// Watches a program until its main window has been painted.

#pragma once

#include <QObject>

class QMainWindow;
class QWidget;

/// Prints when the main window was first painted and handed to the screen, and what the process had used by then, as
/// `window TIME PROCESSOR-TIME RESIDENT PEAK`; then, if it is told to wait for it, the same of the first painting that
/// has a camera picture in the middle of the window, as `picture …`. Times are in nanoseconds, that of the monotonic
/// clock and that of all threads; memory is in KiB. Closes the window afterwards.
/// Thread: GUI thread.
class FirstFrame : public QObject
{
    Q_OBJECT

public:
    explicit FirstFrame(bool waitsForPicture);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void painted(QMainWindow* window);

    bool _waitsForPicture;
    bool _windowSeen = false;
    bool _looking = false; ///< the picture is being looked for, which paints as well
};
