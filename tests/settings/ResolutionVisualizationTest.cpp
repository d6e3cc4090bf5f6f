// SPDX-License-Identifier: Apache-2.0
// The picture of the sensor, looked at pixel by pixel and dragged with the mouse.

#include "TestModes.h"

#include <settings/ResolutionTable.h>
#include <settings/ResolutionVisualization.h>

#include <gtest/gtest.h>

#include <QEvent>
#include <QGuiApplication>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>

namespace {

/// Counts how often a widget is painted, by itself and not for a picture of it.
class PaintCounter final : public QObject
{
public:
    explicit PaintCounter(QWidget& widget)
        : _widget(widget)
    {
        _widget.installEventFilter(this);
    }

    /// How often the widget is painted for what `change` does to it.
    int paintsAfter(const std::function<void()>& change)
    {
        paintWhatIsDue();
        _paints = 0;
        change();
        paintWhatIsDue();
        return _paints;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++_paints;
        return QObject::eventFilter(watched, event);
    }

private:
    // At once, instead of when the window system next asks for it.
    void paintWhatIsDue()
    {
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(_widget.window(), &request);
    }

    QWidget& _widget;
    int _paints = 0;
};

class ResolutionVisualizationTest : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); }

    // As large as the sensor, so that one pixel of the picture is one of the sensor.
    void show(const VYRResolutionInfo& mode)
    {
        picture = std::make_unique<ResolutionVisualization>(table, mode);
        picture->setFixedSize(752, 480);
        picture->setSensorPixelSize(20.0F);
        picture->setSensorGrayscale(true);
        picture->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(picture.get()));
        QObject::connect(picture.get(), &ResolutionVisualization::CameraResolutionChanged,
                         [this](VYRResolutionInfo newMode) { committed.push_back(newMode); });
    }

    QColor pixel(int x, int y) const { return picture->grab().toImage().pixelColor(x, y); }

    void press(QPoint position) { QTest::mousePress(picture.get(), Qt::LeftButton, Qt::NoModifier, position); }

    void move(QPoint position) { moveMouse(picture.get(), position); }

    void release(QPoint position) { QTest::mouseRelease(picture.get(), Qt::LeftButton, Qt::NoModifier, position); }

    static int overrideShape()
    {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr ? cursor->shape() : -1;
    }

    ResolutionTable table{testModes()};
    std::unique_ptr<ResolutionVisualization> picture;
    std::vector<VYRResolutionInfo> committed;
};

// --- drawing -----------------------------------------------------------------------------------------------

TEST_F(ResolutionVisualizationTest, ModeAsLargeAsTheSensorDarkensNothing)
{
    show(mode752x480());
    EXPECT_EQ(pixel(10, 10), QColor(96, 96, 96));
    EXPECT_EQ(pixel(30, 10), QColor(64, 64, 64));
    EXPECT_EQ(pixel(10, 30), QColor(64, 64, 64));
    EXPECT_EQ(pixel(30, 30), QColor(32, 32, 32));
    EXPECT_EQ(pixel(730, 470), QColor(64, 64, 64));
}

TEST_F(ResolutionVisualizationTest, EverythingOutsideTheCaptureWindowIsDarkened)
{
    show({320, 240, 0, 30.0F, 1.0F, 60.0F}); // x 216 to 535, y 120 to 359
    for (const QPoint outside : {QPoint(50, 50), QPoint(370, 50), QPoint(370, 450), QPoint(50, 250), QPoint(700, 250)})
        EXPECT_LT(pixel(outside.x(), outside.y()).red(), 20) << outside.x() << ' ' << outside.y();
    EXPECT_EQ(pixel(250, 250), QColor(96, 96, 96));
    // Alpha 0.82 of black leaves 0.18 of 96.
    EXPECT_NEAR(pixel(50, 50).red(), 17, 1);
}

TEST_F(ResolutionVisualizationTest, BorderIsHalfTransparentAndTheWindowDotted)
{
    show({320, 240, 0, 30.0F, 1.0F, 60.0F});
    // White at alpha 0.5 on a darkened cell of 17.
    EXPECT_NEAR(pixel(0, 10).red(), 136, 2);
    EXPECT_NEAR(pixel(751, 10).red(), (255 + 12) / 2.0, 4);
    const QImage image = picture->grab().toImage();
    const auto whiteInColumn = [&image](int x) {
        int white = 0;
        for (int y = 130; y < 350; ++y)
            white += image.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
        return white;
    };
    for (const int x : {215, 216}) { // two pixels wide
        EXPECT_GT(whiteInColumn(x), 50);
        EXPECT_LT(whiteInColumn(x), 170);
    }
    EXPECT_EQ(whiteInColumn(214), 0);
    EXPECT_EQ(whiteInColumn(217), 0);
    EXPECT_EQ(image.pixelColor(250, 250), QColor(96, 96, 96)); // the window is not filled
}

