// SPDX-License-Identifier: Apache-2.0
// The program as its user starts it: processes of their own, in a folder of their own.

#include <apps/TestAppsFolder.h>

#include <gtest/gtest.h>
#include <libconfig.h++>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <functional>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int limit = 30000; // milliseconds that anything may take on a busy machine

bool waitFor(const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.elapsed() > limit)
            return false;
        QThread::msleep(10);
    }
    return true;
}

class ProgramTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(QFile::copy(PROGRAM, program())); }

    void TearDown() override
    {
        for (const auto& process : _processes) {
            send(*process, SIGCONT);
            process->kill();
            process->waitForFinished();
        }
    }

    QDir folder() const { return QDir(_folder.path()); }

    QString program() const { return folder().filePath("VYRDashboard"); }

    QString settingsFile() const { return folder().filePath("settings/DashboardSettings.cfg"); }

    void makeSettingsFolder() { ASSERT_TRUE(folder().mkdir("settings")); }

    QProcess& start()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", _folder.path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("LD_LIBRARY_PATH", LIBRARY_FOLDERS);
        // The leaks of Qt's offscreen platform would change the exit status under the sanitizer.
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(program(), QStringList());
        EXPECT_TRUE(process->waitForStarted(limit));
        _processes.push_back(std::move(process));
        return *_processes.back();
    }

    /// A first instance that has got as far as to answer others.
    QProcess& startFirst()
    {
        QProcess& process = start();
        EXPECT_TRUE(waitFor([&] { return isLocked(); }));
        return process;
    }

    /// Whether an instance has made itself the running one.
    bool isLocked() const
    {
        const QDir locks(_folder.path() + QString("/qtsingleapplication-%1").arg(::geteuid()));
        const QStringList names = locks.entryList({"*.lock"}, QDir::Files);
        if (names.isEmpty())
            return false;
        const int descriptor = ::open(locks.filePath(names.first()).toUtf8(), O_RDWR | O_CLOEXEC);
        const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
        ::close(descriptor);
        return locked;
    }

    /// Sends a process a signal; nothing when it does not run, since its id is 0 then, which is everybody's.
    static void send(QProcess& process, int signal)
    {
        if (process.state() == QProcess::Running)
            ::kill(static_cast<pid_t>(process.processId()), signal);
    }

    static int exitCode(QProcess& process)
    {
        return process.waitForFinished(limit) && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    static bool runs(QProcess& process) { return !process.waitForFinished(0) && process.state() == QProcess::Running; }

    QString savedApp() const
    {
        libconfig::Config config;
        config.readFile(settingsFile().toUtf8().constData());
        return QString::fromUtf8(config.lookup("AppConfig.Application.CurrentApp").c_str());
    }

private:
    QTemporaryDir _folder{"/tmp/program-XXXXXX"};
    std::vector<std::unique_ptr<QProcess>> _processes;
};

TEST_F(ProgramTest, ASecondStartEndsWithZeroWhenTheFirstAnswers)
{
    QProcess& first = startFirst();
    EXPECT_EQ(exitCode(start()), 0);
    EXPECT_TRUE(runs(first));
}

TEST_F(ProgramTest, ASecondStartEndsWithOneWhenTheFirstDoesNotAnswerWithinFiveSeconds)
{
    QProcess& first = startFirst();
    EXPECT_EQ(exitCode(start()), 0);
    send(first, SIGSTOP);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(exitCode(start()), 1);
    EXPECT_GE(time.elapsed(), 5000);
    EXPECT_LT(time.elapsed(), 15000);
}

TEST_F(ProgramTest, ASecondStartBringsTheMinimisedWindowOfTheFirstBack)
{
    TestApps::install("Minimised", folder(), "MinimisedApp.so");
    QProcess& first = startFirst();
    ASSERT_TRUE(waitFor([&] { return QFileInfo::exists(folder().filePath("minimised")); }));
    ASSERT_TRUE(runs(first));
    EXPECT_EQ(exitCode(start()), 0);
    EXPECT_EQ(exitCode(first), 9);
}

TEST_F(ProgramTest, ASecondStartTouchesNoSettings)
{
    QProcess& first = startFirst();
    EXPECT_EQ(exitCode(start()), 0);
    makeSettingsFolder(); // only now, so that the first has not written into it
    EXPECT_EQ(exitCode(start()), 0);
    EXPECT_FALSE(QFileInfo::exists(settingsFile()));
    EXPECT_TRUE(runs(first));
}

TEST_F(ProgramTest, StartsAgainAfterItWasKilled)
{
    QProcess& first = startFirst();
    first.kill();
    first.waitForFinished(limit);
    ASSERT_FALSE(isLocked());
    QProcess& next = start();
    ASSERT_TRUE(waitFor([&] { return isLocked(); }));
    EXPECT_EQ(exitCode(start()), 0);
    EXPECT_TRUE(runs(next));
}

TEST_F(ProgramTest, WithoutASettingsFolderItStartsAndCreatesNothing)
{
    QProcess& first = startFirst();
    EXPECT_EQ(exitCode(start()), 0); // answered by the event loop: the start is over
    EXPECT_TRUE(runs(first));
    EXPECT_FALSE(QFileInfo::exists(folder().filePath("settings")));
}

TEST_F(ProgramTest, WithASettingsFolderTheFileExistsAfterTheStart)
{
    makeSettingsFolder();
    QProcess& first = startFirst();
    EXPECT_EQ(exitCode(start()), 0);
    EXPECT_TRUE(runs(first));
    EXPECT_TRUE(QFileInfo::exists(settingsFile()));
    EXPECT_EQ(savedApp(), "");
}

TEST_F(ProgramTest, ClosingTheWindowStopsTheAppThenWritesTheSettingsAndEndsWithZero)
{
    makeSettingsFolder();
    TestApps::install("Close", folder(), "CloseApp.so");
    EXPECT_EQ(exitCode(start()), 0);
    ASSERT_TRUE(QFileInfo::exists(settingsFile()));
    EXPECT_EQ(savedApp(), "Close");
}

TEST_F(ProgramTest, EndsWithTheValueOfTheEventLoop)
{
    TestApps::install("Exit", folder(), "ExitApp.so");
    EXPECT_EQ(exitCode(start()), 7);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
