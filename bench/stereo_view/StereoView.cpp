// SPDX-License-Identifier: Apache-2.0
// The way of a frame through the main window with Stereo View, at 752 x 480 and 60 frames a second: from its arrival to
// the end of the painting that shows it, and what the threads use. The window's idle timer takes what is left of a
// core, by design, so that the share of the painting is told apart.

#include "FrameTap.h"
#include "PaintWatch.h"

#include <app/AppSettings.h>
#include <app/ApplicationWindow.h>
#include <app/EmbeddedFonts.h>
#include <bench/Figures.h>
#include <bench/VirtualScreen.h>

#include <QDockWidget>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {

std::int64_t timeOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// What was used and seen so far.
struct Sample
{
    std::int64_t time = FrameTap::now();
    std::int64_t process = timeOf(CLOCK_PROCESS_CPUTIME_ID);
    std::int64_t guiThread = timeOf(CLOCK_THREAD_CPUTIME_ID);
    std::int64_t cameraThread = FrameTap::cameraThreadTime();
    std::uint32_t arrivals = FrameTap::arrivals();
};

double quantile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(std::lround(share * static_cast<double>(values.size() - 1)))];
}

void print(const std::string& figure, double value)
{
    printFigure("stereo view: " + figure, "ours", value);
}

void report(const PaintWatch& application, const Sample& begin, const Sample& end)
{
    const std::vector<double>& latencies = application.latencies();
    const auto length = static_cast<double>(end.time - begin.time);
    const auto share = [length](std::int64_t time) { return 100.0 * static_cast<double>(time) / length; };
    const auto frames = static_cast<double>(latencies.size());
    print("callback to painted, median (ms)", quantile(latencies, 0.5));
    print("callback to painted, 99 % (ms)", quantile(latencies, 0.99));
    print("frames a second", static_cast<double>(end.arrivals - begin.arrivals) / length * 1e9);
    print("frames shown (%)", 100.0 * frames / static_cast<double>(end.arrivals - begin.arrivals));
    print("painting (ms a frame)", static_cast<double>(application.paintingTime()) * 1e-6 / frames);
    print("painting, share of a core (%)", share(application.paintingTime()));
    const std::int64_t guiThread = end.guiThread - begin.guiThread;
    const std::int64_t cameraThread = end.cameraThread - begin.cameraThread;
    print("GUI thread with its idle timer, share of a core (%)", share(guiThread));
    print("camera's thread, share of a core (%)", share(cameraThread));
    print("other threads, share of a core (%)", share(end.process - begin.process - guiThread - cameraThread));
}

/// Streams for `milliseconds` in this process, on the screen that it was given.
int runWindow(int argc, char** argv, int milliseconds)
{
    PaintWatch application(argc, argv);
    useEmbeddedFonts();
    AppSettings& settings = AppSettings::instance();
    settings.width = 752;
    settings.height = 480;
    settings.binning = 0;
    settings.fps = 60.0F;
    ApplicationWindow window;
    window.show();
    if (window.centralDock()->widget() == nullptr) {
        std::fprintf(stderr, "The window has no app.\n");
        return 1;
    }
    application.watch(window.centralDock()->widget());
    QTimer::singleShot(2000, &window, [&] { // the first frames come while the window is still being built
        application.restart();
        const Sample begin;
        QTimer::singleShot(milliseconds, &window, [&application, &window, begin] {
            if (application.latencies().empty())
                std::fprintf(stderr, "No frame was seen on the screen.\n");
            else
                report(application, begin, Sample());
            QCoreApplication::exit(application.latencies().empty() ? 1 : 0);
            window.close();
        });
    });
    return PaintWatch::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return runWindow(argc, argv, std::atoi(argv[2]));

    const QCoreApplication application(argc, argv);
    const bool quick = QCoreApplication::arguments().contains("--quick");
    const VirtualScreen screen;
    if (screen.display().isEmpty())
        return 0;
    const QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const folder : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        environment.insert(folder, home.path());
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("DISPLAY", screen.display());
    environment.remove("VYR_SOURCE");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), {"stream", quick ? "1000" : "10000"});
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 1;
}
