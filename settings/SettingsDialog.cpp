// SPDX-License-Identifier: Apache-2.0
// Building the dialog, and what Ok does.

#include "SettingsDialog.h"

#include "AppsTab.h"
#include "CameraTab.h"
#include "DevicesTab.h"
#include "ResolutionSettings.h"

#include <app/AppSettings.h>
#include <apps/HostEnvironmentInterface.h>
#include <camera/VYRCameraDevice.h>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

SettingsDialog::SettingsDialog(HostEnvironmentInterface* host)
    : _host(host)
{
}

void SettingsDialog::setAppInfoList(const QList<AppInfo>& appInfoList)
{
    _appInfoList = appInfoList;
}

void SettingsDialog::setCurrentAppIndex(int currentAppIndex)
{
    _currentAppIndex = currentAppIndex;
}

void SettingsDialog::build(const QString& title, const QWidget* centreOn)
{
    createTabs();
    _buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(_buttonBox, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(_buttonBox, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);

    _buttonBox->button(QDialogButtonBox::Ok)->setToolTip(tr("Puts the choices into effect and closes the dialog"));
    // Not that everything stays: what is changed in a tab of an app's own, the app may have done already.
    _buttonBox->button(QDialogButtonBox::Cancel)->setToolTip(tr("Closes the dialog; app and capture mode stay"));

    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(_tabWidget);
    layout->addWidget(_buttonBox);

    setWindowTitle(title);
    setModal(false);
    setMinimumSize(600, 450);
    setFixedSize(sizeHint().expandedTo(minimumSize()));
    if (centreOn != nullptr)
        centreOver(*centreOn);
}

QTabWidget* SettingsDialog::tabWidget() const
{
    return _tabWidget;
}

void SettingsDialog::setCurrentTab(int index)
{
    _tabWidget->setCurrentIndex(index);
}

void SettingsDialog::accept()
{
    if (_accepting)
        return;
    const QScopedValueRollback<bool> accepting(_accepting, true);
    // The mode before the app: an app that is switched to must start in the mode that was chosen with it.
    if (_cameraTab != nullptr && _host->cameraDevice()->IsOpen())
        acceptResolution();
    const int app = _appsTab != nullptr ? _appsTab->selectedAppOtherThan(_currentAppIndex) : -1;
    if (app >= 0)
        emit AppChanged(app);
    QDialog::accept();
}

void SettingsDialog::createTabs()
{
    _tabWidget = new QTabWidget(this);
    if (!_appInfoList.isEmpty()) {
        _appsTab = new AppsTab(_appInfoList, _currentAppIndex, _tabWidget);
        connect(_appsTab, &AppsTab::appActivated, this, &SettingsDialog::accept);
        addTab(_appsTab, tr("Apps"), tr("Which app is shown"));
    }
    if (_host->cameraDevice()->IsOpen()) {
        _cameraTab = new CameraTab(_host, _tabWidget);
        addTab(_cameraTab, tr("Camera"), tr("Size, binning and rate of the camera's pictures"));
        addTab(new DevicesTab(_host->cameraDevice(), _tabWidget), tr("Devices"), tr("Which camera is attached"));
    }
}

void SettingsDialog::addTab(QWidget* tab, const QString& title, const QString& toolTip)
{
    _tabWidget->setTabToolTip(_tabWidget->addTab(tab, title), toolTip);
}

void SettingsDialog::centreOver(const QWidget& window)
{
    move(window.x() + window.width() / 2 - width() / 2, window.y() + window.height() / 2 - height() / 2);
}

void SettingsDialog::acceptResolution()
{
    ResolutionSettings& editor = *_cameraTab->resolutionSettings();
    editor.finishTyping(); // Ok may come from the keyboard, with the focus still in the editor
    if (!editor.isModified())
        return;
    const VYRResolutionInfo resolution = editor.resolution();
    emit ResolutionChanged(resolution);
    AppSettings& settings = AppSettings::instance();
    settings.width = resolution.width;
    settings.height = resolution.height;
    settings.binning = resolution.binning;
    settings.fps = resolution.fps;
    saveSettings();
}