TEST_F(ResolutionVisualizationTest, TogglingGrayscaleChangesTheCellColoursOnly)
{
    show(mode752x480());
    QSignalSpy spy(picture.get(), &ResolutionVisualization::CameraResolutionChanged);
    picture->setProperty("sensorGrayscale", false);
    EXPECT_EQ(pixel(10, 10), QColor(255, 0, 0));
    EXPECT_EQ(pixel(30, 10), QColor(0, 255, 0));
    EXPECT_EQ(pixel(10, 30), QColor(0, 255, 0));
    EXPECT_EQ(pixel(30, 30), QColor(0, 0, 255));
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    EXPECT_EQ(picture->sensorResolution(), QSize(752, 480));
    EXPECT_FLOAT_EQ(picture->sensorPixelSize(), 20.0F);
    EXPECT_EQ(picture->sensorBinning(), 0);
    EXPECT_EQ(spy.count(), 0);
    picture->setProperty("sensorGrayscale", true);
    EXPECT_EQ(pixel(10, 10), QColor(96, 96, 96));
}

TEST_F(ResolutionVisualizationTest, BinningEnlargesTheCells)
{
    show(mode752x480());
    EXPECT_EQ(pixel(30, 30), QColor(32, 32, 32));
    picture->setProperty("sensorBinning", 5);
    EXPECT_EQ(pixel(30, 30), QColor(96, 96, 96));
    EXPECT_EQ(pixel(50, 30), QColor(64, 64, 64));
    EXPECT_EQ(pixel(50, 50), QColor(32, 32, 32));
}

TEST_F(ResolutionVisualizationTest, SensorPropertiesRepaint)
{
    show({320, 240, 0, 30.0F, 1.0F, 60.0F});
    EXPECT_EQ(pixel(250, 250), QColor(96, 96, 96));
    PaintCounter paints(*picture);
    EXPECT_EQ(paints.paintsAfter([this] { picture->setProperty("sensorPixelSize", 250.0F); }), 1);
    EXPECT_FLOAT_EQ(picture->property("sensorPixelSize").toFloat(), 250.0F);
    EXPECT_EQ(pixel(280, 260), QColor(32, 32, 32));
    EXPECT_NE(pixel(50, 50), QColor(96, 96, 96));
    // The window now fills the picture.
    EXPECT_EQ(paints.paintsAfter([this] { picture->setProperty("sensorResolution", QSize(320, 240)); }), 1);
    EXPECT_EQ(pixel(50, 50), QColor(96, 96, 96));
    EXPECT_EQ(paints.paintsAfter([this] { picture->setProperty("sensorGrayscale", false); }), 1);
    EXPECT_EQ(paints.paintsAfter([this] { picture->setProperty("sensorBinning", 9); }), 1); // without modes
}

TEST_F(ResolutionVisualizationTest, SettingTheModeRepaintsAndIsSilent)
{
    show(mode752x480());
    const VYRResolutionInfo small{320, 240, 0, 30.0F, 1.0F, 60.0F};
    EXPECT_EQ(PaintCounter(*picture).paintsAfter(
                  [&] { picture->setProperty("cameraResolution", QVariant::fromValue(small)); }),
              1);
    EXPECT_EQ(picture->property("cameraResolution").value<VYRResolutionInfo>(), small);
    EXPECT_LT(pixel(50, 50).red(), 20);
    EXPECT_TRUE(committed.empty());
}

TEST_F(ResolutionVisualizationTest, CommittedModeRepaints)
{
    show(mode752x480());
    PaintCounter paints(*picture);
    EXPECT_EQ(paints.paintsAfter([this] { picture->commitResolution(mode640x480()); }), 1);
    EXPECT_EQ(paints.paintsAfter([this] { QTest::keyClick(picture.get(), Qt::Key_Right); }), 1);
    ASSERT_EQ(committed.size(), 2U);
}

TEST_F(ResolutionVisualizationTest, ResizedPictureIsDrawnAnew)
{
    show(mode752x480());
    EXPECT_EQ(pixel(730, 470), QColor(64, 64, 64));
    picture->setFixedSize(900, 600);
    EXPECT_EQ(pixel(890, 590), QColor(64, 64, 64)); // column 44, row 29
}

