// SPDX-License-Identifier: Apache-2.0
// The process entry.

#include "ApplicationWindow.h"
#include "EmbeddedFonts.h"

#include <QtSingleApplication>

namespace {

/// How long the running instance may take to show its window, in milliseconds.
constexpr int activationTimeout = 5000;

} // namespace

int main(int argc, char** argv)
{
    QtSingleApplication application(argc, argv);
    if (application.isRunning()) {
        // Any message brings the window of the running instance to the front.
        return application.sendMessage(QString(), activationTimeout) ? 0 : 1;
    }
    useEmbeddedFonts();
    ApplicationWindow window;
    application.setActivationWindow(&window, true);
    window.show();
    return QtSingleApplication::exec();
}
