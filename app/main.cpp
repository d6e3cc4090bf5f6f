// SPDX-License-Identifier: Apache-2.0
// The process entry.

#include "ApplicationWindow.h"
#include "EmbeddedFonts.h"
#include "UserLanguage.h"

#include <QtSingleApplication>

namespace {

/// How long the running instance may take to show its window, in milliseconds.
constexpr int activationTimeout = 5000;

/// One pixel of ours becomes two of a screen with twice the usual density; without it, texts would be as large as they
/// should be, and all that is measured in pixels half as large. In whole steps: a server without a configured density
/// is a little off, and lines would be blurred for it. Up from three quarters only: with half as many pixels again, a
/// screen may be too small for a window of twice the size, while texts alone may well grow by half.
void adaptToDenseScreens()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor);
}

} // namespace

int main(int argc, char** argv)
{
    adaptToDenseScreens(); // which goes only before there is an application
    QtSingleApplication application(argc, argv);
    if (application.isRunning()) {
        // Any message brings the window of the running instance to the front.
        return application.sendMessage(QString(), activationTimeout) ? 0 : 1;
    }
    useEmbeddedFonts();
    useLanguageOfUser();
    ApplicationWindow window;
    application.setActivationWindow(&window, true);
    window.show();
    return QtSingleApplication::exec();
}
