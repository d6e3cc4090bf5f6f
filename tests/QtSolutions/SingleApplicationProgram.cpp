// SPDX-License-Identifier: Apache-2.0
// A program of which one instance runs at a time; the tests start it and read what it prints.
//
// SingleApplicationProgram MESSAGE TIMEOUT [ID [stay]]
//
// As a later instance it sends MESSAGE and ends with 0, or with 1 when that failed. As the first one it prints
// "first", then a line for each message: its length, its text, and whether the window is minimised after it.
// With "stay" messages do not touch the window.

#include <qtsingleapplication.h>

#include <tests/support/DefaultLeakSuppressions.h>

#include <QWidget>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    std::unique_ptr<QtSingleApplication> application;
    if (argc > 3 && *argv[3] != '\0')
        application = std::make_unique<QtSingleApplication>(QString::fromUtf8(argv[3]), argc, argv);
    else
        application = std::make_unique<QtSingleApplication>(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (application->isRunning()) {
        QString message = arguments.at(1);
        if (message.startsWith("repeat:")) // too long for a command line
            message = QString(message.mid(7).toInt(), 'x');
        return application->sendMessage(message, arguments.at(2).toInt()) ? 0 : 1;
    }
    QWidget window;
    application->setActivationWindow(&window, arguments.value(4) != "stay");
    window.showMinimized();
    QObject::connect(application.get(), &QtSingleApplication::messageReceived, &window, [&](const QString& message) {
        std::printf("message %d %s %s\n", message.size(), message.left(40).toUtf8().constData(),
                    window.isMinimized() ? "minimised" : "restored");
        std::fflush(stdout);
    });
    std::puts("first");
    std::fflush(stdout);
    return QtSingleApplication::exec();
}
