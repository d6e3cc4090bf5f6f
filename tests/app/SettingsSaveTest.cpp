// SPDX-License-Identifier: Apache-2.0
// The writing of the settings file, cut short at any moment and by anything: what is left is complete.

#include "FileCalls.h"

#include <app/AppSettings.h>

#include <tests/support/BindingPermissions.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>
#include <libconfig.h++>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <new>
#include <random>
#include <thread>

#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QDir settingsFolder()
{
    return QDir(QCoreApplication::applicationDirPath() + "/settings");
}

/// Values that belong together, so that any two of different generations in one file give themselves away.
AppSettings generation(int number)
{
    AppSettings settings;
    settings.useDarkSkin = number % 2 == 1;
    settings.currentApp = QString("App %1 ").arg(number) + QString(number % 5000, 'x'); // of changing length
    settings.width = number;
    settings.height = -number;
    settings.binning = number % 9;
    settings.fps = static_cast<float>(number) / 2;
    return settings;
}

void save(int number)
{
    AppSettings::instance() = generation(number);
    saveSettings();
}

/// The generation that the file holds, or -1 when it is not there, not complete, or holds more than one.
int savedGeneration()
{
    try {
        libconfig::Config config;
        config.readFile(settingsFilePath().toUtf8().constData());
        const libconfig::Setting& application = config.lookup("AppConfig.Application");
        const libconfig::Setting& camera = config.lookup("AppConfig.Vyr");
        const int number = camera["Width"];
        const AppSettings expected = generation(number);
        const bool whole = static_cast<bool>(application["UseDarkSkin"]) == expected.useDarkSkin
                        && expected.currentApp == application["CurrentApp"].c_str()
                        && static_cast<int>(camera["Height"]) == expected.height
                        && static_cast<int>(camera["Binning"]) == expected.binning
                        && static_cast<double>(camera["Fps"]) == static_cast<double>(expected.fps);
        return whole ? number : -1;
    } catch (const libconfig::ConfigException&) {
        return -1;
    }
}

QStringList entries()
{
    return settingsFolder().entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
}

class SettingsSaveTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QDir(settingsFolder()).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(settingsFolder().path()));
        FileCalls::failing = -1;
        FileCalls::before = nullptr;
    }

    void TearDown() override { QDir(settingsFolder()).removeRecursively(); }
};

ino_t inodeOf(const QString& path)
{
    struct stat status = {};
    return ::stat(path.toUtf8().constData(), &status) == 0 ? status.st_ino : 0;
}

TEST_F(SettingsSaveTest, TheNewFileIsOnTheDiskBeforeItTakesTheNameAndTheNameAfterwards)
{
    FileCalls::calls.clear();
    save(1000);
    const auto& calls = FileCalls::calls;
    ASSERT_EQ(calls.size(), 3U);
    const ino_t file = inodeOf(settingsFilePath());
    EXPECT_EQ(calls[0].name, "fsync");
    EXPECT_EQ(calls[0].file, file);
    EXPECT_EQ(calls[0].size, QFileInfo(settingsFilePath()).size()) << "something was written after the flush";
    EXPECT_EQ(calls[1].name, "rename");
    EXPECT_EQ(calls[1].file, file);
    EXPECT_EQ(calls[2].name, "fsync");
    EXPECT_TRUE(calls[2].isFolder);
    EXPECT_EQ(calls[2].file, inodeOf(settingsFolder().path()));
}

TEST_F(SettingsSaveTest, ADiskThatFailsToTakeTheNewFileKeepsTheOldOne)
{
    save(1000);
    for (const int call : {0, 1}) { // the flush and the renaming
        FileCalls::calls.clear();
        FileCalls::failing = call;
        save(2000);
        EXPECT_EQ(FileCalls::calls.size(), static_cast<std::size_t>(call) + 1) << "it went on";
        EXPECT_EQ(savedGeneration(), 1000);
        EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    }
}

TEST_F(SettingsSaveTest, ADiskThatFailsToKeepTheNameLeavesACompleteFile)
{
    save(1000);
    FileCalls::calls.clear();
    FileCalls::failing = 2;
    save(2000);
    EXPECT_EQ(savedGeneration(), 2000);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

/// Puts a file system of its own on the settings folder, which this process alone sees and which goes with it.
bool mountOnSettingsFolder()
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("settings", settingsFolder().path().toUtf8().constData(), "tmpfs", 0, "size=64k") == 0;
}

