// SPDX-License-Identifier: Apache-2.0
// The app that docs/first-app.md builds.

#include "TestHost.h"

#include <FakeVYR.h>
#include <PictureFrames.h>

#include <apps/AppInterface.h>

#include <QCheckBox>
#include <QDockWidget>
#include <QSettings>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <vector>

namespace {

const char* layoutName = "VYR-frame-1";

} // namespace

// The fake camera library has no layout of its own; here it has.
extern "C" __attribute__((visibility("default"))) const char* VYRFrameLayout();

extern "C" const char* VYRFrameLayout()
{
    return layoutName;
}

namespace {

const VYRResolutionInfo mode{320, 240, 0, 30.0F, 0.5F, 60.0F};
const VYRResolutionInfo otherMode{160, 120, 5, 30.0F, 0.5F, 60.0F};

class EdgeApp : public testing::Test
{
protected:
    EdgeApp()
    {
        layoutName = "VYR-frame-1";
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, _folder.path());
        FakeVYR::reset();
        FakeVYR::setModes({mode, otherMode});
        host = std::make_unique<TestHost>(mode);
        app = host->load(QStringLiteral(EDGE_APP));
    }

    void SetUp() override { ASSERT_NE(app, nullptr); }

    ~EdgeApp() override
    {
        host->stop(); // before the frames go that the worker reads
    }

    /// A frame with a bright right half: an edge of strength `step` down the middle.
    PictureFrame& newFrame(int step)
    {
        auto& frame = *_frames.emplace_back(std::make_unique<PictureFrame>(320, 240, 50, 0));
        for (int y = 0; y < 240; ++y)
            for (int x = 160; x < 320; ++x)
                frame.setLeftPixel(x, y, static_cast<unsigned char>(50 + step));
        return frame;
    }

    void emitFrame(const PictureFrame& frame) { FakeVYR::emitRecord(frame.record.asLibraryRecord()); }

    QWidget* view() const { return host->centralDock()->widget(); }
    QSlider* slider() const { return host->sideDock()->widget()->findChild<QSlider*>(); }
    QString figures() const { return static_cast<QLabel*>(host->bottomDock()->widget())->text(); }

    bool figuresStartWith(const char* text) const
    {
        return QTest::qWaitFor([&] { return figures().startsWith(QLatin1String(text)); });
    }

    /// Waits until the worker has let go of every frame emitted so far.
    bool worksOff() const
    {
        StereoFrameCache& pool = host->cameraDevice()->FrameCache();
        return QTest::qWaitFor([&pool] {
            std::vector<StereoFrame*> free;
            while (StereoFrame* const frame = pool.Acquire())
                free.push_back(frame);
            for (StereoFrame* const frame : free)
                pool.Release(frame);
            return free.size() == 32;
        });
    }

    /// The grey value on the screen in the middle of the view, where the edge is, or a quarter off it.
    int greyAt(double share) const
    {
        const QImage picture = view()->grab().toImage();
        return qGray(picture.pixel(static_cast<int>(picture.width() * share), picture.height() / 2));
    }

    void start()
    {
        host->start();
        slider()->setValue(40); // what the tests' figures belong to
    }

    /// Shows a frame with an edge of strength 100.
    void showAnEdge()
    {
        start();
        emitFrame(newFrame(100));
        ASSERT_TRUE(figuresStartWith("Edges on 0.6 % of the picture")); // 2 of 320 columns
    }

    std::unique_ptr<TestHost> host;
    AppInterface* app = nullptr;

private:
    QTemporaryDir _folder;
    std::deque<std::unique_ptr<PictureFrame>> _frames;
};

TEST_F(EdgeApp, IntroducesItself)
{
    EXPECT_EQ(app->name(), "Edges");
    EXPECT_TRUE(app->requiresCamera());
    EXPECT_GE(app->icon().actualSize(QSize(72, 72)).width(), 72) << "as large as the others in the settings dialog";
}

