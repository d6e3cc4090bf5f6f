// SPDX-License-Identifier: Apache-2.0
// The settings dialog, from the choice of tabs to what Ok reports and writes.

#include "TestModes.h"

#include <app/AppSettings.h>
#include <apps/HostEnvironmentInterface.h>
#include <camera/VYRCameraDevice.h>
#include <settings/DevicesTab.h>
#include <settings/ResolutionSettings.h>
#include <settings/ResolutionVisualization.h>
#include <settings/SettingsDialog.h>

#include <FakeVYR.h>
#include <gtest/gtest.h>
#include <tests/support/KeyboardReach.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <cstring>
#include <memory>

namespace {

/// A host with a camera node and nothing else.
class Host final : public HostEnvironmentInterface
{
public:
    explicit Host(const VYRResolutionInfo& resolution)
        : camera(resolution.binning, resolution.width, resolution.height, resolution.fps)
        , _resolution(resolution)
    {
    }

    QDockWidget* centralDock() override { return nullptr; }
    QDockWidget* sideDock() override { return nullptr; }
    QDockWidget* bottomDock() override { return nullptr; }
    StatusBarText* statusText(int) override { return nullptr; }
    VYRCameraDevice* cameraDevice() override { return &camera; }
    VYRResolutionInfo currentResolution() override { return _resolution; }

    VYRCameraDevice camera;

private:
    VYRResolutionInfo _resolution;
};

AppInfo app(const QString& name)
{
    QPixmap pixmap(72, 72);
    pixmap.fill(Qt::darkCyan);
    return {name, QStringLiteral("1.") + name, QStringLiteral("About ") + name, QIcon(pixmap)};
}

class SettingsDialogTest : public testing::Test
{
protected:
    SettingsDialogTest()
    {
        FakeVYR::reset();
        FakeVYR::setModes(testModes());
        QDir folder = settingsFolder();
        folder.removeRecursively();
        QDir().mkpath(folder.path());
        AppSettings::instance() = AppSettings();
    }

    ~SettingsDialogTest() override { settingsFolder().removeRecursively(); }

    void TearDown() override { EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); }

    static QDir settingsFolder() { return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/settings")); }

    static bool fileWritten() { return QFile::exists(settingsFilePath()); }

    void build(const QStringList& names, int current, bool camera)
    {
        FakeVYR::setOpens(camera);
        host = std::make_unique<Host>(mode640x480());
        QList<AppInfo> apps;
        for (const QString& name : names)
            apps.append(app(name));
        dialog = std::make_unique<SettingsDialog>(host.get());
        dialog->setAppInfoList(apps);
        dialog->setCurrentAppIndex(current);
        dialog->build(QStringLiteral("Settings"), nullptr);
        QObject::connect(dialog.get(), &SettingsDialog::ResolutionChanged, dialog.get(),
                         [this](VYRResolutionInfo mode) {
                             changedMode = mode;
                             order << QStringLiteral("mode");
                             recordAtModeChange = AppSettings::instance();
                             writtenAtModeChange = fileWritten();
                         });
        QObject::connect(dialog.get(), &SettingsDialog::AppChanged, dialog.get(), [this](int index) {
            changedApp = index;
            order << QStringLiteral("app");
            writtenAtAppChange = fileWritten();
        });
    }

    void show(int tab = 0)
    {
        dialog->setCurrentTab(tab);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    }

    QStringList tabs() const
    {
        QStringList titles;
        for (int i = 0; i < dialog->tabWidget()->count(); ++i)
            titles << dialog->tabWidget()->tabText(i);
        return titles;
    }

    QListWidget* appList() const { return dialog->findChild<QListWidget*>(); }

    QSpinBox* widthSpinBox() const { return dialog->findChild<QGroupBox*>()->findChild<QSpinBox*>(); }

    void clickApp(int index)
    {
        const QRect item = appList()->visualItemRect(appList()->item(index));
        QTest::mouseClick(appList()->viewport(), Qt::LeftButton, Qt::NoModifier, item.center());
    }

    void doubleClickApp(int index)
    {
        const QPoint centre = appList()->visualItemRect(appList()->item(index)).center();
        QTest::mouseClick(appList()->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseDClick(appList()->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
    }

    void click(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }

    std::unique_ptr<Host> host;
    std::unique_ptr<SettingsDialog> dialog; // before the host goes
    QStringList order;
    VYRResolutionInfo changedMode{};
    int changedApp = -1;
    AppSettings recordAtModeChange;
    bool writtenAtModeChange = false;
    bool writtenAtAppChange = false;
};

const QStringList twoApps{QStringLiteral("First"), QStringLiteral("Second")};

// --- building ----------------------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, AppsAndCameraGiveThreeTabs)
{
    build(twoApps, 0, true);
    EXPECT_EQ(tabs().join(' '), QStringLiteral("Apps Camera Devices"));
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Settings"));
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->parentWidget(), nullptr);
    show(1);
    EXPECT_EQ(dialog->tabWidget()->currentIndex(), 1);
    EXPECT_NE(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), nullptr);
    EXPECT_NE(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel), nullptr);
}