TEST_F(ResolutionVisualizationTest, NonsenseIsDrawnWithoutHarm)
{
    show({2000000000, -2000000000, 3, NAN, INFINITY, -1.0F});
    pixel(1, 1);
    picture->setSensorResolution(QSize(0, 0));
    picture->setSensorPixelSize(1e-30F);
    pixel(1, 1);
    picture->setSensorPixelSize(NAN);
    picture->setCameraResolution({0, 0, -1, 0.0F, 0.0F, 0.0F});
    pixel(1, 1);
    EXPECT_EQ(pixel(376, 100).red(), 0); // no cells
    picture->setFixedSize(0, 0);
    picture->grab();
    picture->setFixedSize(752, 480);
    picture->setSensorPixelSize(20.0F);
    picture->setSensorResolution(QSize(752, 480));
    picture->setCameraResolution(mode752x480());
    // Second row, first column: the cells of binning 3 are four pixels wide.
    EXPECT_EQ(pixel(30, 30).red(), 64);
}

// --- binning -----------------------------------------------------------------------------------------------

TEST_F(ResolutionVisualizationTest, BinningTwoByTwoProposesAQuarterAndCommitsTheNearest)
{
    show(mode752x480());
    picture->setSensorBinning(5);
    ASSERT_EQ(committed.size(), 1U);
    EXPECT_EQ(committed.at(0), testModes().at(5)); // 376 x 240
    EXPECT_EQ(picture->cameraResolution(), committed.at(0));
    picture->setSensorBinning(10);
    ASSERT_EQ(committed.size(), 2U);
    EXPECT_EQ(committed.at(1), testModes().at(7)); // 188 x 120
    picture->setSensorBinning(0);
    ASSERT_EQ(committed.size(), 3U);
    EXPECT_EQ(committed.at(2), mode752x480());
}

TEST_F(ResolutionVisualizationTest, SameBinningAgainDoesNothing)
{
    show({700, 400, 0, 30.0F, 1.0F, 60.0F});
    picture->setSensorBinning(0);
    EXPECT_TRUE(committed.empty());
    EXPECT_EQ(picture->cameraResolution().width, 700);
}

TEST_F(ResolutionVisualizationTest, BinningWithoutModesLeavesTheMode)
{
    show(mode752x480());
    picture->setSensorBinning(9);
    EXPECT_TRUE(committed.empty());
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    // The area covered is still that of the mode in force.
    picture->setSensorBinning(5);
    ASSERT_EQ(committed.size(), 1U);
    EXPECT_EQ(committed.at(0), testModes().at(5));
}

TEST_F(ResolutionVisualizationTest, UnknownBinningCanBeLeft)
{
    show({300, 200, 3, 30.0F, 1.0F, 60.0F});
    picture->setSensorBinning(7);
    EXPECT_TRUE(committed.empty());
    picture->setSensorBinning(5);
    EXPECT_EQ(committed.size(), 1U);
}

// --- dragging ----------------------------------------------------------------------------------------------

// Receivers are meant to see each dragged mode twice; the second time must change nothing.
TEST_F(ResolutionVisualizationTest, DragEmitsTheNewModeTwice)
{
    show(mode640x480()); // x 56 to 695
    press({695, 240});
    move({745, 240});
    ASSERT_EQ(committed.size(), 2U);
    EXPECT_EQ(committed.at(0), mode752x480());
    EXPECT_EQ(committed.at(1), mode752x480());
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    release({745, 240});
    EXPECT_EQ(committed.size(), 2U);
}

TEST_F(ResolutionVisualizationTest, DraggedModeBringsItsOwnFrameRates)
{
    show({320, 240, 0, 99.0F, 1.0F, 100.0F});
    press({216, 240});
    move({56, 240});
    release({56, 240});
    ASSERT_FALSE(committed.empty());
    EXPECT_EQ(committed.back(), testModes().at(2)); // 640 x 360 is nearest to 640 x 240
}

TEST_F(ResolutionVisualizationTest, LeftAndTopEdgesGrowTheWindowToo)
{
    show({640, 360, 0, 40.0F, 1.0F, 80.0F}); // y 60 to 419
    press({376, 60});
    EXPECT_EQ(overrideShape(), Qt::SizeVerCursor);
    move({376, 5});
    release({376, 5});
    ASSERT_FALSE(committed.empty());
    EXPECT_EQ(committed.back(), mode640x480());
}

