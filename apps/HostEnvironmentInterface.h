// SPDX-License-Identifier: Apache-2.0
// What the host offers apps.

#pragma once

#include <camera/VYRResolutionInfo.h>

class QDockWidget;
class StatusBarText;
class VYRCameraDevice;

/// Everything that an app is given of the host, in AppInterface::initialize(). All operations are cheap accessors; none
/// creates anything, takes a lock or fails.
///
/// Called by slot: the order of the operations is fixed, and there is no virtual destructor.
/// Ownership: everything returned belongs to the host and lives until the main window goes, after the last stop().
/// Thread: GUI thread.
class HostEnvironmentInterface
{
public:
    /// The main area, at least 400 pixels wide; the current app sets its own widget into it. QDockWidget::setWidget()
    /// hides what was there and deletes nothing, so an app deletes its widget when it is stopped.
    virtual QDockWidget* centralDock() = 0;

    /// The panel on the right, 275 to 400 pixels wide; used like the main area.
    virtual QDockWidget* sideDock() = 0;

    /// The panel at the bottom, as high as its widget; used like the main area. Hidden at first and at every app
    /// switch: an app that wants it shows it in AppInterface::start().
    virtual QDockWidget* bottomDock() = 0;

    /// A status field. Index 0 gives the one that keeps its text until it is replaced, and which the camera's status
    /// text replaces about once a second; any other index gives the one that clears its text after a second or a little
    /// more. Null if the field does not exist.
    virtual StatusBarText* statusText(int index) = 0;

    /// The camera node, never null; its camera may be closed (VYRCameraDevice::IsOpen()).
    virtual VYRCameraDevice* cameraDevice() = 0;

    /// The capture mode last asked of the camera, by value; up to date when AppInterface::start() is called. Whether
    /// the camera has it, VYRCameraDevice::IsResolutionSupported() tells.
    virtual VYRResolutionInfo currentResolution() = 0;

protected:
    ~HostEnvironmentInterface() = default;
};
