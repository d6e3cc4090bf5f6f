// SPDX-License-Identifier: Apache-2.0
// Stereo View with the simulated camera for a minute, or longer on a slow machine.

#include "StereoViewSimulatorFixture.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

class StereoViewLongRun : public StereoViewSimulatorFixture
{
protected:
    /// Frames that were shown so far, as the tool tip beside the dropped ones tells.
    int framesShown() const
    {
        const QString tip = control<QLabel>("droppedLabel")->toolTip();
        return numberIn(QRegularExpression(QStringLiteral("[0-9][0-9,]*")).match(tip).captured());
    }

    int numberShown(const char* name) const { return numberIn(figure(name)); }

    static int numberIn(const QString& text) { return QLocale().toInt(text); }
};

TEST_F(StereoViewLongRun, TenThousandFramesAtTwoHundredASecondLoseNoPoolSlotAndNoMemory)
{
    constexpr int framesWanted = 10000;
    constexpr double framesPerSecond = 200.0;
    constexpr int warmUp = 5000;          // ms
    constexpr int longestSilence = 30000; // ms
    QLocale::setDefault(QLocale::c());
    load(mode(VYRAny, VYRAny, 5, static_cast<float>(framesPerSecond)));

    int framesCalledBack = 0;
    // Emitted on the camera's thread, once for every frame that the library calls back with. Delivery is queued to the
    // GUI thread, where it is counted: behind by what waits there, and complete when that has been worked off.
    QObject::connect(host->cameraDevice(), &VYRCameraDevice::QChanged, host.get(), [&] { ++framesCalledBack; });
    host->start();
    QTest::qWait(warmUp);
    const long before = residentBytes();
    bool comes = true;
    while (framesCalledBack < framesWanted && comes) { // at whatever rate this machine can
        const int count = framesCalledBack;
        comes = QTest::qWaitFor([&] { return framesCalledBack > count; }, longestSilence);
    }
    EXPECT_TRUE(comes) << "the camera has gone silent after " << framesCalledBack << " frames";
    expectLittleGrowth(before);

    // Only the camera, so that the panel stays to be read. The simulated camera keeps its last 64 frames whole.
    ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff(); })) << framesOut() << " pool slots are lost";
    host->cameraDevice()->StopProcessing();
    ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff(); })) << framesOut() << " pool slots are lost";
    EXPECT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; })) << "figures are final";

    const int shown = framesShown();
    const int dropped = numberShown("droppedLabel");
    const int unreadable = numberShown("unreadableLabel");
    EXPECT_EQ(unreadable, 0);
    // Every frame that was called back was shown, was unreadable, or left a gap. A gap is left, too, by a frame that
    // the library itself was late for and never called back with; so the sum may be greater, but frames shown may not.
    EXPECT_LE(shown + unreadable, framesCalledBack);
    EXPECT_GE(shown + unreadable + dropped, framesCalledBack);
    std::printf("frame rate asked for %.0f, called back %d, shown %d, dropped %d, memory %+ld bytes\n", framesPerSecond,
                framesCalledBack, shown, dropped, residentBytes() - before);
}

} // namespace