TEST_F(EdgeApp, ShowsTheEdgesOfTheLeftPicture)
{
    start();
    EXPECT_EQ(view()->accessibleDescription(), "Waiting for the camera");
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 % of the picture, 0.0 frames per second"));
    EXPECT_GT(greyAt(0.5), 70);
    EXPECT_EQ(greyAt(0.25), 0);
}

TEST_F(EdgeApp, TakesAllThreeDocksAndLeavesThemAsTheyWere)
{
    showAnEdge();
    EXPECT_TRUE(view()->isVisible());
    EXPECT_TRUE(slider()->isVisible());
    EXPECT_TRUE(host->bottomDock()->isVisible());
    host->stop();
    EXPECT_EQ(host->centralDock()->widget(), nullptr);
    EXPECT_EQ(host->sideDock()->widget(), nullptr);
    EXPECT_EQ(host->bottomDock()->widget(), nullptr);
    EXPECT_FALSE(host->bottomDock()->isVisible());
    EXPECT_FALSE(FakeVYR::isStreaming());
}

TEST_F(EdgeApp, TheBottomDockIsShownWithTheFirstFigures)
{
    start();
    EXPECT_FALSE(host->bottomDock()->isVisible());
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges"));
    EXPECT_TRUE(host->bottomDock()->isVisible());
    host->changeMode(otherMode);
    EXPECT_FALSE(host->bottomDock()->isVisible()) << "as long as there is nothing to read in it";
}

TEST_F(EdgeApp, StartsAnewInAnotherMode)
{
    showAnEdge();
    host->changeMode(otherMode);
    EXPECT_EQ(view()->accessibleDescription(), "Waiting for the camera");
    EXPECT_EQ(greyAt(0.5), 0) << "nothing of the old mode is shown";
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 %"));
}

TEST_F(EdgeApp, GivesEveryFrameBack)
{
    start();
    for (int i = 0; i < 100; ++i) {
        emitFrame(newFrame(i));
        ASSERT_TRUE(worksOff()) << "frame " << i;
    }
}

TEST_F(EdgeApp, TheThresholdHoldsFromTheNextFrameOn)
{
    showAnEdge();
    slider()->setValue(101);
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.0 %"));
}

TEST_F(EdgeApp, TheThresholdIsKeptFromStartToStart)
{
    host->start();
    slider()->setValue(0);
    host->stop();
    host->start();
    EXPECT_EQ(slider()->value(), 0);
    EXPECT_EQ(host->sideDock()->widget()->findChild<QLabel*>()->text(), "Threshold: 0");
}

TEST_F(EdgeApp, PlusAndMinusChangeTheThreshold)
{
    start();
    QTest::keyClick(host.get(), Qt::Key_Plus, Qt::ShiftModifier);
    EXPECT_EQ(slider()->value(), 45);
    QTest::keyClick(host.get(), Qt::Key_Minus);
    QTest::keyClick(host.get(), Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(slider()->value(), 35);
}

TEST_F(EdgeApp, SpaceFreezesThePictureAndLetsItGo)
{
    showAnEdge();
    QTest::keyClick(host.get(), Qt::Key_Space);
    EXPECT_EQ(host->field(1).lastText, "The picture stands still");
    emitFrame(newFrame(0));
    EXPECT_TRUE(worksOff());
    EXPECT_FALSE(app->updatePending());
    EXPECT_TRUE(figures().startsWith("Edges on 0.6 %"));
    QTest::keyClick(host.get(), Qt::Key_Space);
    EXPECT_EQ(host->field(1).lastText, "Live again");
    EXPECT_TRUE(figuresStartWith("Edges on 0.0 %")) << "the frame that came meanwhile";
}

TEST_F(EdgeApp, AStartLetsTheFrozenPictureGo)
{
    start();
    QTest::keyClick(host.get(), Qt::Key_Space);
    host->changeMode(otherMode);
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 %"));
}

TEST_F(EdgeApp, SpaceHeldDownIsPressedOnce)
{
    start();
    QTest::keyPress(host.get(), Qt::Key_Space);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QString(), true);
    EXPECT_TRUE(app->handleKeyEvent(&repeated)) << "used up all the same";
    EXPECT_EQ(host->field(1).lastText, "The picture stands still");
}

