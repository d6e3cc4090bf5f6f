// SPDX-License-Identifier: Apache-2.0
// Stereo View as users get it, with frames from a fake camera library.

#include "PictureFrames.h"
#include "StereoViewFixture.h"

#include <FakeVYR.h>
#include <camera/StereoFrame.h>
#include <tests/support/KeyboardReach.h>
#include <tests/support/WaitFor.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <deque>
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

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

const VYRResolutionInfo fullMode{752, 480, 0, 30.0F, 0.5F, 60.0F};
const VYRResolutionInfo smallMode{80, 60, 10, 30.0F, 0.5F, 250.0F};

class StereoViewApp : public StereoViewFixture
{
protected:
    StereoViewApp()
    {
        layoutName = "VYR-frame-1";
        QLocale::setDefault(QLocale::c()); // however the tester writes numbers
        FakeVYR::reset();
        FakeVYR::setModes({fullMode, smallMode});
        load(fullMode);
    }

    /// Keeps the frame, so that it stays for as long as somebody may read it.
    PictureFrame& newFrame(int width, int height, int leftGrey, int rightGrey)
    {
        frames.push_back(std::make_unique<PictureFrame>(width, height, static_cast<unsigned char>(leftGrey),
                                                        static_cast<unsigned char>(rightGrey)));
        frames.back()->record.frameCounter = nextCounter++;
        frames.back()->record.timestamp = nextCounter * 333;
        return *frames.back();
    }

    void emitFrame(const PictureFrame& frame) const { FakeVYR::emitRecord(frame.record.asLibraryRecord()); }

    void emitUnreadableFrame()
    {
        PictureFrame& frame = newFrame(8, 8, 1, 1);
        frame.record.bitsPerPixel = 10;
        emitFrame(frame);
    }

    /// Emits a frame and waits until the view shows it.
    void show(const PictureFrame& frame)
    {
        emitFrame(frame);
        ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff() && !app->updatePending(); }));
    }

    void show(int leftGrey, int rightGrey) { show(newFrame(752, 480, leftGrey, rightGrey)); }

    /// Waits until the panel tells of everything emitted so far; costs one unreadable frame.
    void waitForFreshFigures()
    {
        const QString before = figure("unreadableLabel");
        emitUnreadableFrame();
        EXPECT_TRUE(QTest::qWaitFor([&] { return figure("unreadableLabel") != before; }));
    }

    QColor shownAt(int x, int y) const { return view()->grab().toImage().pixelColor(x, y); }

    QColor shownAtShare(double x, double y) const
    {
        return shownAt(static_cast<int>(view()->width() * x), static_cast<int>(view()->height() * y));
    }

    void choose(int index)
    {
        auto* const box = control<QComboBox>("arrangement");
        box->setFocus();
        while (box->currentIndex() != index)
            QTest::keyClick(box, box->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
    }

    /// Shows the left picture alone, dark on the left and light on the right.
    void showHalves()
    {
        choose(2);
        PictureFrame& frame = newFrame(752, 480, 40, 40);
        for (int y = 0; y < 480; ++y)
            for (int x = 376; x < 752; ++x)
                frame.setLeftPixel(x, y, 200);
        show(frame);
    }

    void turnWheel(QPoint place, int notches)
    {
        QWheelEvent event(place, view()->mapToGlobal(place), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view(), &event);
    }

    ~StereoViewApp() override
    {
        host->stop();  // before the frames go that the worker reads
        announceEnd(); // the folder goes, too
    }

    /// As the application does when its event loop ends.
    static void announceEnd() { QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit"); }

    QStringList savedFiles() const { return QDir(directory.filePath("Pictures")).entryList(QDir::Files, QDir::Name); }

    std::deque<std::unique_ptr<PictureFrame>> frames;
    std::uint32_t nextCounter = 1;
};

class StereoViewSaving : public StereoViewApp
{
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_THREAD__
        // Its mutexes are futexes of its own: the sanitizer does not see that the pool's thread gets a task under one,
        // nor that it posts the answer under one, and reports all that is handed over.
        GTEST_SKIP() << "Qt's thread pool is not built for the thread sanitizer";
#endif
    }
};

TEST_F(StereoViewApp, IntroducesItself)
{
    EXPECT_TRUE(app->requiresCamera());
    EXPECT_EQ(app->name(), "Stereo View");
    EXPECT_FALSE(app->version().isEmpty());
    EXPECT_FALSE(app->description().isEmpty());
    EXPECT_EQ(app->icon().pixmap(72, 72).size(), QSize(72, 72));
    EXPECT_EQ(app->createSettingsWidget(host.get()), nullptr);
}

TEST_F(StereoViewApp, NothingIsPendingBeforeTheStart)
{
    EXPECT_FALSE(app->updatePending());
    app->update();
    app->stop();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier);
    EXPECT_FALSE(app->handleKeyEvent(&key));
}

TEST_F(StereoViewApp, StartFillsTheDocksAndStopLeavesThemClean)
{
    const auto childrenOf = [](QDockWidget* dock) { return dock->findChildren<QWidget*>().size(); };
    const auto central = childrenOf(host->centralDock());
    const auto side = childrenOf(host->sideDock());
    host->start();
    EXPECT_TRUE(view()->isVisible());
    EXPECT_TRUE(host->sideDock()->widget()->isVisible());
    host->stop();
    EXPECT_EQ(host->centralDock()->widget(), nullptr);
    EXPECT_EQ(host->sideDock()->widget(), nullptr);
    EXPECT_EQ(childrenOf(host->centralDock()), central);
    EXPECT_EQ(childrenOf(host->sideDock()), side);
}

