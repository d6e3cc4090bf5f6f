// SPDX-License-Identifier: Apache-2.0
// The least that a program with a main window can be: WIDTH HEIGHT, or as large as Qt makes it; with a third argument
// it has a menu and a status bar as well, and with them a text to show.

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 2)
        window.resize(arguments[1].toInt(), arguments[2].toInt());
    if (arguments.size() > 3) {
        window.menuBar()->addMenu(arguments[3]);
        window.statusBar();
    }
    window.show();
    return QApplication::exec();
}
