// SPDX-License-Identifier: Apache-2.0
// The list of apps.

#include "AppsTab.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

AppsTab::AppsTab(const QList<AppInfo>& apps, int currentApp, QWidget* parent)
    : QWidget(parent)
    , _list(new QListWidget(this))
{
    _list->setSelectionMode(QAbstractItemView::SingleSelection);
    // First, for it resets flow, wrapping and movement.
    _list->setViewMode(QListView::IconMode);
    _list->setUniformItemSizes(true);
    _list->setIconSize(QSize(72, 72));
    _list->setFlow(QListView::LeftToRight);
    _list->setWrapping(false);
    _list->setMovement(QListView::Static);
    _list->setStyleSheet(QStringLiteral("QListWidget::item{padding:6px;}"));
    for (const AppInfo& app : apps) {
        auto* item = new QListWidgetItem(app.icon, app.name, _list);
        // Not by place markers: what an app says of itself may hold some.
        item->setToolTip(tr("Name: ") + app.name + QLatin1Char('\n') + tr("Version: ") + app.version + QLatin1Char('\n')
                         + tr("Description: ") + app.description);
    }
    giveRoomForNames();
    _list->setCurrentRow(currentApp);
    connect(_list, &QListWidget::itemDoubleClicked, this, &AppsTab::appActivated);

    auto* caption = new QLabel(tr("Available Apps/Plugins"), this);
    _list->setAccessibleName(caption->text());
    _list->setToolTip(tr("OK or a double-click on an app makes it the current one"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(_list);
}

int AppsTab::selectedAppOtherThan(int currentApp) const
{
    for (int index = 0; index < _list->count(); ++index)
        if (index != currentApp && _list->item(index)->isSelected())
            return index;
    return -1;
}

// All items are as large as one of them, whichever the list asks: each asks for what the longest name needs.
void AppsTab::giveRoomForNames()
{
    _list->ensurePolished();
    QSize room;
    for (int index = 0; index < _list->count(); ++index)
        room = room.expandedTo(_list->sizeHintForIndex(_list->model()->index(index, 0)));
    for (int index = 0; index < _list->count(); ++index)
        _list->item(index)->setSizeHint(room);
}