TEST_F(StereoViewApp, LeavesAnotherAppsWidgetAlone)
{
    host->start();
    auto* const other = new QLabel("another app's");
    host->centralDock()->setWidget(other);
    host->stop();
    EXPECT_EQ(host->centralDock()->widget(), other);
}

/// Shows the app in a font, until the end of the test.
class StereoViewInFont : public StereoViewApp
{
protected:
    ~StereoViewInFont() override { QApplication::setFont(QFont()); }

    QScrollArea* panelIn(int points)
    {
        QApplication::setFont(QFont("Open Sans", points));
        host->start();
        return static_cast<QScrollArea*>(host->sideDock()->widget());
    }
};

TEST_F(StereoViewInFont, FitsIntoTheNarrowestSideDockAndA670PixelWindow)
{
    const QScrollArea* const panel = panelIn(10);
    EXPECT_LE(panel->minimumWidth(), 275);
    EXPECT_LE(panel->widget()->minimumSizeHint().height(), 620) << "menu and status bar need the rest";
    EXPECT_EQ(host->size(), QSize(1200, 670));
}

TEST_F(StereoViewInFont, ALargeFontWidensThePanelRatherThanCuttingItOff)
{
    const QScrollArea* const panel = panelIn(13);
    EXPECT_GT(panel->minimumWidth(), 275);
    EXPECT_LE(panel->minimumWidth(), 400);
    QTest::qWait(0);
    EXPECT_GE(panel->viewport()->width(), panel->widget()->minimumSizeHint().width());
}

TEST_F(StereoViewApp, StartsTheWorkerBeforeTheCamera)
{
    bool taken = false;
    // Says its mode once it has started, before it comes back to the app.
    QObject::connect(host->cameraDevice(), &VYRCameraDevice::InfoChanged, host.get(), [&] {
        emitFrame(newFrame(752, 480, 40, 200));
        taken = waitFor([&] { return worksOff(); });
    });
    host->start();
    EXPECT_TRUE(taken);
}

TEST_F(StereoViewApp, StopsTheWorkerBeforeTheCameraAndLeavesNothingQueued)
{
    host->start();
    VYRCameraDevice& camera = *host->cameraDevice();
    bool taken = false;
    FakeVYR::setDuringStop([&] {
        StereoFrame* const frame = camera.FrameCache().Acquire(); // one that was being handed over
        frame->owner = &camera;
        frame->record = newFrame(752, 480, 40, 200).record.asLibraryRecord();
        camera.OutputQueue().Push(frame);
        constexpr auto moment = std::chrono::milliseconds(200); // enough for a worker that still runs
        taken = waitFor([&] { return camera.Size() == 0; }, moment);
    });
    host->stop();
    EXPECT_FALSE(FakeVYR::isStreaming());
    EXPECT_FALSE(taken);
    EXPECT_EQ(camera.Size(), 0);
}

TEST_F(StereoViewApp, ForgetsWhatWasQueuedBeforeTheStart)
{
    host->cameraDevice()->StartProcessing();
    emitFrame(newFrame(752, 480, 1, 2));
    EXPECT_EQ(host->cameraDevice()->Size(), 1);
    nextCounter += 10; // a gap, if the frame before counted
    host->start();
    show(50, 60);
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(50, 50, 50));
    waitForFreshFigures();
    EXPECT_EQ(figure("droppedLabel"), "0");
}

TEST_F(StereoViewApp, ShowsLeftAndRightSideBySide)
{
    host->start();
    show(40, 200);
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(40, 40, 40));
    EXPECT_EQ(shownAtShare(0.75, 0.5), QColor(200, 200, 200));
    show(90, 10);
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(90, 90, 90));
}

TEST_F(StereoViewApp, ShowsEveryArrangement)
{
    host->start();
    show(40, 200);
    const QColor left(40, 40, 40);
    const QColor right(200, 200, 200);
    choose(1);
    EXPECT_EQ(shownAtShare(0.5, 0.25), left);
    EXPECT_EQ(shownAtShare(0.5, 0.75), right);
    choose(2);
    EXPECT_EQ(shownAtShare(0.25, 0.5), left);
    EXPECT_EQ(shownAtShare(0.75, 0.5), left);
    choose(3);
    EXPECT_EQ(shownAtShare(0.25, 0.5), right);
    EXPECT_EQ(shownAtShare(0.75, 0.5), right);
    choose(4);
    EXPECT_EQ(shownAtShare(0.5, 0.5), QColor(40, 200, 200));
    choose(5);
    EXPECT_EQ(shownAtShare(0.5, 0.5), QColor(160, 160, 160));
    choose(0);
    EXPECT_EQ(shownAtShare(0.25, 0.5), left);
}

TEST_F(StereoViewApp, ShowsPicturesOfEverySize)
{
    host->start();
    const std::vector<std::pair<int, int>> sizes = {{752, 480}, {376, 480}, {188, 480}, {752, 240}, {376, 240},
                                                    {188, 120}, {80, 60},   {752, 4},   {1, 1},     {81, 61}};
    int grey = 100;
    for (const auto& [width, height] : sizes) {
        ++grey;
        show(newFrame(width, height, grey, 10));
        // In a cell's very middle there is always picture, however narrow it is.
        const int x = (view()->width() - 2) / 4;
        if (height <= 4)
            continue; // too flat to be hit
        EXPECT_EQ(shownAt(x, view()->height() / 2).red(), grey) << width << " x " << height;
    }
}

