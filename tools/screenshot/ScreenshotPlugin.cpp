// SPDX-License-Identifier: Apache-2.0
// Brings the observer into the program, through Qt's own plug-in mechanism.

#include "Observer.h"

#include <QGenericPlugin>

/// Made by Qt at start-up when QT_QPA_GENERIC_PLUGINS holds "vyrscreenshot:FILE".
class ScreenshotPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "screenshot.json")

public:
    QObject* create(const QString& name, const QString& pictureFile) override
    {
        return name == "vyrscreenshot" ? new Observer(pictureFile) : nullptr;
    }
};

#include "ScreenshotPlugin.moc"
