// SPDX-License-Identifier: Apache-2.0
// From the start of the process to the first frame: the program beside an empty main window, and beside one with a menu
// and a status bar, which is the first to need a font, and the list of all that are installed. What apps load is not
// counted: the program runs in a folder without apps, and once more in one with Stereo View, for information. All take
// turns, and the same plug-in watches all of them.

#include <bench/Figures.h>
#include <bench/VirtualScreen.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr int patience = 60'000; // ms

struct Contender
{
    const char* name;
    QString program;
    QStringList arguments;
    const char* waitsFor;
};

/// What was printed at one frame: milliseconds since the start, milliseconds of processor time, MiB, MiB at most.
using Frame = std::array<double, 4>;
constexpr std::array<const char*, 4> frameUnits = {"time (ms)", "processor time (ms)", "memory (MiB)",
                                                   "peak memory (MiB)"};

using Frames = std::map<std::string, std::vector<Frame>>;

double monotonicNanoseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// The program with what it is started with, its apps left out. Gives the program's path; empty when that fails.
QString copyProgram(const QDir& target, bool withStereoView)
{
    target.mkpath("settings");
    const QString app = QFileInfo(STEREO_VIEW_APP).fileName();
    for (const QFileInfo& file : QDir(PROGRAM_FOLDER).entryInfoList(QDir::Files)) {
        const bool wanted = !file.fileName().endsWith("App.so") || (withStereoView && file.fileName() == app);
        if (wanted && !QFile::copy(file.filePath(), target.filePath(file.fileName())))
            return QString();
    }
    return target.filePath("VYRDashboard");
}

QProcessEnvironment environmentOf(const char* waitsFor, const QString& display, const QString& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const folder : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        environment.insert(folder, home);
    environment.insert("QT_PLUGIN_PATH", PLUGIN_FOLDER);
    environment.insert("QT_QPA_GENERIC_PLUGINS", QString("vyrfirstframe:") + waitsFor);
    environment.insert("QT_QPA_PLATFORM", display.isEmpty() ? "offscreen" : "xcb");
    environment.insert("DISPLAY", display);
    environment.remove("VYR_SOURCE");
    environment.remove("LD_LIBRARY_PATH");
    return environment;
}

/// One start; notes each frame that was waited for.
bool start(const Contender& contender, const QProcessEnvironment& environment, Frames& frames)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    const double begin = monotonicNanoseconds();
    process.start(contender.program, contender.arguments);
    const bool ended = process.waitForFinished(patience);
    bool complete = false;
    for (const QByteArray& line : process.readAllStandardOutput().trimmed().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() != 5)
            continue;
        frames[words[0].toStdString()].push_back({(words[1].toDouble() - begin) * 1e-6, words[2].toDouble() * 1e-6,
                                                  words[3].toDouble() / 1024.0, words[4].toDouble() / 1024.0});
        complete = words[0] == contender.waitsFor;
    }
    if (!ended || !complete)
        std::fprintf(stderr, "%s was not painted.\n", qPrintable(contender.program));
    process.kill();
    process.waitForFinished();
    return ended && complete;
}

void printMedians(const std::string& platform, const char* contender, const Frames& frames)
{
    for (const auto& [frame, starts] : frames) {
        const std::string question = std::string("start to first ").append(frame).append(", ").append(platform);
        for (std::size_t i = 0; i < frameUnits.size(); ++i) {
            std::vector<double> values;
            for (const Frame& values4 : starts)
                values.push_back(values4[i]);
            std::sort(values.begin(), values.end());
            printFigure(question + ": " + frameUnits[i], contender, values[values.size() / 2]);
        }
    }
}

bool compare(const std::vector<Contender>& contenders, const QString& display, const QString& home, int starts)
{
    std::map<const char*, Frames> frames;
    // The first turn is the warm-up: it reads everything from the disk.
    for (int turn = -1; turn < starts; ++turn) {
        for (const Contender& contender : contenders) {
            Frames ignored;
            if (!start(contender, environmentOf(contender.waitsFor, display, home),
                       turn < 0 ? ignored : frames[contender.name]))
                return false;
        }
    }
    for (const Contender& contender : contenders)
        printMedians(display.isEmpty() ? "offscreen" : "xcb", contender.name, frames[contender.name]);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int starts = QCoreApplication::arguments().contains("--quick") ? 1 : 7;
    const QTemporaryDir folder;
    const std::vector<Contender> contenders = {
        {"ours", copyProgram(folder.filePath("no-app"), false), {}, "window"},
        {"empty window", EMPTY_WINDOW, {}, "window"},
        {"empty window of our size", EMPTY_WINDOW, {"1200", "670"}, "window"},
        {"window with bars", EMPTY_WINDOW, {"1200", "670", "File"}, "window"},
        {"ours with Stereo View", copyProgram(folder.filePath("stereo-view"), true), {}, "picture"},
    };
    if (!compare(contenders, QString(), folder.path(), starts))
        return 1;
    const VirtualScreen screen;
    return screen.display().isEmpty() || compare(contenders, screen.display(), folder.path(), starts) ? 0 : 1;
}
