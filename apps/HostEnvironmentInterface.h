// SPDX-License-Identifier: Apache-2.0
// What the host offers apps.

#pragma once

#include <camera/VYRResolutionInfo.h>

class QDockWidget;
class StatusBarText;
class VYRCameraDevice;

/// Everything that an app is given of the host. All operations are cheap accessors; none creates anything or takes a
/// lock.
///
/// Called by slot: the order of the operations is fixed, and there is no virtual destructor.
/// Ownership: everything returned belongs to the host and lives until the process ends.
/// Thread: GUI thread.
class HostEnvironmentInterface
{
public:
    /// The main area; the app sets its own widget into it.
    virtual QDockWidget* centralDock() = 0;

    /// The panel on the right, 275 to 400 pixels wide.
    virtual QDockWidget* sideDock() = 0;

    /// The panel at the bottom. Hidden at every app switch: an app that wants it shows it in start().
    virtual QDockWidget* bottomDock() = 0;

    /// Field 0 keeps its text until it is replaced (the camera's status goes there); any other index gives field 1,
    /// which clears its text after about a second. Null if the field does not exist.
    virtual StatusBarText* statusText(int index) = 0;

    /// The camera node, never null; its camera may be closed.
    virtual VYRCameraDevice* cameraDevice() = 0;

    /// The capture mode last applied to the camera; up to date when start() is called.
    virtual VYRResolutionInfo currentResolution() = 0;

protected:
    ~HostEnvironmentInterface() = default;
};