TEST_F(StereoViewApp, WheelZoomsDraggingMovesAndADoubleClickResets)
{
    host->start();
    showHalves();
    const QColor dark(40, 40, 40);
    const QColor light(200, 200, 200);
    const QPoint middle = view()->rect().center();
    const QPoint leftOfIt = middle - QPoint(100, 0);
    ASSERT_EQ(shownAt(leftOfIt.x(), leftOfIt.y()), dark);

    turnWheel(middle + QPoint(200, 0), 10); // the edge in the middle moves out to the left
    EXPECT_EQ(shownAt(leftOfIt.x(), leftOfIt.y()), light);

    QTest::mousePress(view(), Qt::LeftButton, Qt::NoModifier, middle);
    EXPECT_EQ(view()->cursor().shape(), Qt::ClosedHandCursor);
    for (int step = 0; step < 20; ++step) {
        const QPoint from = middle + QPoint(200 * step, 0);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(200, 0), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view(), &move);
    }
    QTest::mouseRelease(view(), Qt::LeftButton, Qt::NoModifier, middle);
    EXPECT_EQ(view()->cursor().shape(), Qt::OpenHandCursor);
    EXPECT_EQ(shownAt(leftOfIt.x(), leftOfIt.y()), dark);
    EXPECT_EQ(shownAt(middle.x() + 100, middle.y()), dark);

    QTest::mouseDClick(view(), Qt::LeftButton, Qt::NoModifier, middle);
    EXPECT_EQ(shownAt(leftOfIt.x(), leftOfIt.y()), dark);
    EXPECT_EQ(shownAt(middle.x() + 100, middle.y()), light);
}

TEST_F(StereoViewApp, OnlyTheLeftButtonDrags)
{
    host->start();
    showHalves();
    const QPoint middle = view()->rect().center();
    turnWheel(middle, 5);
    const QImage before = view()->grab().toImage();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(view(), button, Qt::NoModifier, middle);
        QMouseEvent move(QEvent::MouseMove, middle + QPoint(40, 0), Qt::NoButton, button, Qt::NoModifier);
        QApplication::sendEvent(view(), &move);
        EXPECT_EQ(view()->grab().toImage(), before) << button;
        QTest::mouseRelease(view(), button, Qt::NoModifier, middle);
    }
}

/// Counts the events of one type that a widget receives.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QEvent::Type type)
        : _type(type)
    {
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == _type)
            ++count;
        return false;
    }

    int count = 0;

private:
    const QEvent::Type _type;
};

TEST_F(StereoViewApp, FramesLeaveTheCursorAlone)
{
    host->start();
    show(40, 200);
    EventCounter changes(QEvent::CursorChange);
    view()->installEventFilter(&changes);
    for (int i = 0; i < 5; ++i)
        show(40 + i, 200);
    EXPECT_EQ(changes.count, 0);
    turnWheel(view()->rect().center(), 3);
    EXPECT_EQ(changes.count, 1);
    for (int i = 0; i < 5; ++i)
        show(40 + i, 200);
    turnWheel(view()->rect().center(), 1);
    EXPECT_EQ(changes.count, 1) << "zoomed in further";
    turnWheel(view()->rect().center(), -10);
    EXPECT_EQ(changes.count, 2);
    EXPECT_EQ(view()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(StereoViewApp, EveryFrameIsDrawn)
{
    host->start();
    EventCounter paints(QEvent::Paint);
    view()->installEventFilter(&paints);
    for (int i = 0; i < 5; ++i) {
        const int before = paints.count;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            show(40 + i, 200); // again and again, so that no message is drawn
            return paints.count > before;
        })) << i;
    }
}

TEST_F(StereoViewApp, AMessageIsDrawn)
{
    host->start();
    show(40, 200);
    EventCounter paints(QEvent::Paint);
    view()->installEventFilter(&paints);
    int atMessage = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        if (message().isEmpty())
            atMessage = paints.count;
        return !message().isEmpty() && paints.count > atMessage;
    }));
}

TEST_F(StereoViewApp, TheHistogramFollowsThePictures)
{
    host->start();
    EventCounter paints(QEvent::Paint);
    control<QWidget>("histogram")->installEventFilter(&paints);
    for (int i = 0; i < 5; ++i) {
        const int before = paints.count;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            show(40 + i, 200);
            return paints.count > before;
        })) << i;
    }
}

TEST_F(StereoViewApp, TheHistogramIsAnAreaOfTheLeftPictureAndALineOfTheRight)
{
    host->start();
    PictureFrame& frame = newFrame(512, 4, 0, 0);
    for (int i = 0; i < 512 * 4; ++i) {
        frame.setLeftPixel(i % 512, i / 512, static_cast<unsigned char>(i % 128)); // the dark half of the greys
        frame.setRightPixel(i % 512, i / 512, static_cast<unsigned char>(128 + i % 128));
    }
    show(frame);
    const auto* const histogram = control<QWidget>("histogram");
    const QImage drawn = control<QWidget>("histogram")->grab().toImage();
    const QColor ground = histogram->palette().color(QPalette::Base);
    const int quarter = drawn.width() / 4;
    const int middle = drawn.height() / 2;
    EXPECT_NE(drawn.pixelColor(quarter, middle), ground) << "area";
    EXPECT_EQ(drawn.pixelColor(3 * quarter, middle), ground) << "no area, and the line is above it";
    int above = 0;
    while (above < middle && drawn.pixelColor(3 * quarter, above) == ground)
        ++above;
    EXPECT_LT(above, 5) << "line";
}

