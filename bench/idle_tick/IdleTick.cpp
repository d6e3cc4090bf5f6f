// SPDX-License-Identifier: Apache-2.0
// What a tick of the idle timer costs with nothing pending: the main window with a camera and an app, beside a timer of
// 0 ms in a program that has nothing but an empty main window. Each is a process of its own; they take turns.

#include "TickMeter.h"

#include <app/ApplicationWindow.h>
#include <bench/Figures.h>

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace {

const char ours[] = "ours";
const char bareWindow[] = "bare window";

struct Cost
{
    double nanoseconds;
    double allocations;
};

int printCost()
{
    std::printf("%.9g %.9g\n", nanosecondsPerTick(), allocationsPerTick());
    return 0;
}

int runOurs()
{
    ApplicationWindow window;
    if (window.currentApp() == nullptr) {
        std::fprintf(stderr, "The window has no app: is there a camera?\n");
        return 1;
    }
    window.show();
    return QApplication::exec() != 0 ? 1 : printCost();
}

int runBareWindow()
{
    QMainWindow window;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, &countTick);
    timer.start(0);
    window.show();
    return QApplication::exec() != 0 ? 1 : printCost();
}

/// Runs one contender in this process: CONTENDER WARM-UP TICKS.
int runContender(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    startMetering(arguments.value(2).toLong(), arguments.value(3).toLong());
    return arguments.value(1) == QLatin1String(ours) ? runOurs() : runBareWindow();
}

bool measure(const QString& contender, long ticks, std::vector<Cost>& costs)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.remove("VYR_SOURCE");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {contender, QString::number(ticks / 4), QString::number(ticks)});
    process.waitForFinished(-1);
    const QList<QByteArray> words = process.readAllStandardOutput().trimmed().split(' ');
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 || words.size() != 2)
        return false;
    costs.push_back({words[0].toDouble(), words[1].toDouble()});
    return true;
}

double medianOf(const std::vector<Cost>& costs, double Cost::*value)
{
    std::vector<double> values;
    values.reserve(costs.size());
    for (const Cost& cost : costs)
        values.push_back(cost.*value);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4)
        return runContender(argc, argv);

    const QCoreApplication application(argc, argv);
    const bool quick = QCoreApplication::arguments().contains("--quick");
    const int turns = quick ? 1 : 5;
    const long ticks = quick ? 20'000 : 1'000'000;
    std::map<const char*, std::vector<Cost>> costs;
    for (int turn = 0; turn < turns; ++turn)
        for (const char* const contender : {ours, bareWindow})
            if (!measure(contender, ticks, costs[contender]))
                return 1;
    for (const char* const contender : {ours, bareWindow}) {
        printFigure("idle tick: GUI thread (ns)", contender, medianOf(costs[contender], &Cost::nanoseconds));
        printFigure("idle tick: allocations", contender, medianOf(costs[contender], &Cost::allocations));
    }
}
