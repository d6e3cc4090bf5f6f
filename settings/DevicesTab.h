// SPDX-License-Identifier: Apache-2.0
// The tab that shows which camera is attached.

#pragma once

#include <QWidget>

class VYRCameraDevice;

/// Shows the identity of the camera and the version of its library, as they are when the tab is made.
///
/// Thread: GUI thread.
class DevicesTab : public QWidget
{
    Q_OBJECT

public:
    /// Reads the values from `camera`, which is open, and does not keep it.
    explicit DevicesTab(const VYRCameraDevice* camera, QWidget* parent = nullptr);

    /// How many pixels a screen takes for one of a usual screen, with 96 dots per inch: a whole number, so that
    /// screens which are only about usual count as such.
    static int scaleOfScreen(int dotsPerInch);
};