TEST_F(SettingsDialogTest, WithoutACameraThereAreOnlyAppsAndTheTabsOfApps)
{
    build(twoApps, 0, false);
    dialog->tabWidget()->addTab(new QLabel(QStringLiteral("own")), QStringLiteral("Second"));
    EXPECT_EQ(tabs().join(' '), QStringLiteral("Apps Second"));
    dialog->setCurrentTab(2);
    EXPECT_EQ(dialog->tabWidget()->currentIndex(), 0);
    dialog->setCurrentTab(-1);
    EXPECT_EQ(dialog->tabWidget()->currentIndex(), 0);
}

TEST_F(SettingsDialogTest, WithoutAppsCameraComesFirstAndOkChangesNoApp)
{
    build({}, -1, true);
    EXPECT_EQ(tabs().join(' '), QStringLiteral("Camera Devices"));
    show();
    QTest::keyClick(widthSpinBox(), Qt::Key_Up);
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(order.join(' '), QStringLiteral("mode"));
}

TEST_F(SettingsDialogTest, WithNeitherItIsEmptyAndCloses)
{
    build({}, -1, false);
    EXPECT_TRUE(tabs().isEmpty());
    show();
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(SettingsDialogTest, SizeIsFixedAndAtLeast600By450)
{
    for (const bool camera : {true, false}) {
        build(twoApps, 0, camera);
        EXPECT_GE(dialog->width(), 600);
        EXPECT_GE(dialog->height(), 450);
        EXPECT_GE(dialog->height(), dialog->sizeHint().height());
        EXPECT_EQ(dialog->minimumSize(), dialog->maximumSize());
        EXPECT_EQ(dialog->size(), dialog->minimumSize());
        EXPECT_EQ(dialog->layout()->sizeConstraint(), QLayout::SetNoConstraint);
    }
}

TEST_F(SettingsDialogTest, DialogIsCentredOverTheMainWindow)
{
    build(twoApps, 0, false);
    QMainWindow window;
    window.setGeometry(101, 53, 1201, 671);
    SettingsDialog centred(host.get());
    centred.build(QStringLiteral("Settings"), &window);
    EXPECT_EQ(centred.x(), window.frameGeometry().left() + 600 - centred.width() / 2);
    EXPECT_EQ(centred.y(), window.frameGeometry().top() + 335 - centred.height() / 2);
}

// --- the tabs ----------------------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, AppsStandInARowWithTheCurrentOneSelected)
{
    build(twoApps, 1, false);
    show();
    const QListWidget* list = appList();
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("First"));
    EXPECT_EQ(list->item(0)->toolTip(), QStringLiteral("Name: First\nVersion: 1.First\nDescription: About First"));
    EXPECT_FALSE(list->item(0)->icon().isNull());
    EXPECT_FALSE(list->item(0)->isSelected());
    EXPECT_TRUE(list->item(1)->isSelected());
    EXPECT_EQ(list->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(list->viewMode(), QListView::IconMode);
    EXPECT_TRUE(list->uniformItemSizes());
    EXPECT_EQ(list->iconSize(), QSize(72, 72));
    EXPECT_EQ(list->flow(), QListView::LeftToRight);
    EXPECT_FALSE(list->isWrapping());
    EXPECT_EQ(list->movement(), QListView::Static);
    EXPECT_EQ(list->styleSheet(), QStringLiteral("QListWidget::item{padding:6px;}"));
    const auto* caption = list->parentWidget()->findChild<QLabel*>();
    EXPECT_EQ(caption->text(), QStringLiteral("Available Apps/Plugins"));
    EXPECT_LT(caption->geometry().bottom(), list->geometry().top());
    EXPECT_EQ(list->visualItemRect(list->item(0)).top(), list->visualItemRect(list->item(1)).top());
}

TEST_F(SettingsDialogTest, LongAppNameHasRoomWhereverItStands)
{
    const QString longName = QStringLiteral("A name that is a good deal longer than its icon is wide");
    for (const int place : {0, 1}) {
        QStringList names{QStringLiteral("A")};
        names.insert(place, longName);
        build(names, 0, false);
        show();
        const QListWidget* list = appList();
        EXPECT_GE(list->visualItemRect(list->item(place)).width(), list->fontMetrics().horizontalAdvance(longName));
    }
}

TEST_F(SettingsDialogTest, DevicesTabShowsTheIdentityOfTheCamera)
{
    const auto text = [](const char* characters) { return std::string(characters, std::strlen(characters) + 1); };
    FakeVYR::setText(VYRDeviceName, text("Stereo"));
    FakeVYR::setText(VYRSerialNumber, text("4711"));
    FakeVYR::setText(VYRFirmwareVersion, text("1.2"));
    FakeVYR::setText(VYRFirmwareBuildTime, text("Monday"));
    FakeVYR::setVersion("3.4");
    build({}, -1, true);
    show(1);
    const auto* tree = dialog->findChild<QTreeWidget*>();
    ASSERT_EQ(tree->topLevelItemCount(), 1);
    EXPECT_EQ(tree->columnCount(), 2);
    EXPECT_EQ(tree->headerItem()->text(0), QStringLiteral("Title"));
    EXPECT_EQ(tree->headerItem()->text(1), QStringLiteral("Details"));
    EXPECT_EQ(tree->columnWidth(0), 200);
    const auto* caption = tree->parentWidget()->findChild<QLabel*>();
    EXPECT_EQ(caption->text(), QStringLiteral("Available Devices"));
    EXPECT_LT(caption->geometry().bottom(), tree->geometry().top());
    const QTreeWidgetItem* device = tree->topLevelItem(0);
    EXPECT_EQ(device->text(0), QStringLiteral("VYR Device"));
    EXPECT_EQ(device->flags(), Qt::ItemIsEnabled);
    EXPECT_TRUE(device->isExpanded());
    QStringList rows;
    for (int i = 0; i < device->childCount(); ++i)
        rows << device->child(i)->text(0) + '=' + device->child(i)->text(1);
    EXPECT_EQ(rows.join('|'), QStringLiteral("Device Name=Stereo|Serial Number=4711|Firmware Version=1.2|"
                                             "Firmware Build Time=Monday|Software Version=3.4"));
}

TEST(DevicesTabTest, ColumnsAreWiderOnFinerScreensOnly)
{
    EXPECT_EQ(DevicesTab::scaleOfScreen(40), 1);
    EXPECT_EQ(DevicesTab::scaleOfScreen(96), 1);
    EXPECT_EQ(DevicesTab::scaleOfScreen(120), 1);
    EXPECT_EQ(DevicesTab::scaleOfScreen(192), 2);
    EXPECT_EQ(DevicesTab::scaleOfScreen(288), 3);
}

TEST_F(SettingsDialogTest, SoftwareVersionIsEmptyWhenTheLibraryHasNone)
{
    FakeVYR::setVersion(nullptr);
    build({}, -1, true);
    const QTreeWidgetItem* device = dialog->findChild<QTreeWidget*>()->topLevelItem(0);
    EXPECT_EQ(device->child(4)->text(0), QStringLiteral("Software Version"));
    EXPECT_EQ(device->child(4)->text(1), QString());
}

TEST_F(SettingsDialogTest, CameraTabKeepsTheEditorAtItsNaturalHeight)
{
    build({}, -1, true);
    dialog->setFixedSize(700, 1200);
    show();
    const auto* editor = dialog->findChild<ResolutionSettings*>();
    EXPECT_EQ(editor->height(), editor->sizeHint().height());
    EXPECT_EQ(editor->pos(), QPoint(0, 0));
}

// --- Ok ----------------------------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, ChangedModeIsReportedThenRecordedAndWritten)
{
    build(twoApps, 0, true);
    show(1);
    QTest::keyClick(widthSpinBox(), Qt::Key_Up);
    QTest::keyClick(dialog->findChild<QSlider*>(), Qt::Key_Right);
    click(QDialogButtonBox::Ok);

    EXPECT_EQ(order.join(' '), QStringLiteral("mode"));
    EXPECT_EQ(changedMode, (VYRResolutionInfo{752, 480, 0, 31.0F, 0.5F, 60.0F}));
    const AppSettings before;
    EXPECT_EQ(recordAtModeChange.width, before.width);
    EXPECT_EQ(recordAtModeChange.height, before.height);
    EXPECT_EQ(recordAtModeChange.binning, before.binning);
    EXPECT_FLOAT_EQ(recordAtModeChange.fps, before.fps);
    EXPECT_FALSE(writtenAtModeChange);
    const AppSettings& settings = AppSettings::instance();
    EXPECT_EQ(settings.width, 752);
    EXPECT_EQ(settings.height, 480);
    EXPECT_EQ(settings.binning, 0);
    EXPECT_FLOAT_EQ(settings.fps, 31.0F);
    QFile file(settingsFilePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("Width = 752"));
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(SettingsDialogTest, WidthStillBeingTypedCountsAtOk)
{
    for (const bool mouse : {true, false}) {
        order.clear();
        build(twoApps, 0, true);
        show(1);
        QTest::mouseClick(widthSpinBox(), Qt::LeftButton, Qt::NoModifier, {5, widthSpinBox()->height() / 2});
        widthSpinBox()->selectAll();
        QTest::keyClicks(widthSpinBox(), QStringLiteral("700"));
        if (mouse) {
            click(QDialogButtonBox::Ok);
        } else {
            // As with its mnemonic: the focus stays where it is.
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        }
        EXPECT_EQ(order.join(' '), QStringLiteral("mode"));
        EXPECT_EQ(changedMode, mode752x480());
    }
}

TEST_F(SettingsDialogTest, UnchangedEditorReportsAndWritesNothing)
{
    build(twoApps, 0, true);
    show(1);
    click(QDialogButtonBox::Ok);
    EXPECT_TRUE(order.isEmpty());
    EXPECT_FALSE(fileWritten());
    EXPECT_EQ(AppSettings::instance().width, 320);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(SettingsDialogTest, ModeIsHandledBeforeTheApp)
{
    build(twoApps, 0, true);
    show(1);
    QTest::keyClick(dialog->findChild<QSlider*>(), Qt::Key_Right);
    dialog->setCurrentTab(0);
    clickApp(1);
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(order.join(' '), QStringLiteral("mode app"));
    EXPECT_TRUE(writtenAtAppChange);
    EXPECT_FLOAT_EQ(changedMode.fps, 31.0F);
    EXPECT_EQ(changedApp, 1);
}

// As when an app handles events while it starts, and the user clicks once more.
TEST_F(SettingsDialogTest, OkWhileOkIsHandledDoesNothing)
{
    build(twoApps, 0, true);
    show(1);
    QTest::keyClick(widthSpinBox(), Qt::Key_Up);
    dialog->setCurrentTab(0);
    clickApp(1);
    const auto clickOnceMore = [this] {
        if (order.size() < 4) // or it would go on for ever
            click(QDialogButtonBox::Ok);
        EXPECT_TRUE(dialog->isVisible());
    };
    QObject::connect(dialog.get(), &SettingsDialog::ResolutionChanged, dialog.get(), clickOnceMore);
    QObject::connect(dialog.get(), &SettingsDialog::AppChanged, dialog.get(), clickOnceMore);
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(order.join(' '), QStringLiteral("mode app"));
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(SettingsDialogTest, OtherAppAloneIsReportedWithoutWriting)
{
    build(twoApps, 1, false);
    show();
    clickApp(0);
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(order.join(' '), QStringLiteral("app"));
    EXPECT_EQ(changedApp, 0);
    EXPECT_FALSE(fileWritten());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(SettingsDialogTest, CurrentAppChosenAgainIsNotReported)
{
    build(twoApps, 0, false);
    show();
    clickApp(1);
    clickApp(0);
    click(QDialogButtonBox::Ok);
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(SettingsDialogTest, DoubleClickOnAnAppIsOk)
{
    build(twoApps, 0, true);
    show();
    doubleClickApp(1);
    EXPECT_EQ(order.join(' '), QStringLiteral("app"));
    EXPECT_EQ(changedApp, 1);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(SettingsDialogTest, DoubleClickOnTheCurrentAppClosesWithoutAppChanged)
{
    build(twoApps, 0, true);
    show();
    doubleClickApp(0);
    EXPECT_TRUE(order.isEmpty());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(SettingsDialogTest, CancelAndTheCloseButtonChangeNothing)
{
    for (const bool cancel : {true, false}) {
        build(twoApps, 0, true);
        show(1);
        QTest::keyClick(widthSpinBox(), Qt::Key_Up);
        dialog->setCurrentTab(0);
        clickApp(1);
        if (cancel)
            click(QDialogButtonBox::Cancel);
        else
            dialog->close();
        EXPECT_TRUE(order.isEmpty());
        EXPECT_FALSE(fileWritten());
        EXPECT_EQ(AppSettings::instance().width, 320);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
    }
}

TEST_F(SettingsDialogTest, CameraClosedInTheMeantimeKeepsTheMode)
{
    build(twoApps, 0, true);
    show(1);
    QTest::keyClick(widthSpinBox(), Qt::Key_Up);
    host->camera.Close();
    click(QDialogButtonBox::Ok);
    EXPECT_TRUE(order.isEmpty());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

// --- by keyboard -------------------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, TabReachesEveryControlOfEachTabInTheOrderOfTheEye)
{
    build({"First"}, 0, true);
    const auto reachedOn = [this](int tab) {
        show(tab);
        QString classes;
        for (const QWidget* widget : focusRound(*dialog))
            classes += QString(widget->metaObject()->className()) + ' ';
        // Rounds begin where the focus was: all of them at the same widget.
        const int start = classes.indexOf("QTabBar");
        return (classes.mid(start) + classes.left(start)).trimmed().toStdString();
    };
    EXPECT_EQ(reachedOn(0), "QTabBar QListWidget QPushButton QPushButton");
    EXPECT_EQ(reachedOn(1), "QTabBar QSpinBox QSpinBox QComboBox ResolutionVisualization QSpinBox QSlider "
                            "QPushButton QPushButton");
    EXPECT_EQ(reachedOn(2), "QTabBar QTreeWidget QPushButton QPushButton");
}

TEST_F(SettingsDialogTest, EveryControlHasANameAndAToolTip)
{
    build({"First"}, 0, true);
    for (int tab = 0; tab < 3; ++tab) {
        show(tab);
        EXPECT_NE(dialog->tabWidget()->tabToolTip(tab), QString());
        for (QWidget* widget : focusRound(*dialog)) {
            EXPECT_NE(spokenName(*widget), "") << widget->metaObject()->className() << " on tab " << tab;
            if (qobject_cast<QTabBar*>(widget) == nullptr) { // its tabs have them
                EXPECT_NE(widget->toolTip(), QString()) << widget->metaObject()->className() << " on tab " << tab;
            }
        }
    }
    EXPECT_EQ(spokenName(*widthSpinBox()), "Width");
    // A list is called what is chosen in it, by way of its label.
    const auto labels =
        QAccessible::queryAccessibleInterface(dialog->findChild<QComboBox*>())->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.at(0).first->text(QAccessible::Name), QString("Binning"));
    EXPECT_EQ(spokenName(*dialog->findChild<QSlider*>()), "Framerate");
}

TEST_F(SettingsDialogTest, AnotherAppIsChosenByKeyAlone)
{
    build({"First", "Second"}, 0, false);
    show(0);
    QWidget* list = appList();
    for (QWidget* widget : focusRound(*dialog))
        if (widget == list)
            widget->setFocus();
    QTest::keyClick(list, Qt::Key_Right);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(order, QStringList("app"));
    EXPECT_EQ(changedApp, 1);
}

TEST_F(SettingsDialogTest, ModalLoopReturnsWhatTheUserChose)
{
    build(twoApps, 0, true);
    QTimer::singleShot(0, dialog.get(), [this] {
        clickApp(1);
        click(QDialogButtonBox::Ok);
    });
    EXPECT_EQ(dialog->exec(), QDialog::Accepted);
    EXPECT_EQ(changedApp, 1);
}

// --- a drag under way --------------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, ClosingInTheMiddleOfADragRestoresTheCursor)
{
    build({}, -1, true);
    show();
    auto* picture = dialog->findChild<ResolutionVisualization*>();
    // 640 x 480 on the sensor: the top edge is that of the picture.
    QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, {picture->width() / 2, 2});
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    moveMouse(picture, {picture->width() / 2, picture->height() / 4});
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_TRUE(order.isEmpty());
}

// --- what the file may hold --------------------------------------------------------------------------------

TEST_F(SettingsDialogTest, UnknownBinningFromTheFileIsShownAndKept)
{
    FakeVYR::setOpens(true);
    const VYRResolutionInfo odd{320, 240, 77, 30.0F, 0.0F, 0.0F};
    host = std::make_unique<Host>(odd);
    dialog = std::make_unique<SettingsDialog>(host.get());
    dialog->build(QStringLiteral("Settings"), nullptr);
    VYRResolutionInfo reported{};
    QObject::connect(dialog.get(), &SettingsDialog::ResolutionChanged, dialog.get(),
                     [&reported](VYRResolutionInfo mode) { reported = mode; });
    show();
    QTest::keyClick(widthSpinBox(), Qt::Key_Up);
    click(QDialogButtonBox::Ok);
    EXPECT_EQ(reported, odd);
}

} // namespace