TEST_F(ResolutionVisualizationTest, CornerDragsWidthAndHeight)
{
    show({320, 240, 0, 50.0F, 1.0F, 100.0F}); // x 216 to 535, y 120 to 359
    press({535, 359});
    EXPECT_NE(overrideShape(), -1);
    move({751, 479});
    release({751, 479});
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
}

TEST_F(ResolutionVisualizationTest, MoveThatKeepsTheSizeEmitsNothing)
{
    show({640, 480, 0, 45.0F, 0.5F, 60.0F});
    press({695, 240});
    move({697, 240});
    move({694, 240});
    release({694, 240});
    EXPECT_TRUE(committed.empty());
    EXPECT_FLOAT_EQ(picture->cameraResolution().fps, 45.0F);
}

TEST_F(ResolutionVisualizationTest, MoveThatLeavesTheDraggedWindowDoesNothing)
{
    show(mode640x480());
    press({695, 240});
    move({751, 240});
    ASSERT_EQ(committed.size(), 2U);
    picture->setCameraResolution(mode640x480());
    move({751, 100}); // the same window: not even looked up
    EXPECT_EQ(committed.size(), 2U);
    release({751, 100});
}

TEST_F(ResolutionVisualizationTest, EveryMoveThatChangesTheDraggedWindowRepaints)
{
    show(mode640x480()); // x 56 to 695
    PaintCounter paints(*picture);
    press({695, 240});
    EXPECT_EQ(paints.paintsAfter([this] { move({700, 240}); }), 1);
    EXPECT_TRUE(committed.empty());
    EXPECT_EQ(paints.paintsAfter([this] { move({745, 240}); }), 1);
    EXPECT_EQ(committed.size(), 2U);
    EXPECT_EQ(paints.paintsAfter([this] { move({745, 100}); }), 0); // the same window
    release({745, 100});
}

TEST_F(ResolutionVisualizationTest, DragFarBeyondTheScreenEndsAtTheSensor)
{
    show(mode640x480());
    press({695, 240});
    move({30000, 30000});
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    move({-30000, -30000});
    EXPECT_EQ(picture->cameraResolution(), testModes().at(3)); // 320 x 480, the narrowest
    release({-30000, -30000});
}

TEST_F(ResolutionVisualizationTest, EdgeShowsItsCursorUntilTheRelease)
{
    show({320, 240, 0, 50.0F, 1.0F, 100.0F});
    press({542, 240}); // 7 pixels right of the edge
    EXPECT_EQ(overrideShape(), Qt::SizeHorCursor);
    release({542, 240});
    EXPECT_EQ(overrideShape(), -1);
    press({376, 360});
    EXPECT_EQ(overrideShape(), Qt::SizeVerCursor);
    release({376, 360});
    EXPECT_EQ(overrideShape(), -1);
}

TEST_F(ResolutionVisualizationTest, PressEightPixelsFromAnEdgeStartsNoDrag)
{
    show({320, 240, 0, 50.0F, 1.0F, 100.0F}); // x 216 to 535
    for (const QPoint start : {QPoint(543, 240), QPoint(224, 240), QPoint(376, 240)}) {
        press(start);
        EXPECT_EQ(overrideShape(), -1);
        move(start + QPoint(200, 200));
        release(start + QPoint(200, 200));
    }
    EXPECT_TRUE(committed.empty());
}

TEST_F(ResolutionVisualizationTest, MoveWithoutAPressDoesNothing)
{
    show(mode640x480());
    move({10, 10});
    EXPECT_TRUE(committed.empty());
    press({695, 240});
    release({695, 240});
    move({751, 240});
    EXPECT_TRUE(committed.empty());

    press({695, 240});
    move({751, 240});
    release({751, 240});
    committed.clear();
    move({300, 240});
    EXPECT_TRUE(committed.empty());
}

TEST_F(ResolutionVisualizationTest, SecondButtonDoesNotDisturbADrag)
{
    show(mode640x480());
    press({695, 240});
    QTest::mousePress(picture.get(), Qt::RightButton, Qt::NoModifier, {376, 200});
    QTest::mouseRelease(picture.get(), Qt::RightButton, Qt::NoModifier, {376, 200});
    EXPECT_EQ(overrideShape(), Qt::SizeHorCursor);
    move({751, 240});
    release({751, 240});
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    EXPECT_EQ(overrideShape(), -1);
}