TEST_F(EdgeApp, OtherKeysAreTheHosts)
{
    host->start();
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    EXPECT_FALSE(app->handleKeyEvent(&letter));
    QKeyEvent shortcut(QEvent::KeyPress, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_FALSE(app->handleKeyEvent(&shortcut));
    QEvent other(QEvent::Show);
    EXPECT_FALSE(app->handleKeyEvent(&other));
    host->stop();
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    EXPECT_FALSE(app->handleKeyEvent(&space)) << "not current";
}

TEST_F(EdgeApp, TheSettingsTabTurnsTheColoursRoundAtOnceAndRemembersIt)
{
    showAnEdge();
    QWidget dialog;
    QWidget* const tab = app->createSettingsWidget(&dialog);
    ASSERT_NE(tab, nullptr);
    EXPECT_EQ(tab->parent(), &dialog);
    auto* const box = tab->findChild<QCheckBox*>();
    EXPECT_FALSE(box->isChecked());
    EXPECT_EQ(greyAt(0.25), 0);
    box->click();
    EXPECT_EQ(greyAt(0.25), 255);
    EXPECT_LT(greyAt(0.5), 255 - 70);

    app->initialize(host.get()); // as at the next start of the program
    EXPECT_TRUE(app->createSettingsWidget(&dialog)->findChild<QCheckBox*>()->isChecked());
    box->click();
    app->initialize(host.get());
    EXPECT_FALSE(app->createSettingsWidget(&dialog)->findChild<QCheckBox*>()->isChecked());
}

TEST_F(EdgeApp, TheSettingsTabIsThereForAnAppThatIsNotCurrent)
{
    QWidget dialog;
    QWidget* const tab = app->createSettingsWidget(&dialog);
    tab->findChild<QCheckBox*>()->click();
    start();
    EXPECT_EQ(greyAt(0.25), 0) << "no picture yet";
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 %"));
    EXPECT_EQ(greyAt(0.25), 255);
    tab->findChild<QCheckBox*>()->click();
}

TEST_F(EdgeApp, PicturesOfAnUnknownLayoutAreNotRead)
{
    layoutName = "something else";
    host->start();
    EXPECT_EQ(view()->accessibleDescription(), "The pictures of this camera library cannot be read.");
    EXPECT_FALSE(FakeVYR::isStreaming());
    EXPECT_FALSE(app->updatePending());
    host->stop();
    EXPECT_EQ(host->centralDock()->widget(), nullptr);
}

TEST_F(EdgeApp, AModeThatTheCameraDoesNotHaveIsToldInThePlaceOfTheOldPicture)
{
    showAnEdge();
    QTest::keyClick(host.get(), Qt::Key_Space);
    emitFrame(newFrame(100)); // which stays in the mailbox
    EXPECT_TRUE(worksOff());
    host->changeMode({336, 240, 0, 30.0F, 0.5F, 60.0F});
    EXPECT_EQ(view()->accessibleDescription(), "The camera has no such mode. Choose one under Settings, Camera.");
    EXPECT_FALSE(app->updatePending());
    EXPECT_EQ(greyAt(0.25), 0);
    EXPECT_FALSE(FakeVYR::isStreaming());
    host->changeMode(otherMode);
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 %"));
}

TEST_F(EdgeApp, FramesWithoutAPictureAreLeftOut)
{
    start();
    PictureFrame& bad = newFrame(100);
    bad.record.bitsPerPixel = 10;
    emitFrame(bad);
    EXPECT_TRUE(worksOff());
    EXPECT_FALSE(app->updatePending());
    EXPECT_EQ(figures(), "") << "nothing was put into the mailbox";
    emitFrame(newFrame(100));
    EXPECT_TRUE(figuresStartWith("Edges on 0.6 %")) << "the good one after it";
}

} // namespace
