// SPDX-License-Identifier: Apache-2.0
// The real program in the hands of a user: mode and app changed in one dialog, what is left of it later, and apps that
// do not get on.

#include <tests/support/OffscreenLeaks.h>

#include <gtest/gtest.h>
#include <libconfig.h++>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

constexpr int limit = 140'000; // milliseconds for a run on a busy machine

class SettingsChangeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* file :
             {PROGRAM, CORE_LIBRARY, CAMERA_NODE_LIBRARY, CAMERA_LIBRARY, STEREO_VIEW_APP, WITNESS_APP})
            ASSERT_TRUE(QFile::copy(file, folder().filePath(QFileInfo(file).fileName()))) << file;
        ASSERT_TRUE(folder().mkdir("settings"));
        save("Stereo View");
    }

    void save(const QString& app) const
    {
        QFile settings(settingsFile());
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write(QString("AppConfig : {"
                               " Application : { UseDarkSkin = false; CurrentApp = \"%1\"; };"
                               " Vyr : { Width = 640; Height = 480; Binning = 0; Fps = 30.0; }; };\n")
                           .arg(app)
                           .toUtf8());
    }

    QDir folder() const { return QDir(_folder.path()); }

    QString settingsFile() const { return folder().filePath("settings/DashboardSettings.cfg"); }

    /// Runs the program with a user who does a task and then leaves it; returns the lines noted meanwhile.
    /// `trouble` is what the witness does badly, if anything.
    QStringList run(const QString& task, const QString& trouble = QString())
    {
        const QString logFile = folder().filePath(task + ".log");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", _folder.path());
        environment.insert("XDG_CONFIG_HOME", _folder.path());
        environment.insert("TMPDIR", _folder.path());
        environment.insert("LD_LIBRARY_PATH", _folder.path());
        environment.insert("LANGUAGE", "en");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("QT_PLUGIN_PATH", PLUGIN_FOLDER);
        environment.insert("QT_QPA_GENERIC_PLUGINS", "vyruser:" + task);
        environment.insert("VYR_TEST_LOG", logFile);
        environment.insert("VYR_TEST_TROUBLE", trouble);
        environment.remove("VYR_SOURCE");
        overlookOffscreenLeaks(environment, folder());
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(folder().filePath(QFileInfo(PROGRAM).fileName()), QStringList());
        const bool ended = program.waitForFinished(limit);
        EXPECT_TRUE(ended) << "the program runs on";
        program.kill();
        program.waitForFinished();
        if (ended) {
            EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
            EXPECT_EQ(program.exitCode(), 0);
        }
        QFile log(logFile);
        EXPECT_TRUE(log.open(QIODevice::ReadOnly));
        return QString::fromUtf8(log.readAll()).split('\n', Qt::SkipEmptyParts);
    }

    /// The settings file: mode and app.
    std::string saved() const
    {
        libconfig::Config config;
        config.readFile(settingsFile().toUtf8().constData());
        const auto number = [&config](const char* key) {
            return QString::number(static_cast<int>(config.lookup(std::string("AppConfig.Vyr.") + key)));
        };
        const float fps = config.lookup("AppConfig.Vyr.Fps");
        const char* const app = config.lookup("AppConfig.Application.CurrentApp");
        return QString("%1 x %2, binning %3, %4 fps, %5")
            .arg(number("Width"), number("Height"), number("Binning"), QString::number(fps), QString(app))
            .toStdString();
    }

private:
    QTemporaryDir _folder{"/tmp/program-XXXXXX"};
};

std::string text(const QStringList& lines)
{
    return lines.join('\n').toStdString();
}

/// The lines of camera and apps between two steps of the user.
std::string calls(const QStringList& log, const QString& after, const QString& before)
{
    const int begin = log.indexOf("user " + after) + 1;
    const int end = log.indexOf("user " + before, begin);
    return text(log.mid(begin, end - begin).filter(QRegularExpression("^(camera|witness) ")));
}

/// What the user saw of one kind, in the order in which he saw it.
QStringList seen(const QStringList& log, const QString& kind)
{
    const QString beginning = "sees " + kind + ' ';
    QStringList sights;
    for (const QString& line : log)
        if (line.startsWith(beginning))
            sights << line.mid(beginning.size());
    return sights;
}