TEST_F(StereoViewApp, ControlsReachTheCamera)
{
    host->start();
    FakeVYR::clearCalls();
    QTest::keyClick(control<QSlider>("exposureSlider"), Qt::Key_PageUp);
    QTest::keyClick(control<QSlider>("gainSlider"), Qt::Key_Right);
    QTest::keyClick(control<QSpinBox>("ledBox"), Qt::Key_Up);
    for (const char* const flag : {"horizontalFlip", "verticalFlip", "swapCameras", "undistort"})
        QTest::keyClick(control<QCheckBox>(flag), Qt::Key_Space);
    EXPECT_THAT(FakeVYR::calls(),
                ElementsAre("Set 8 10 0", "Set 9 1", "Set 13 1", "Set 10 1", "Set 11 1", "Set 12 1", "Set 17 1"));
    EXPECT_EQ(control<QSpinBox>("exposureBox")->value(), 10);
    EXPECT_EQ(control<QSlider>("ledSlider")->value(), 1);
}

/// Turns the wheel over a control as the window system would, so that it may take the focus, too.
void turnWheelOver(QWidget* control, int notches)
{
    const QPoint middle = control->rect().center();
    QWheelEvent event(middle, control->mapToGlobal(middle), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QApplication::instance()->notify(control, &event);
}

TEST_F(StereoViewApp, TheWheelChangesAControlOnlyWhenItHasTheFocus)
{
    host->start();
    host->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    auto* const slider = control<QSlider>("exposureSlider");
    auto* const box = control<QSpinBox>("gainBox");
    auto* const list = control<QComboBox>("arrangement");
    control<QPushButton>("saveButton")->setFocus();
    FakeVYR::clearCalls();
    for (QWidget* const widget : std::initializer_list<QWidget*>{slider, box, list}) {
        turnWheelOver(widget, 1);
        turnWheelOver(widget, -1);
        turnWheelOver(widget, -1);
        turnWheelOver(widget, 1);
        turnWheelOver(widget, 1);
        EXPECT_FALSE(widget->hasFocus());
    }
    EXPECT_TRUE(FakeVYR::calls().empty());
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(box->value(), 0);
    EXPECT_EQ(list->currentIndex(), 0);

    slider->setFocus();
    turnWheelOver(slider, 1);
    EXPECT_GT(slider->value(), 0);
    box->setFocus();
    turnWheelOver(box, 1);
    EXPECT_GT(box->value(), 0);
    list->setFocus();
    turnWheelOver(list, -1);
    EXPECT_EQ(list->currentIndex(), 1);
}

TEST_F(StereoViewApp, TheWheelOverAControlScrollsThePanel)
{
    host->start();
    host->resize(1200, 300);
    auto* const panel = static_cast<QScrollArea*>(host->sideDock()->widget());
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel->verticalScrollBar()->maximum() > 0; }));
    turnWheelOver(control<QSlider>("exposureSlider"), -1);
    EXPECT_GT(panel->verticalScrollBar()->value(), 0);
}

TEST_F(StereoViewApp, TabReachesEveryControlInTheOrderOfTheEye)
{
    host->start();
    std::vector<std::string> names;
    for (const QWidget* const widget : focusRound(*host))
        names.push_back(widget == view() ? "view" : widget->objectName().toStdString());
    std::rotate(names.begin(), std::find(names.begin(), names.end(), "view"), names.end());
    EXPECT_THAT(names,
                ElementsAre("view", "exposureSlider", "exposureBox", "gainSlider", "gainBox", "ledSlider", "ledBox",
                            "verticalFlip", "horizontalFlip", "swapCameras", "undistort", "arrangement", "saveButton"));
}

TEST_F(StereoViewApp, BacktabGoesRoundTheOtherWay)
{
    host->start();
    std::vector<QWidget*> onward = focusRound(*host);
    onward.front()->setFocus();
    std::vector<QWidget*> back = focusRound(*host, Qt::Key_Backtab);
    std::reverse(back.begin(), back.end());
    std::rotate(back.begin(), std::find(back.begin(), back.end(), onward.front()), back.end());
    EXPECT_EQ(back, onward);
}

TEST_F(StereoViewApp, EveryControlHasANameAndAToolTip)
{
    host->start();
    for (QWidget* const widget : focusRound(*host)) {
        EXPECT_NE(spokenName(*widget), "") << widget->objectName().toStdString();
        if (widget != view()) { // a tool tip would cover what one looks at
            EXPECT_NE(widget->toolTip(), "") << widget->objectName().toStdString();
        }
    }
    EXPECT_EQ(spokenName(*control<QSlider>("exposureSlider")), "Exposure");
    EXPECT_EQ(spokenName(*control<QSpinBox>("exposureBox")), "Exposure");
    EXPECT_EQ(spokenName(*control<QCheckBox>("undistort")), "Undistort");
    EXPECT_NE(spokenName(*control<QWidget>("histogram")), "");
}

TEST_F(StereoViewApp, AltAndALetterReachEachControlAndNoneIsTakenTwice)
{
    host->start();
    expectALetterOfItsOwnForEach({"&File", "&Settings", "&Help"});

    host->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    QTest::keyClick(host.get(), Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), control<QSpinBox>("gainBox"));
    QTest::keyClick(host.get(), Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return control<QCheckBox>("horizontalFlip")->isChecked(); }));
}

