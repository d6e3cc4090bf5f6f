// SPDX-License-Identifier: Apache-2.0
// The dialog in which the user picks the app, edits the capture mode and sees which camera is attached.

#pragma once

#include "ResolutionMetaType.h"

#include <apps/AppInfo.h>

#include <QDialog>
#include <QList>
#include <QString>

class AppsTab;
class CameraTab;
class HostEnvironmentInterface;
class QDialogButtonBox;
class QTabWidget;

/// Reports what the user chose with two signals and switches neither apps nor camera itself. Built anew each
/// time that it is opened:
///
///     SettingsDialog dialog(host);
///     dialog.setAppInfoList(infos);
///     dialog.setCurrentAppIndex(current);
///     dialog.build(title, mainWindow);
///     dialog.tabWidget()->addTab(widget, name);   // for each tab that an app brings
///     dialog.setCurrentTab(tab);
///     connect(&dialog, &SettingsDialog::ResolutionChanged, ...);
///     connect(&dialog, &SettingsDialog::AppChanged, ...);
///     dialog.exec();
///
/// The tabs, each present only where it makes sense: "Apps" with at least one app, then "Camera" and
/// "Devices" with an open camera, then those of the apps.
///
/// Ok, and a double-click on an app: first ResolutionChanged() if the user changed the capture mode, then the
/// mode goes into the settings record and the settings file is written, then AppChanged() if another app is
/// selected. Both signals are meant for direct connections: the mode is in effect before the app is switched.
/// Cancel and the close button do nothing of it. An app that lets events be handled while it is called cannot have the
/// choices reported again: another Ok, while one is being handled, does nothing.
///
/// Ownership: borrows the host, which must outlive the dialog; owns its tabs, also those that apps have
/// added.
/// Thread: GUI thread.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    /// An empty dialog without a parent.
    explicit SettingsDialog(HostEnvironmentInterface* host);

    /// The apps to choose from, in the order of the registry. To be called before build().
    void setAppInfoList(const QList<AppInfo>& appInfoList);

    /// The index of the current app; -1, as at first, for none. To be called before build().
    void setCurrentAppIndex(int currentAppIndex);

    /// Makes tabs and buttons, sets the window's title, fixes the size and centres the dialog over `centreOn`
    /// (null: wherever the window system puts it). To be called once.
    void build(const QString& title, const QWidget* centreOn);

    /// Where apps add their tabs, behind those of the dialog. Null before build().
    QTabWidget* tabWidget() const;

    /// Shows the tab at `index`. Nothing happens when there is none. To be called after build().
    void setCurrentTab(int index);

public slots:
    void accept() override;

signals:
    /// The user has changed the capture mode to `newResolution`.
    void ResolutionChanged(VYRResolutionInfo newResolution);

    /// The user has chosen the app at `appIdx` instead of the current one.
    void AppChanged(int appIdx);

private:
    void createTabs();
    void addTab(QWidget* tab, const QString& title, const QString& toolTip);
    void centreOver(const QWidget& window);
    void acceptResolution();

    QList<AppInfo> _appInfoList;
    int _currentAppIndex = -1;
    bool _accepting = false; // while Ok is being handled
    HostEnvironmentInterface* const _host;
    QDialogButtonBox* _buttonBox = nullptr;
    QTabWidget* _tabWidget = nullptr;
    AppsTab* _appsTab = nullptr;     // null without apps
    CameraTab* _cameraTab = nullptr; // null without a camera
};
