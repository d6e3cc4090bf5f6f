// SPDX-License-Identifier: Apache-2.0
// The tree of camera facts.

#include "DevicesTab.h"

#include <camera/VYRCameraDevice.h>

#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

void addRow(QTreeWidgetItem* device, const QString& title, const QString& value)
{
    new QTreeWidgetItem(device, QStringList({title, value}));
}

} // namespace

DevicesTab::DevicesTab(const VYRCameraDevice* camera, QWidget* parent)
    : QWidget(parent)
{
    auto* tree = new QTreeWidget(this);
    tree->setColumnCount(2);
    tree->setHeaderLabels({tr("Title"), tr("Details")});
    const int scale = scaleOfScreen(logicalDpiX());
    tree->setColumnWidth(0, 200 * scale);
    if (scale > 1)
        tree->setMinimumWidth(500 * scale); // or the wider titles would leave no room for the values
    auto* device = new QTreeWidgetItem(tree, QStringList(tr("VYR Device")));
    device->setFlags(Qt::ItemIsEnabled);
    addRow(device, tr("Device Name"), camera->DeviceName());
    addRow(device, tr("Serial Number"), camera->SerialNumber());
    addRow(device, tr("Firmware Version"), camera->FirmwareVersion());
    addRow(device, tr("Firmware Build Time"), camera->FirmwareBuildTime());
    addRow(device, tr("Software Version"), camera->LibraryVersion());
    device->setExpanded(true);

    auto* caption = new QLabel(tr("Available Devices"), this);
    tree->setAccessibleName(caption->text());
    tree->setToolTip(tr("What the camera and its library say of themselves"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(tree);
}

int DevicesTab::scaleOfScreen(int dotsPerInch)
{
    return std::max(1, qRound(dotsPerInch / 96.0));
}
