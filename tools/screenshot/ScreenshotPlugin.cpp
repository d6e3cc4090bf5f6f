// SPDX-License-Identifier: Apache-2.0
// Brings the observer into the program, through Qt's own plug-in mechanism.

#include "Observer.h"
#include "SettingsTour.h"

#include <QGenericPlugin>
#include <QMainWindow>

/// Made by Qt at start-up when QT_QPA_GENERIC_PLUGINS holds "vyrscreenshot:FILE" for a picture of the window,
/// or "vyrtour:FOLDER" for that as FOLDER/window.png and pictures of the settings dialog beside it. The program
/// ends afterwards.
class ScreenshotPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "screenshot.json")

public:
    QObject* create(const QString& name, const QString& destination) override
    {
        if (name == "vyrscreenshot") {
            auto* const observer = new Observer(destination);
            const auto close = [](QMainWindow* window) { window->close(); };
            QObject::connect(observer, &Observer::taken, observer, close);
            return observer;
        }
        if (name == "vyrtour") {
            auto* const observer = new Observer(destination + "/window.png");
            auto* const tour = new SettingsTour(destination, observer);
            QObject::connect(observer, &Observer::taken, tour, &SettingsTour::start);
            return observer;
        }
        return nullptr;
    }
};

#include "ScreenshotPlugin.moc"