TEST_F(StereoViewApp, ThePanelScrollsToTheControlWithTheFocus)
{
    host->start();
    host->resize(1200, 300);
    auto* const panel = static_cast<QScrollArea*>(host->sideDock()->widget());
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel->verticalScrollBar()->maximum() > 0; }));
    host->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    auto* const save = control<QPushButton>("saveButton");
    control<QComboBox>("arrangement")->setFocus();
    ASSERT_LT(panel->viewport()->height(), save->mapTo(panel->viewport(), QPoint(0, 0)).y());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), save);
    EXPECT_TRUE(panel->viewport()->rect().contains(save->mapTo(panel->viewport(), save->rect().center())));
}

/// The view with a picture that is dark on the left and light on the right, shown alone.
class StereoViewByKey : public StereoViewApp
{
protected:
    void SetUp() override
    {
        host->start();
        showHalves();
        host->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
        view()->setFocus();
    }

    void press(Qt::Key key, int times)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(view(), key);
    }

    /// How many pixels of the row in the middle are dark, of the picture that is.
    int darkPixels() const
    {
        const QImage shown = view()->grab().toImage();
        int count = 0;
        for (int x = 0; x < shown.width(); ++x)
            count += shown.pixelColor(x, shown.height() / 2) == QColor(40, 40, 40) ? 1 : 0;
        return count;
    }
};

TEST_F(StereoViewByKey, PlusAndMinusZoomAboutTheMiddleAndZeroResets)
{
    const QImage whole = view()->grab().toImage();
    const int half = darkPixels();
    press(Qt::Key_Plus, 4);
    EXPECT_NE(view()->grab().toImage(), whole);
    EXPECT_NEAR(2 * darkPixels(), view()->width(), 4) << "the middle stays in the middle";
    press(Qt::Key_Minus, 4);
    EXPECT_EQ(darkPixels(), half);
    press(Qt::Key_Plus, 2);
    press(Qt::Key_0, 1);
    EXPECT_EQ(view()->grab().toImage(), whole);
}

TEST_F(StereoViewApp, BeforeTheFirstPictureThereIsNothingToZoom)
{
    host->start();
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(view(), Qt::Key_Plus);
    EXPECT_EQ(view()->cursor().shape(), Qt::ArrowCursor);
    show(40, 200);
    const QImage first = view()->grab().toImage();
    QTest::keyClick(view(), Qt::Key_0);
    EXPECT_EQ(first, view()->grab().toImage()) << "all of it";
}

TEST_F(StereoViewByKey, ArrowKeysMoveWhatIsSeen)
{
    press(Qt::Key_Plus, 4);
    const int half = darkPixels();
    press(Qt::Key_Right, 1);
    EXPECT_NEAR(darkPixels(), half - 48, 2);
    press(Qt::Key_Left, 2);
    EXPECT_NEAR(darkPixels(), half + 48, 2);
    press(Qt::Key_Left, 100);
    EXPECT_NEAR(darkPixels(), view()->width(), 4) << "no further than the picture's edge";
}

TEST_F(StereoViewByKey, OtherKeysOfTheViewAreLeftToTheWindow)
{
    for (const auto& [key, modifiers] : std::initializer_list<std::pair<Qt::Key, Qt::KeyboardModifier>>{
             {Qt::Key_T, Qt::NoModifier}, {Qt::Key_Plus, Qt::ControlModifier}, {Qt::Key_Left, Qt::AltModifier}}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(view(), &event);
        EXPECT_FALSE(event.isAccepted()) << key;
    }
}

TEST_F(StereoViewByKey, TheFocusIsSeenWhenAKeyHasBroughtIt)
{
    const auto corner = [this] { return shownAt(1, 1); };
    const QColor frame = view()->palette().color(QPalette::Highlight);
    EXPECT_NE(corner(), frame);
    QTest::keyClick(view(), Qt::Key_Tab);
    EXPECT_NE(corner(), frame);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    ASSERT_TRUE(view()->hasFocus());
    EXPECT_EQ(corner(), frame);
}

TEST_F(StereoViewApp, ZeroReadsAutoAndOff)
{
    host->start();
    EXPECT_EQ(control<QSpinBox>("exposureBox")->text(), "auto");
    EXPECT_EQ(control<QSpinBox>("gainBox")->text(), "auto");
    EXPECT_EQ(control<QSpinBox>("ledBox")->text(), "off");
    for (const char* const name : {"exposureBox", "gainBox", "ledBox"}) {
        EXPECT_EQ(control<QSpinBox>(name)->minimum(), 0);
        EXPECT_EQ(control<QSpinBox>(name)->maximum(), 100);
    }
}

TEST_F(StereoViewApp, TypingANumberSendsItOnceWhenItIsComplete)
{
    host->start();
    auto* const box = control<QSpinBox>("gainBox");
    box->selectAll();
    FakeVYR::clearCalls();
    QTest::keyClicks(box, "75");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_THAT(FakeVYR::calls(), ElementsAre("Set 9 75"));
}

