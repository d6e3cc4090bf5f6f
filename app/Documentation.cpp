// SPDX-License-Identifier: Apache-2.0
// Where the documentation is.

#include "Documentation.h"

#include "Vendor.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUrl>

QUrl documentationUrl()
{
    const QString manual = QCoreApplication::applicationDirPath() + QStringLiteral("/manual/index.html");
    if (QFileInfo(manual).isFile())
        return QUrl::fromLocalFile(manual);
    return QUrl(QLatin1String(Vendor::documentation));
}