TEST_F(ResolutionVisualizationTest, DoubleClickOnAnEdgeLeavesNoCursor)
{
    show(mode640x480());
    QTest::mouseClick(picture.get(), Qt::LeftButton, Qt::NoModifier, {695, 240});
    // Only its second press.
    QTest::mouseDClick(picture.get(), Qt::LeftButton, Qt::NoModifier, {695, 240});
    EXPECT_EQ(overrideShape(), Qt::SizeHorCursor);
    release({695, 240});
    EXPECT_EQ(overrideShape(), -1);
}

TEST_F(ResolutionVisualizationTest, HidingEndsTheDrag)
{
    show(mode640x480());
    press({695, 240});
    EXPECT_EQ(overrideShape(), Qt::SizeHorCursor);
    picture->hide();
    EXPECT_EQ(overrideShape(), -1);
    move({751, 240});
    EXPECT_TRUE(committed.empty());
}

TEST_F(ResolutionVisualizationTest, DestructionEndsTheDrag)
{
    show(mode640x480());
    press({695, 240});
    EXPECT_EQ(overrideShape(), Qt::SizeHorCursor);
    picture.reset();
    EXPECT_EQ(overrideShape(), -1);
}

TEST_F(ResolutionVisualizationTest, DragWithoutModesChangesNothing)
{
    table = ResolutionTable({});
    show(mode640x480());
    press({695, 240});
    move({751, 240});
    release({751, 240});
    EXPECT_TRUE(committed.empty());
    EXPECT_EQ(picture->cameraResolution(), mode640x480());
}

// --- keys --------------------------------------------------------------------------------------------------

TEST_F(ResolutionVisualizationTest, SidewaysKeysGoToTheNextWidthOfTheHeight)
{
    show(mode640x480());
    QTest::keyClick(picture.get(), Qt::Key_Right);
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    QTest::keyClick(picture.get(), Qt::Key_Left);
    QTest::keyClick(picture.get(), Qt::Key_Left);
    EXPECT_EQ(picture->cameraResolution(), testModes().at(3));
    EXPECT_EQ(committed.size(), 3U) << "each once: no drag";
}

TEST_F(ResolutionVisualizationTest, UpAndDownGoToTheNextHeightOfTheWidth)
{
    show(mode640x480());
    QTest::keyClick(picture.get(), Qt::Key_Down);
    EXPECT_EQ(picture->cameraResolution(), testModes().at(2));
    QTest::keyClick(picture.get(), Qt::Key_Up);
    EXPECT_EQ(picture->cameraResolution(), mode640x480());
}

TEST_F(ResolutionVisualizationTest, KeysWithoutAModeToGoToChangeNothing)
{
    show(mode752x480());
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
        QTest::keyClick(picture.get(), key);
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    for (const int size : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const VYRResolutionInfo nonsense{size, size, 42, 30.0F, 1.0F, 60.0F};
        picture->setCameraResolution(nonsense);
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
            QTest::keyClick(picture.get(), key);
        EXPECT_EQ(picture->cameraResolution(), nonsense);
    }
    EXPECT_TRUE(committed.empty());
}

TEST_F(ResolutionVisualizationTest, KeysInTheMiddleOfADragDoNothing)
{
    show(mode640x480());
    press({695, 240});
    QTest::keyClick(picture.get(), Qt::Key_Right);
    EXPECT_TRUE(committed.empty());
    release({695, 240});
    QTest::keyClick(picture.get(), Qt::Key_Right);
    EXPECT_EQ(committed.size(), 1U);
}

TEST_F(ResolutionVisualizationTest, AClickLeavesTheFocusWhereItIs)
{
    show(mode640x480());
    picture->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(picture.get()));
    picture->clearFocus();
    press({376, 240});
    release({376, 240});
    EXPECT_FALSE(picture->hasFocus());
}

TEST_F(ResolutionVisualizationTest, TheFocusIsSeenWhenAKeyHasBroughtIt)
{
    show(mode752x480());
    picture->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(picture.get()));
    const QColor without = pixel(1, 30);
    picture->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(pixel(1, 30), without);
    picture->clearFocus();
    picture->setFocus(Qt::ShortcutFocusReason);
    EXPECT_EQ(pixel(1, 30), picture->palette().color(QPalette::Highlight));
}

TEST_F(ResolutionVisualizationTest, PictureHasTheProportionsOfTheSensor)
{
    show(mode752x480());
    EXPECT_EQ(picture->sizeHint(), QSize(480, 306));
    picture->setSensorResolution(QSize(1280, 960));
    EXPECT_EQ(picture->sizeHint(), QSize(480, 360));
}

} // namespace