TEST_F(StereoViewApp, ChoicesComeBackAfterAnAppSwitchAndReachTheCameraAgain)
{
    host->start();
    for (const char* const slider : {"exposureSlider", "gainSlider", "ledSlider"})
        QTest::keyClick(control<QSlider>(slider), Qt::Key_PageUp);
    for (const char* const flag : {"horizontalFlip", "swapCameras", "undistort"})
        QTest::keyClick(control<QCheckBox>(flag), Qt::Key_Space);
    choose(4);
    host->stop();
    // Another app has its own ideas.
    host->cameraDevice()->Exposure(77);
    host->cameraDevice()->Gain(77);
    host->cameraDevice()->Led(77);
    host->cameraDevice()->HFlip(false);
    host->cameraDevice()->VFlip(true);
    FakeVYR::clearCalls();

    host->start();
    EXPECT_EQ(control<QSlider>("exposureSlider")->value(), 10);
    EXPECT_TRUE(control<QCheckBox>("horizontalFlip")->isChecked());
    EXPECT_FALSE(control<QCheckBox>("verticalFlip")->isChecked());
    EXPECT_EQ(control<QComboBox>("arrangement")->currentIndex(), 4);
    const std::vector<std::string> calls = FakeVYR::calls();
    const auto started = std::find(calls.begin(), calls.end(), "StartVYR 1");
    EXPECT_THAT(std::vector(calls.begin(), started),
                IsSupersetOf({"Set 8 10 0", "Set 9 10", "Set 13 10", "Set 10 1", "Set 11 0"}));
    // The camera node does not remember swapped cameras, nor undistortion.
    EXPECT_THAT(std::vector(started, calls.end()), IsSupersetOf({"Set 12 1", "Set 17 1"}));
    show(30, 60);
    EXPECT_EQ(shownAtShare(0.5, 0.5), QColor(30, 60, 60));
}

TEST_F(StereoViewApp, StoredChoicesAreTakenAtTheFirstStart)
{
    QSettings(QSettings::IniFormat, QSettings::UserScope, "VYRDashboard", "Apps").setValue("StereoView/gain", 33);
    host->start();
    EXPECT_EQ(control<QSlider>("gainSlider")->value(), 33);
    EXPECT_THAT(FakeVYR::calls(), Contains("Set 9 33"));
}

TEST_F(StereoViewApp, ChoicesLastWhereNothingCanBeStored)
{
    QFile inTheWay(directory.filePath("no folder"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, inTheWay.fileName());
    host->start();
    QTest::keyClick(control<QSlider>("exposureSlider"), Qt::Key_PageUp);
    choose(2);
    FakeVYR::clearCalls();
    host->changeMode(smallMode);
    EXPECT_EQ(control<QSlider>("exposureSlider")->value(), 10);
    EXPECT_EQ(control<QComboBox>("arrangement")->currentIndex(), 2);
    EXPECT_THAT(FakeVYR::calls(), Contains("Set 8 10 0"));
}

TEST_F(StereoViewApp, ChoicesAreStoredWhileRunning)
{
    host->start();
    QTest::keyClick(control<QSlider>("ledSlider"), Qt::Key_PageUp);
    EXPECT_TRUE(QTest::qWaitFor([] {
        return QSettings(QSettings::IniFormat, QSettings::UserScope, "VYRDashboard", "Apps").value("StereoView/led")
            == 10;
    }));
}

TEST_F(StereoViewSaving, SavesThePairByKey)
{
    host->start();
    show(40, 200);
    QTest::keyClick(host.get(), Qt::Key_S);
    ASSERT_TRUE(QTest::qWaitFor([&] { return host->field(1).lastText.startsWith("Saved stereo_"); }));
    EXPECT_FALSE(host->field(1).lastColor.isValid());
    const QStringList files = savedFiles();
    ASSERT_EQ(files.size(), 2);
    EXPECT_TRUE(files[0].endsWith("_left.png"));
    EXPECT_TRUE(files[1].endsWith("_right.png"));
    const QImage left(directory.filePath("Pictures/" + files[0]));
    EXPECT_EQ(left.size(), QSize(752, 480));
    EXPECT_EQ(left.pixelColor(751, 479).red(), 40);
    EXPECT_EQ(QImage(directory.filePath("Pictures/" + files[1])).pixelColor(751, 479).red(), 200);
    const QString fileBase = files[0].chopped(static_cast<int>(std::strlen("_left.png")));
    EXPECT_EQ(host->field(1).lastText, "Saved " + fileBase) << "a folder could widen the window";
    EXPECT_EQ(control<QLabel>("savedLabel")->text(), fileBase);
    EXPECT_EQ(control<QLabel>("savedLabel")->toolTip(), directory.filePath("Pictures"));
}

TEST_F(StereoViewSaving, SavesThePairByButton)
{
    host->start();
    show(40, 200);
    QTest::mouseClick(control<QPushButton>("saveButton"), Qt::LeftButton);
    QTest::mouseClick(control<QPushButton>("saveButton"), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return savedFiles().size() == 4; }));
}

TEST_F(StereoViewSaving, LetterKeysReachTheAppFromItsControls)
{
    host->start();
    show(40, 200);
    int expected = 0;
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             control<QSpinBox>("gainBox"), control<QComboBox>("arrangement"), control<QSlider>("ledSlider")}) {
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_S);
        expected += 2;
        EXPECT_TRUE(QTest::qWaitFor([&] { return savedFiles().size() == expected; })) << expected;
    }
    EXPECT_EQ(control<QComboBox>("arrangement")->currentIndex(), 0);
}

TEST_F(StereoViewApp, OtherKeysAreLeftToTheHost)
{
    host->start();
    show(40, 200);
    QKeyEvent other(QEvent::KeyPress, Qt::Key_T, Qt::NoModifier);
    EXPECT_FALSE(app->handleKeyEvent(&other));
    QKeyEvent withControl(QEvent::KeyPress, Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(app->handleKeyEvent(&withControl));
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_S, Qt::NoModifier);
    EXPECT_FALSE(app->handleKeyEvent(&released));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier, "s", true);
    EXPECT_TRUE(app->handleKeyEvent(&held));
    host->stop();
    announceEnd();
    EXPECT_TRUE(savedFiles().isEmpty()) << "holding the key saves no row of pictures";
}

