// SPDX-License-Identifier: Apache-2.0
// The least that a program with a main window can be: WIDTH HEIGHT, or as large as Qt makes it.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3)
        window.resize(arguments[1].toInt(), arguments[2].toInt());
    window.show();
    return QApplication::exec();
}