bool makeReadOnly()
{
    const QByteArray path = settingsFolder().path().toUtf8();
    return ::mount(nullptr, path.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

/// Fills the disk of the settings folder to the last byte.
void fillSettingsFolder()
{
    QFile file(settingsFolder().filePath("full"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (file.write(QByteArray(512, 'x')) > 0) {
    }
    ASSERT_EQ(errno, ENOSPC);
}

enum ChildResult { Passed, Failed, CannotMount };

/// What `body` comes to in a process of its own.
template<typename Body>
int inChild(Body body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const ChildResult result = body();
        ::_exit(testing::Test::HasFailure() ? Failed : result);
    }
    int status = 0;
    const bool ended = child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : -1;
}

TEST_F(SettingsSaveTest, AFullDiskKeepsTheOldFile)
{
    const int result = inChild([] {
        if (!mountOnSettingsFolder())
            return CannotMount;
        save(1000);
        fillSettingsFolder();
        save(4999);
        EXPECT_EQ(savedGeneration(), 1000);
        EXPECT_EQ(entries(), QStringList({"DashboardSettings.cfg", "full"}));
        EXPECT_TRUE(QFile::remove(settingsFolder().filePath("full")));
        save(4999);
        EXPECT_EQ(savedGeneration(), 4999);
        return Passed;
    });
    if (result == CannotMount)
        GTEST_SKIP() << "no right to mount a small disk";
    EXPECT_EQ(result, Passed);
}

TEST_F(SettingsSaveTest, AReadOnlyDiskKeepsTheOldFile)
{
    const int result = inChild([] {
        if (!mountOnSettingsFolder())
            return CannotMount;
        save(1000);
        EXPECT_TRUE(makeReadOnly());
        save(2000);
        EXPECT_EQ(savedGeneration(), 1000);
        EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
        return Passed;
    });
    if (result == CannotMount)
        GTEST_SKIP() << "no right to mount a disk";
    EXPECT_EQ(result, Passed);
}

/// How far the process that saves one generation after the other has come.
struct Progress
{
    std::atomic<int> begun;
    std::atomic<int> done;
};

[[noreturn]] void saveForEver(Progress& progress, int number)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // should the test itself be ended
    for (;; ++number) {
        progress.begun = number;
        save(number);
        progress.done = number;
    }
}

/// Saves in a process of its own, which stops in the middle of it. Returns when it is there, or has ended.
pid_t startToSave(int number)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // should the test itself be ended
        FileCalls::before = [](const std::string&) { ::raise(SIGSTOP); };
        save(number);
        ::_exit(0);
    }
    if (child > 0)
        ::waitpid(child, nullptr, WUNTRACED);
    return child;
}

TEST_F(SettingsSaveTest, AnotherProgramThatSavesMeanwhileHasToWaitAndGivesUp)
{
    save(1);
    pid_t other = 0;
    FileCalls::before = [&other](const std::string& name) {
        if (name == "rename")
            other = startToSave(2);
    };
    save(3);
    FileCalls::before = nullptr;
    EXPECT_EQ(savedGeneration(), 3);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    ASSERT_GT(other, 0);
    EXPECT_EQ(::kill(other, SIGKILL), -1) << "it was in the middle of saving";
}

TEST_F(SettingsSaveTest, OneThatDiedWhileItSavedHoldsUpNobody)
{
    const pid_t other = startToSave(1);
    ASSERT_GT(other, 0);
    ::kill(other, SIGKILL);
    ASSERT_EQ(::waitpid(other, nullptr, 0), other);
    save(2);
    EXPECT_EQ(savedGeneration(), 2);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

TEST_F(SettingsSaveTest, AFolderThatMayNotBeReadIsSavedTo)
{
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root reads everything";
    ASSERT_EQ(::chmod(settingsFolder().path().toUtf8().constData(), 0300), 0);
    save(1);
    ASSERT_EQ(::chmod(settingsFolder().path().toUtf8().constData(), 0700), 0);
    EXPECT_EQ(savedGeneration(), 1);
}

TEST_F(SettingsSaveTest, FiveHundredKillsDuringSavesLeaveOneGenerationEach)
{
    // cppcheck-suppress invalidFunctionArg ; memory without a file has no descriptor
    void* const shared = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    auto& progress = *new (shared) Progress;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> microseconds(0, 4000);
    int unfinished = 0;
    save(1);
    for (int round = 0; round < 500; ++round) {
        const int before = savedGeneration();
        ASSERT_GT(before, 0) << "after round " << round;
        progress.begun = progress.done = before;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0); // as an id, -1 stands for every process there is
        if (child == 0)
            saveForEver(progress, before + 1);
        EXPECT_TRUE(waitFor([&] { return progress.begun > before; })) << "the process does not save";
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);

        const int saved = savedGeneration();
        EXPECT_GE(saved, progress.done) << "in round " << round;
        EXPECT_LE(saved, progress.begun) << "in round " << round;
        unfinished += entries().size() - 1;
    }
    RecordProperty("unfinished", unfinished);
    EXPECT_GT(unfinished, 0) << "no kill came in the middle of a save";
    save(1000);
    EXPECT_EQ(savedGeneration(), 1000);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    ::munmap(shared, sizeof(Progress));
}

} // namespace
