// SPDX-License-Identifier: Apache-2.0
// Brings the observer and the tours into the program, through Qt's own plug-in mechanism.

#include "Observer.h"
#include "PictureTour.h"
#include "Tours.h"

#include <QFileInfo>
#include <QGenericPlugin>
#include <QMainWindow>
#include <QTimer>

/// Made by Qt at start-up when QT_QPA_GENERIC_PLUGINS holds one of
///
/// - "vyrscreenshot:FILE" for a picture of the window as soon as live frames are on it,
/// - "vyrtour:FOLDER" for that as FOLDER/window.png, and pictures of everything else beside it,
/// - "vyrstill:FILE.png" for a picture of the window without live frames,
/// - "vyrdocumentation" to have the documentation opened.
///
/// The program ends afterwards.
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
            auto* const tour = new PictureTour(destination, tourOfProgram(), observer);
            QObject::connect(observer, &Observer::taken, tour, &PictureTour::start);
            return observer;
        }
        if (name == "vyrstill") {
            const QFileInfo file(destination);
            return startedTour(file.path(), tourOfWindow(file.completeBaseName()));
        }
        if (name == "vyrdocumentation")
            return startedTour(QString(), tourToDocumentation());
        return nullptr;
    }

private:
    static QObject* startedTour(const QString& folder, std::vector<TourStop> stops)
    {
        auto* const tour = new PictureTour(folder, std::move(stops));
        QTimer::singleShot(0, tour, &PictureTour::start); // the program's event loop is still to begin
        return tour;
    }
};

#include "ScreenshotPlugin.moc"
