// SPDX-License-Identifier: Apache-2.0
// What the About box says.

#include "AboutText.h"

#include "Identity.h"
#include "Vendor.h"

#include <QCoreApplication>
#include <QString>

QString aboutText()
{
    // The links are white in either skin; the ground behind them is the dark skin's own, so that they can be read on
    // a light one, too.
    return QCoreApplication::translate(
               "ApplicationWindow",
               "<h1>VYR Dashboard</h1><h3>Version %1</h3>"
               "<p>A modular system for building advanced vision systems.</p>"
               "<small>"
               "<p>%2</p>"
               "<p>License: "
               "<span style=background-color:#282828><a style=color:white href=\"%3\">%3</a></span></p>"
               "<p>You can learn more about this application at: "
               "<span style=background-color:#282828><a style=color:white href=\"%4\">%4</a></span></p>"
               "<p>VYR Dashboard is distributed by %2 in the hope that it will be useful, but WITHOUT ANY WARRANTY; "
               "without even the implied warranty of MERCHANTABILITY or FITNESS FOR A PARTICULAR PURPOSE.</p>"
               "</small>")
        .arg(QLatin1String(Identity::applicationVersion), QLatin1String(Vendor::organizationName),
             QLatin1String(Vendor::licenceTerms), QLatin1String(Vendor::webSite));
}
