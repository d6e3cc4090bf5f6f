// SPDX-License-Identifier: Apache-2.0
// The tab on which the user edits the capture mode.

#pragma once

#include <QWidget>

class HostEnvironmentInterface;
class ResolutionSettings;

/// Holds the editor of the capture mode at its natural height.
///
/// Thread: GUI thread.
class CameraTab : public QWidget
{
    Q_OBJECT

public:
    /// Starts the editor with the host's current mode. Asks the camera library for its modes the first time.
    explicit CameraTab(HostEnvironmentInterface* host, QWidget* parent = nullptr);

    /// The editor; never null, owned by the tab.
    ResolutionSettings* resolutionSettings() const;

private:
    ResolutionSettings* const _resolutionSettings;
};
