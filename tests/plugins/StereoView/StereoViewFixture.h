// SPDX-License-Identifier: Apache-2.0
// Stereo View in a host, with folders of its own.

#pragma once

#include "TestHost.h"

#include <apps/AppInterface.h>

#include <QAbstractButton>
#include <QDockWidget>
#include <QFile>
#include <QKeySequence>
#include <QLabel>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include <unistd.h>

/// Bytes of memory that the process has in use.
inline long residentBytes()
{
    QFile statistics(QStringLiteral("/proc/self/statm"));
    if (!statistics.open(QIODevice::ReadOnly))
        return 0;
    return statistics.readAll().split(' ').at(1).toLong() * sysconf(_SC_PAGESIZE);
}

/// Nine thousand frames may add half a megabyte to that, some fifty bytes each.
inline void expectLittleGrowth([[maybe_unused]] long bytesBefore)
{
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which have memory of their own
    EXPECT_LT(residentBytes() - bytesBefore, 512 * 1024);
#endif
}

/// Loads the app from its shared library into a host, with settings and pictures in a temporary folder.
class StereoViewFixture : public testing::Test
{
protected:
    StereoViewFixture()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
        qputenv("HOME", directory.path().toLocal8Bit());
        qunsetenv("XDG_CONFIG_HOME");
    }

    void load(const VYRResolutionInfo& mode)
    {
        host = std::make_unique<TestHost>(mode);
        app = host->load(QStringLiteral(STEREO_VIEW_APP));
        ASSERT_NE(app, nullptr);
    }

    QWidget* view() const { return host->centralDock()->widget(); }

    template<typename Widget>
    Widget* control(const char* name) const
    {
        return host->sideDock()->widget()->findChild<Widget*>(QLatin1String(name));
    }

    /// That Alt and a letter reach each control of the panel, and that none is taken twice, nor by the
    /// program's menus, whose titles are given.
    void expectALetterOfItsOwnForEach(QStringList titles) const
    {
        for (const QLabel* const label : host->sideDock()->findChildren<QLabel*>())
            titles << label->text();
        for (const QAbstractButton* const button : host->sideDock()->findChildren<QAbstractButton*>())
            titles << button->text();
        QStringList letters;
        for (const QString& title : titles)
            if (const QKeySequence letter = QKeySequence::mnemonic(title); !letter.isEmpty())
                letters << letter.toString();
        EXPECT_EQ(letters.size(), 3 + 3 + 4 + 1) << "menus, sliders, boxes to tick, the button";
        EXPECT_EQ(letters.removeDuplicates(), 0) << letters.join(' ').toStdString();
    }

    /// What the view says over the pictures.
    QString message() const { return view()->accessibleDescription(); }

    /// Whether every frame has been worked off and given back.
    bool worksOff() const { return host->cameraDevice()->Size() == 0 && framesOut() == 0; }

    /// How many frames of the camera node's pool are lent out just now.
    int framesOut() const
    {
        StereoFrameCache& pool = host->cameraDevice()->FrameCache();
        std::vector<StereoFrame*> free;
        while (StereoFrame* const frame = pool.Acquire())
            free.push_back(frame);
        for (StereoFrame* const frame : free)
            pool.Release(frame);
        return 32 - static_cast<int>(free.size());
    }

    /// The figure beside its title in the panel.
    QString figure(const char* name) const { return control<QLabel>(name)->text(); }

    QTemporaryDir directory;
    std::unique_ptr<TestHost> host;
    AppInterface* app = nullptr;
};
