// SPDX-License-Identifier: Apache-2.0
// What is shown of an app.

#pragma once

#include <QIcon>
#include <QString>

/// What the registry keeps of an accepted app for display.
struct AppInfo
{
    QString name;
    QString version;
    QString description;
    QIcon icon;
};