TEST_F(StereoViewSaving, AFailedSaveIsToldInRed)
{
    QFile inTheWay(directory.filePath("Pictures"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    host->start();
    show(40, 200);
    QTest::keyClick(host.get(), Qt::Key_S);
    ASSERT_TRUE(QTest::qWaitFor([&] { return host->field(1).lastText.contains("failed"); }));
    EXPECT_EQ(host->field(1).lastColor, QColor(Qt::red));
    EXPECT_FALSE(host->field(1).lastText.contains(directory.path())) << "a folder could widen the window";
}

TEST_F(StereoViewApp, SavingBeforeTheFirstPictureIsToldInRed)
{
    host->start();
    QTest::keyClick(host.get(), Qt::Key_S);
    EXPECT_EQ(host->field(1).lastText, "There is no picture to save yet");
    EXPECT_EQ(host->field(1).lastColor, QColor(Qt::red));
}

TEST_F(StereoViewApp, ACapitalSSavesAsWell)
{
    host->start();
    QTest::keyClick(host.get(), Qt::Key_S, Qt::ShiftModifier);
    EXPECT_EQ(host->field(1).lastText, "There is no picture to save yet");
}

TEST_F(StereoViewSaving, OnlyTheEndOfTheProgramWaitsForPicturesThatAreBeingSaved)
{
    host->start();
    PictureFrame& frame = newFrame(1600, 1200, 40, 200); // large and noisy, so that it takes its time
    for (int i = 0; i < 1600 * 1200; ++i)
        frame.setLeftPixel(i % 1600, i / 1600,
                           static_cast<unsigned char>(static_cast<unsigned>(i) * 2654435761U >> 24U));
    show(frame);
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(host.get(), Qt::Key_S);
    host->stop();
    EXPECT_LT(savedFiles().size(), 10) << "the stop waited";
    announceEnd();
    ASSERT_EQ(savedFiles().size(), 10);
    for (const QString& file : savedFiles())
        EXPECT_FALSE(QImage(directory.filePath("Pictures/" + file)).isNull());
    EXPECT_TRUE(QTest::qWaitFor([&] { return host->field(1).lastText.startsWith("Saved stereo_"); }));
}

TEST_F(StereoViewApp, BadRecordsAreCountedAndNotShown)
{
    host->start();
    show(40, 200);
    std::vector<void (*)(PictureRecord&)> spoilers = {
        [](PictureRecord& r) { r.recordSize = 0; },
        [](PictureRecord& r) { r.width = 0; },
        [](PictureRecord& r) { r.height = -480; },
        [](PictureRecord& r) {
            r.width = 16385;
            r.bytesPerRow = 16400;
        },
        [](PictureRecord& r) { r.bytesPerRow = 751; },
        [](PictureRecord& r) { r.left = 0; },
        [](PictureRecord& r) { r.right = 0; },
        [](PictureRecord& r) { r.bitsPerPixel = 16; },
    };
    for (const auto spoil : spoilers) {
        PictureFrame& frame = newFrame(752, 480, 99, 99);
        spoil(frame.record);
        emitFrame(frame);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return figure("unreadableLabel") == "8"; }));
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(40, 40, 40));
    show(41, 200);
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(41, 41, 41));
    waitForFreshFigures();
    EXPECT_EQ(figure("droppedLabel"), "0") << "they came, so they are not missing";
    nextCounter += 3;
    show(42, 200);
    waitForFreshFigures();
    EXPECT_EQ(figure("droppedLabel"), "3");
}

TEST_F(StereoViewApp, FramesThatAreAllBadAreTold)
{
    host->start();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        emitUnreadableFrame();
        QTest::qWait(20);
        return message() == "The camera's frames cannot be read";
    }));
}

TEST_F(StereoViewApp, GapsInTheFrameCounterAreDroppedFrames)
{
    host->start();
    show(1, 1);
    nextCounter += 3;
    show(2, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return figure("droppedLabel") == "3"; }));
    nextCounter = 0; // the camera has been started again
    show(3, 3);
    nextCounter += 2;
    show(4, 4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return figure("droppedLabel") == "5"; }));
}

TEST_F(StereoViewApp, ShowsTheFiguresOfTheStream)
{
    host->start();
    for (int i = 0; i < 40; ++i)
        show(i, i);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        show(7, 7);
        return figure("frameRateLabel").endsWith(" fps") && figure("nodeTimeLabel").endsWith(" ms")
            && figure("brightnessLabel") == "Mean 7, fully white 0.0 %";
    }));
    EXPECT_EQ(figure("pictureSizeLabel"), QStringLiteral("752 \u00D7 480"));
}

TEST_F(StereoViewApp, WritesAllFiguresAsTheUserDoes)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    host->start();
    nextCounter = 0;
    show(7, 7);
    nextCounter = 1505;
    show(7, 7);
    EXPECT_TRUE(QTest::qWaitFor([&] { return figure("droppedLabel") == "1.504"; }));
    nextCounter = 0; // the camera has been started again
    EXPECT_TRUE(QTest::qWaitFor([&] {
        show(7, 7);
        return figure("frameRateLabel") == "30,0 fps" && figure("nodeTimeLabel").contains(',');
    })) << figure("frameRateLabel").toStdString()
        << ", " << figure("nodeTimeLabel").toStdString();
    EXPECT_EQ(figure("brightnessLabel"), "Mean 7, fully white 0,0 %");
}

TEST_F(StereoViewApp, SaysWhenFramesStopAndKeepsTheLastPictureDimmed)
{
    host->start();
    show(200, 200);
    EXPECT_EQ(message(), "");
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
    EXPECT_GE(timer.elapsed(), 900);
    EXPECT_LT(shownAtShare(0.25, 0.5).red(), 120);
    EXPECT_GT(shownAtShare(0.25, 0.5).red(), 40);
    EXPECT_FALSE(figure("frameRateLabel").contains("fps"));
    show(201, 200);
    EXPECT_EQ(message(), "");
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(201, 201, 201));
}

