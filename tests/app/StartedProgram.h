// SPDX-License-Identifier: Apache-2.0
// The program as its user starts it: processes of their own, in a folder of their own.

#pragma once

#include <tests/support/OffscreenLeaks.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

#include <unistd.h>

/// Starts the program and ends what is left of it.
class StartedProgram : public testing::Test
{
protected:
    static constexpr int limit = 30000; ///< milliseconds that anything may take on a busy machine

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

    /// Starts an instance of a user with this language.
    QProcess& start(const QString& language = "en")
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", _folder.path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("LD_LIBRARY_PATH", LIBRARY_FOLDERS);
        environment.insert("LANGUAGE", language);
        overlookOffscreenLeaks(environment, folder());
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

    /// Where the running instance listens.
    QString socket() const
    {
        const QStringList names = userFolder().entryList({"*.socket"}, QDir::System);
        return names.isEmpty() ? QString() : userFolder().filePath(names.first());
    }

    /// Whether an instance has made itself the running one, by a lock. Only looked up: to try the lock would stand in
    /// the way of one that is about to take it.
    bool isLocked() const
    {
        return std::any_of(_processes.begin(), _processes.end(), [](const auto& process) {
            const QDir descriptors(QString("/proc/%1/fdinfo").arg(process->processId()));
            const QStringList names = descriptors.entryList(QDir::Files);
            return std::any_of(names.begin(), names.end(), [&](const QString& name) {
                QFile file(descriptors.filePath(name));
                return file.open(QIODevice::ReadOnly) && file.readAll().contains("FLOCK");
            });
        });
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

private:
    /// Where the running instance keeps its lock and its socket.
    QDir userFolder() const { return QDir(_folder.path() + QString("/qtsingleapplication-%1").arg(::geteuid())); }

    QTemporaryDir _folder{"/tmp/program-XXXXXX"};
    std::vector<std::unique_ptr<QProcess>> _processes;
};