double frameRateIn(const QString& status)
{
    return QRegularExpression("FPS: +([0-9.]+)").match(status).captured(1).toDouble();
}

TEST_F(SettingsChangeTest, ModeAndAppAreInForceAtOnceAndAfterARestart)
{
    const QStringList change = run("change");
    ASSERT_FALSE(HasFailure()) << text(change);
    EXPECT_EQ(text(seen(change, "title")), "VYR Dashboard - Stereo View\nVYR Dashboard - Witness");
    EXPECT_EQ(seen(change, "picture").value(0).toStdString(), "640 × 480");

    // The editor after the drag, after the change of the binning, after the frame rate.
    EXPECT_EQ(text(seen(change, "editor")), "512 480 30 1x1\n256 240 30 2x2\n256 240 24 2x2");

    // The mode before the app: the app that is left starts once more, in the new mode, then the other.
    EXPECT_EQ(calls(change, "opens the menu Settings", "presses Ok"), "") << "nothing may happen before Ok";
    EXPECT_EQ(calls(change, "presses Ok", "opens the menu File"), "camera stop\n"
                                                                  "camera mode 256x240 binning 5 at 24\n"
                                                                  "camera start\n"
                                                                  "camera stop\n"
                                                                  "witness start 256x240 binning 5 at 24\n"
                                                                  "camera mode 256x240 binning 5 at 24\n"
                                                                  "camera start\n"
                                                                  "witness frame 256x240");
    const QString status = seen(change, "status").value(1);
    EXPECT_TRUE(status.startsWith("Resolution: 256x240, Binning: 2x2, FPS: ")) << qPrintable(status);
    EXPECT_LT(frameRateIn(status), 27.0); // it was 30 before
    EXPECT_EQ(saved(), "256 x 240, binning 5, 24 fps, Witness");

    const QStringList check = run("check");
    EXPECT_EQ(text(check.mid(0, 5)), "camera open\n"
                                     "witness start 256x240 binning 5 at 24\n"
                                     "camera mode 256x240 binning 5 at 24\n"
                                     "camera start\n"
                                     "witness frame 256x240");
    EXPECT_EQ(text(seen(check, "title")), "VYR Dashboard - Witness\nVYR Dashboard - Stereo View");
    const QString statusAfterwards = seen(check, "status").value(0);
    EXPECT_TRUE(statusAfterwards.startsWith("Resolution: 256x240, Binning: 2x2, FPS: "))
        << qPrintable(statusAfterwards);
    EXPECT_LT(frameRateIn(statusAfterwards), 27.0);

    // And Stereo View has pictures of the new size, without having been told of it anew.
    EXPECT_EQ(seen(check, "picture").value(1).toStdString(), "256 × 240");
    EXPECT_EQ(saved(), "256 x 240, binning 5, 24 fps, Stereo View");
}

TEST_F(SettingsChangeTest, AnAppThatTakesTwoSecondsToStartIsWaitedFor)
{
    save("Witness");
    const QStringList log = run("look", "start");
    ASSERT_FALSE(HasFailure()) << text(log);
    EXPECT_EQ(text(log.mid(0, 6)), "camera open\n"
                                   "witness start 640x480 binning 0 at 30\n"
                                   "camera mode 640x480 binning 0 at 30\n"
                                   "camera start\n"
                                   "witness started with 31 frames queued\n"
                                   "witness frame 640x480");
    EXPECT_EQ(seen(log, "title").last().toStdString(), "VYR Dashboard - Witness");
    EXPECT_EQ(saved(), "640 x 480, binning 0, 30 fps, Witness");
}

TEST_F(SettingsChangeTest, AWorkerThatKeepsItsFrameUntilTheStopLeavesTheProgramAlive)
{
    save("Witness");
    const QStringList log = run("look", "worker");
    ASSERT_FALSE(HasFailure()) << text(log);
    EXPECT_EQ(seen(log, "status").size(), 2) << "the window shows the camera's rate, and goes on";
    EXPECT_EQ(text(log.mid(log.indexOf("user chooses Exit") + 1)), "witness stop with 31 frames queued\n"
                                                                   "camera stop\n"
                                                                   "camera close");
    EXPECT_EQ(saved(), "640 x 480, binning 0, 30 fps, Witness");
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
