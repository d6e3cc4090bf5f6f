// SPDX-License-Identifier: Apache-2.0
// What the About box says.

#include "AboutText.h"

#include "Identity.h"
#include "Vendor.h"

#include <QCoreApplication>
#include <QString>

namespace {

QString link(const char* address, bool onLightGround)
{
    const QString plain = QStringLiteral("<a style=color:white href=\"%1\">%1</a>").arg(QLatin1String(address));
    return onLightGround ? QStringLiteral("<span style=background-color:#282828>%1</span>").arg(plain) : plain;
}

} // namespace

QString aboutText(bool onLightGround)
{
    return QCoreApplication::translate(
               "ApplicationWindow",
               "<h1>VYR Dashboard</h1><h3>Version %1</h3>"
               "<p>A modular system for building advanced vision systems.</p>"
               "<small>"
               "<p>%2</p>"
               "<p>License: %3</p>"
               "<p>You can learn more about this application at: %4</p>"
               "<p>VYR Dashboard is distributed by %2 in the hope that it will be useful, but WITHOUT ANY WARRANTY; "
               "without even the implied warranty of MERCHANTABILITY or FITNESS FOR A PARTICULAR PURPOSE.</p>"
               "</small>")
        .arg(QLatin1String(Identity::applicationVersion), QLatin1String(Vendor::organizationName),
             link(Vendor::licenceTerms, onLightGround), link(Vendor::webSite, onLightGround));
}
