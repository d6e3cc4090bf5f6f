// SPDX-License-Identifier: Apache-2.0
// The tab on which the user picks the current app.

#pragma once

#include <apps/AppInfo.h>

#include <QList>
#include <QWidget>

class QListWidget;

/// Shows the apps side by side, with the current one selected.
///
/// Thread: GUI thread.
class AppsTab : public QWidget
{
    Q_OBJECT

public:
    /// Shows `apps` in their order and selects the one at `currentApp`; none when there is no such app.
    AppsTab(const QList<AppInfo>& apps, int currentApp, QWidget* parent = nullptr);

    /// The index of the first selected app other than `currentApp`, or -1 when there is none.
    int selectedAppOtherThan(int currentApp) const;

signals:
    /// The user has double-clicked an app, to take it at once.
    void appActivated();

private:
    void giveRoomForNames();

    QListWidget* const _list;
};
