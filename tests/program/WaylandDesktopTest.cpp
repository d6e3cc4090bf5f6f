// SPDX-License-Identifier: Apache-2.0
// The program on a Wayland desktop, which has an X server for it.

#include <tests/support/ProgramCopy.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

constexpr std::chrono::seconds limit{100}; // for anything, on a busy machine

class WaylandDesktopTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* tool : {"weston", "weston-screenshooter", "Xwayland"})
            if (QStandardPaths::findExecutable(tool).isEmpty())
                GTEST_SKIP() << tool << " is not installed (Debian: weston, xwayland)";
        ASSERT_TRUE(copyProgram(PROGRAM, folder()));
        startDesktop();
    }

    void TearDown() override
    {
        end(_program);
        end(_desktop); // and with it its X server
    }

    void startProgram()
    {
        QProcessEnvironment environment = desktopEnvironment();
        environment.insert("DISPLAY", _display);
        // Without a choice of the tester's: the one that Qt makes on such a desktop.
        for (const char* wish : {"VYR_SOURCE", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR", "QT_FONT_DPI"})
            environment.remove(wish);
        _program.setProcessEnvironment(environment);
        _program.setProcessChannelMode(QProcess::ForwardedChannels);
        _program.start(folder().filePath(QFileInfo(PROGRAM).fileName()), QStringList());
        ASSERT_TRUE(_program.waitForStarted());
    }

    /// What the desktop shows; null when it does not say.
    QImage screen()
    {
        const QString name = QString("screen%1").arg(++_screens);
        EXPECT_TRUE(folder().mkdir(name));
        const QDir pictures(folder().filePath(name));
        QProcess camera;
        camera.setProcessEnvironment(desktopEnvironment());
        camera.setWorkingDirectory(pictures.path()); // where it leaves its one picture
        camera.start("weston-screenshooter", QStringList());
        camera.waitForFinished();
        const QStringList files = pictures.entryList({"*.png"});
        return files.isEmpty() ? QImage() : QImage(pictures.filePath(files.first()));
    }

    /// How many pixels of the screen are others than a moment before; -1 when the desktop does not say.
    int changingPixels()
    {
        const QImage before = screen();
        const QImage after = screen();
        if (before.isNull() || before.size() != after.size())
            return -1;
        int count = 0;
        for (int y = 0; y < before.height(); ++y)
            for (int x = 0; x < before.width(); ++x)
                count += before.pixel(x, y) != after.pixel(x, y) ? 1 : 0;
        return count;
    }

    /// But for little things of the desktop's own, such as a clock.
    bool standsStill()
    {
        const int changing = changingPixels();
        return changing >= 0 && changing < 10'000;
    }

    /// Two pictures of a quarter million pixels each change all the time, a window that opens only for a moment.
    bool showsLiveFrames()
    {
        for (int look = 0; look < 5; ++look)
            if (changingPixels() < 100'000)
                return false;
        return true;
    }

private:
    QDir folder() const { return QDir(_folder.path()); }

    QProcessEnvironment desktopEnvironment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", _folder.path());
        environment.insert("XDG_CONFIG_HOME", _folder.path());
        environment.insert("XDG_RUNTIME_DIR", _folder.path());
        environment.insert("TMPDIR", _folder.path());
        environment.insert("WAYLAND_DISPLAY", "wayland");
        environment.insert("XDG_SESSION_TYPE", "wayland");
        return environment;
    }

    void startDesktop()
    {
        const QString log = folder().filePath("desktop.log");
        QProcessEnvironment environment = desktopEnvironment();
        environment.remove("WAYLAND_DISPLAY"); // it is one itself
        _desktop.setProcessEnvironment(environment);
        _desktop.setProcessChannelMode(QProcess::MergedChannels);
        _desktop.start("weston",
                       {"--backend=headless-backend.so", "--use-pixman", "--debug", "--xwayland", "--width=1600",
                        "--height=1000", "--socket=wayland", "--idle-time=0", "--log=" + log});
        const QRegularExpression announcement("xserver listening on display (:[0-9]+)");
        ASSERT_TRUE(waitFor(
            [&] {
                QFile file(log);
                if (file.open(QIODevice::ReadOnly))
                    _display = announcement.match(QString::fromUtf8(file.readAll())).captured(1);
                return !_display.isEmpty();
            },
            limit))
            << _desktop.readAll().toStdString();
    }

    static void end(QProcess& process)
    {
        process.terminate();
        if (!process.waitForFinished(10'000))
            process.kill();
        process.waitForFinished();
    }

    QTemporaryDir _folder{"/tmp/wayland-XXXXXX"};
    QProcess _desktop;
    QProcess _program;
    QString _display; ///< of the desktop's X server
    int _screens = 0;
};

TEST_F(WaylandDesktopTest, ShowsLiveFrames)
{
    ASSERT_TRUE(waitFor([this] { return standsStill(); }, limit)) << "a desktop that has come up";
    startProgram();
    EXPECT_TRUE(waitFor([this] { return showsLiveFrames(); }, limit));
}

} // namespace