TEST_F(StereoViewApp, FramesThatKeepComingAreNeverCalledMissing)
{
    host->start();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 1600) {
        show(200, 200);
        EXPECT_EQ(message(), "");
        QTest::qWait(20);
    }
    EXPECT_TRUE(figure("nodeTimeLabel").endsWith(" ms")) << "told of while frames come";
}

TEST_F(StereoViewApp, WaitsLongerInASlowMode)
{
    host->start();
    VYRResolutionInfo slowMode = fullMode;
    slowMode.fps = 1.0F;
    host->changeMode(slowMode);
    show(200, 200);
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
    EXPECT_GE(timer.elapsed(), 2200);
}

TEST_F(StereoViewApp, StaysWithUnreadableFramesBetweenTwoOfThemInASlowMode)
{
    host->start();
    VYRResolutionInfo slowMode = fullMode;
    slowMode.fps = 1.0F;
    host->changeMode(slowMode);
    ASSERT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
    QElapsedTimer timer;
    timer.start();
    emitUnreadableFrame();
    ASSERT_TRUE(QTest::qWaitFor([&] { return message() == "The camera's frames cannot be read"; }));
    ASSERT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
    EXPECT_GE(timer.elapsed(), 2200);
}

TEST_F(StereoViewApp, SaysWhenNoFrameEverComes)
{
    FakeVYR::setStarts(false);
    host->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
}

TEST_F(StereoViewApp, AModeThatTheCameraHasNotIsTold)
{
    host->start();
    VYRResolutionInfo unknownMode = fullMode;
    unknownMode.height = 481;
    for (const VYRResolutionInfo& mode : {unknownMode, VYRResolutionInfo{}}) {
        host->changeMode(mode);
        EXPECT_FALSE(FakeVYR::isStreaming());
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return message() == "The camera has no such mode.\nChoose one under Settings, Camera.";
        })) << message().toStdString();
    }
    host->changeMode(fullMode);
    show(40, 200);
    EXPECT_EQ(message(), "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return message() == "No frames from the camera"; }));
}

TEST_F(StereoViewApp, GoesOnThroughModeChanges)
{
    host->start();
    for (int round = 0; round < 5; ++round) {
        show(newFrame(752, 480, 100 + round, 10));
        EXPECT_EQ(shownAtShare(0.25, 0.5).red(), 100 + round);
        emitFrame(newFrame(752, 480, 1, 1)); // on its way while the mode changes
        host->changeMode(smallMode);
        show(newFrame(80, 60, 150 + round, 10));
        EXPECT_EQ(shownAtShare(0.25, 0.5).red(), 150 + round);
        EXPECT_EQ(figure("droppedLabel"), "0");
        host->changeMode(fullMode);
    }
}

TEST_F(StereoViewApp, AnUnknownLayoutIsToldAndNothingIsRead)
{
    layoutName = "VYR-frame-2";
    host->start();
    EXPECT_THAT(message().toStdString(), testing::HasSubstr("picture layout of this camera library is not known"));
    PictureFrame& frame = newFrame(752, 480, 200, 200);
    frame.record.left = 1; // nobody may follow it
    emitFrame(frame);
    ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff(); }));
    EXPECT_FALSE(app->updatePending());
    EXPECT_EQ(figure("unreadableLabel"), "0");
}

TEST_F(StereoViewApp, AStartForgetsThePictureThatTheLastOneDidNotShow)
{
    host->start();
    emitFrame(newFrame(752, 480, 40, 200));
    ASSERT_TRUE(waitFor([&] { return worksOff(); })); // and nobody asks the app for an update
    ASSERT_TRUE(app->updatePending());
    host->changeMode(smallMode);
    EXPECT_FALSE(app->updatePending());
}

TEST_F(StereoViewApp, ASecondStartIsAFreshOne)
{
    host->start();
    const auto widgets = host->findChildren<QWidget*>().size();
    app->start();
    EXPECT_EQ(host->findChildren<QWidget*>().size(), widgets);
    show(60, 70);
    EXPECT_EQ(shownAtShare(0.25, 0.5), QColor(60, 60, 60));
}

TEST_F(StereoViewApp, TenThousandFramesLoseNoPoolSlotAndNoMemory)
{
    constexpr int warmUp = 1000;
    constexpr int total = 10000;
    for (int i = 0; i < 64; ++i)
        newFrame(320, 120, i, 255 - i);
    host->start();
    long before = 0;
    for (int i = 0; i < total; ++i) {
        PictureFrame& frame = *frames[static_cast<std::size_t>(i) % frames.size()];
        frame.record.frameCounter = static_cast<std::uint32_t>(i);
        frame.record.timestamp = static_cast<std::uint32_t>(i) * 50;
        // As fast as they are worked off: the queue is never full, so that none may be missing.
        ASSERT_TRUE(QTest::qWaitFor([&] { return host->cameraDevice()->Size() < 8; }));
        emitFrame(frame);
        if (i % 4 == 0)
            QCoreApplication::processEvents();
        if (i == warmUp)
            before = residentBytes();
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return worksOff(); })) << framesOut() << " pool slots are lost";
    nextCounter = total;
    waitForFreshFigures();
    EXPECT_EQ(figure("droppedLabel"), "0");
    expectLittleGrowth(before);
}

} // namespace
