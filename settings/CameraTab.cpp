// SPDX-License-Identifier: Apache-2.0
// The frame around the editor of the capture mode.

#include "CameraTab.h"

#include "ResolutionSettings.h"
#include "ResolutionTable.h"

#include <apps/HostEnvironmentInterface.h>

#include <QVBoxLayout>

CameraTab::CameraTab(HostEnvironmentInterface* host, QWidget* parent)
    : QWidget(parent)
    , _resolutionSettings(new ResolutionSettings(host->currentResolution(), ResolutionTable::supported(), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_resolutionSettings);
    layout->addStretch();
}

ResolutionSettings* CameraTab::resolutionSettings() const
{
    return _resolutionSettings;
}
