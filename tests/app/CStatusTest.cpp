// SPDX-License-Identifier: Apache-2.0
// The fields of the status bar.

#include <app/CStatus.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QStatusBar>
#include <QTest>

#include <thread>

namespace {

class CStatusTest : public testing::Test
{
protected:
    CStatus* addField(int displayTime)
    {
        auto* const field = new CStatus(displayTime, _window.statusBar());
        _window.statusBar()->addPermanentWidget(field);
        return field;
    }

    QMainWindow _window;
};

TEST_F(CStatusTest, AFieldStartsEmpty)
{
    EXPECT_EQ(addField(0)->text(), QString());
}

TEST_F(CStatusTest, ATextSetOnTheGuiThreadIsThereAtOnce)
{
    CStatus* const field = addField(0);
    field->setStatusText("hello");
    EXPECT_EQ(field->text(), "hello");
}

TEST_F(CStatusTest, ATextWithADisplayTimeIsClearedWhenItIsOverAndNotBefore)
{
    if (QTime::currentTime() > QTime(23, 59, 50))
        GTEST_SKIP() << "midnight is near, and texts are cleared early";
    CStatus* const field = addField(1000);
    QElapsedTimer time;
    time.start();
    field->setStatusText("brief");
    ASSERT_TRUE(QTest::qWaitFor([&] { return field->text().isEmpty(); }, 20000));
    EXPECT_GE(time.elapsed(), 999);
}

TEST_F(CStatusTest, ANewTextLivesItsWholeTime)
{
    if (QTime::currentTime() > QTime(23, 59, 50))
        GTEST_SKIP() << "midnight is near, and texts are cleared early";
    CStatus* const field = addField(400);
    field->setStatusText("first");
    QTest::qWait(300);
    QElapsedTimer time;
    time.start();
    field->setStatusText("second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return field->text().isEmpty(); }, 20000));
    EXPECT_GE(time.elapsed(), 399);
}

TEST_F(CStatusTest, ATextWithoutADisplayTimeStaysUntilItIsReplaced)
{
    CStatus* const field = addField(0);
    EXPECT_TRUE(field->findChildren<QTimer*>().size() == 1 && !field->findChild<QTimer*>()->isActive());
    field->setStatusText("stays");
    QTest::qWait(1300);
    EXPECT_EQ(field->text(), "stays");
    field->setStatusText("replaced");
    EXPECT_EQ(field->text(), "replaced");
}

TEST_F(CStatusTest, TheCheckRunsEveryQuarterOfTheDisplayTime)
{
    const auto* const timer = addField(1000)->findChild<QTimer*>();
    ASSERT_NE(timer, nullptr);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 250);
}

TEST_F(CStatusTest, AnExpiryIsReachedAtItsTime)
{
    EXPECT_FALSE(CStatus::isExpired(QTime(12, 0, 0, 999), QTime(12, 0, 1)));
    EXPECT_TRUE(CStatus::isExpired(QTime(12, 0, 1), QTime(12, 0, 1)));
    EXPECT_TRUE(CStatus::isExpired(QTime(12, 0, 2), QTime(12, 0, 1)));
}

TEST_F(CStatusTest, AnExpiryPastMidnightCountsAsReachedAtTheFirstCheck)
{
    const QTime set(23, 59, 59, 500);
    EXPECT_TRUE(CStatus::isExpired(set.addMSecs(250), set.addMSecs(1000)));
}

TEST_F(CStatusTest, AColouredTextIsRichTextWithTheColoursName)
{
    CStatus* const field = addField(0);
    field->setStatusTextColored("x", Qt::red);
    EXPECT_EQ(field->text(), "<font color=#ff0000>x</font>");
}

TEST_F(CStatusTest, AColouredTextMayHoldPlaceMarkers)
{
    CStatus* const field = addField(0);
    field->setStatusTextColored("50%2 of %1", Qt::green);
    EXPECT_EQ(field->text(), "<font color=#00ff00>50%2 of %1</font>");
}

TEST_F(CStatusTest, AnotherThreadsTextsArriveInTheirOrderWithTheGuiThread)
{
    CStatus* const field = addField(0);
    field->setStatusText("before");
    std::thread([field] {
        field->setStatusText("one");
        field->setStatusTextColored("two", Qt::blue);
    }).join();
    EXPECT_EQ(field->text(), "before") << "a label was touched outside of the GUI thread";
    QCoreApplication::processEvents();
    EXPECT_EQ(field->text(), "<font color=#0000ff>two</font>");
}

TEST_F(CStatusTest, ATextOfAnotherThreadIsDroppedWithItsField)
{
    CStatus* const field = addField(0);
    std::thread([field] { field->setStatusText("late"); }).join();
    delete field;
    const CStatus* const next = addField(0); // likely in the same place
    QCoreApplication::processEvents();
    EXPECT_EQ(next->text(), QString());
}

TEST_F(CStatusTest, VisibilityIsThatOfTheWholeStatusBar)
{
    CStatus* const field = addField(0);
    field->setStatusVisible(false);
    EXPECT_TRUE(_window.statusBar()->isHidden());
    field->setStatusVisible(true);
    EXPECT_FALSE(_window.statusBar()->isHidden());
}

} // namespace
