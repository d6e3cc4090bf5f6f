// SPDX-License-Identifier: Apache-2.0
// The program as its user starts it: processes of their own, in a folder of their own.

#include "StartedProgram.h"

#include <apps/TestAppsFolder.h>

#include <libconfig.h++>

#include <QElapsedTimer>
#include <QFileInfo>

#include <csignal>

namespace {

class ProgramTest : public StartedProgram
{
protected:
    QString savedApp() const
    {
        libconfig::Config config;
        config.readFile(settingsFile().toUtf8().constData());
        return QString::fromUtf8(config.lookup("AppConfig.Application.CurrentApp").c_str());
    }
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

TEST_F(ProgramTest, AppsFindItsFontAndTheLanguageOfTheUser)
{
    TestApps::install("Witness", folder(), "WitnessApp.so");
    EXPECT_EQ(exitCode(start("de")), 0);
    QFile witness(folder().filePath("witness"));
    ASSERT_TRUE(witness.open(QIODevice::ReadOnly));
    EXPECT_TRUE(witness.readLine().startsWith("Segoe UI,9,"));
    EXPECT_EQ(witness.readLine(), "&Einstellungen\n");
}

TEST_F(ProgramTest, WhatAnAcceptedAppThrowsEndsIt)
{
    TestApps::install("Throw", folder(), "ThrowApp.so");
    QProcess& process = start();
    ASSERT_TRUE(process.waitForFinished(limit));
    EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
}

TEST_F(ProgramTest, EndsWithTheValueOfTheEventLoop)
{
    TestApps::install("Exit", folder(), "ExitApp.so");
    EXPECT_EQ(exitCode(start()), 7);
}

} // namespace
