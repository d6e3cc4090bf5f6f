// SPDX-License-Identifier: Apache-2.0
// The main window, with a camera library that the tests command and apps that they put beside the program.

#include <app/AboutText.h>
#include <app/AppSettings.h>
#include <app/ApplicationWindow.h>
#include <app/CStatus.h>
#include <app/DarkSkin.h>
#include <app/Vendor.h>
#include <apps/AppInterface.h>
#include <apps/TestAppsFolder.h>
#include <apps/fixtures/HoldingGate.h>
#include <camera/VYRCameraDevice.h>
#include <settings/SettingsDialog.h>
#include <support/WaitFor.h>

#include <FakeVYR.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTest>
#include <QUrl>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

#include <malloc.h>

namespace {

constexpr int limit = 20000; // milliseconds that anything may take on a busy machine

const char redNoCamera[] = "<font color=#ff0000>No VYR Camera Found</font>";

std::unique_ptr<ApplicationWindow> window;

QTimer& frameTimer()
{
    const auto timers = window->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(timers.size(), 1);
    return *timers.first();
}

CStatus* field(int index)
{
    return dynamic_cast<CStatus*>(window->statusText(index));
}

/// What a probe notes of the host while an app is called.
void noteHost(const char* app, const char* operation)
{
    if (window == nullptr)
        return;
    const bool free = window->appLock().tryLock();
    if (free)
        window->appLock().unlock();
    TestApps::log().append(QString("%1.%2 %3 width=%4 timer=%5 streaming=%6 file=%7")
                               .arg(app, operation, free ? "free" : "locked")
                               .arg(window->currentResolution().width)
                               .arg(frameTimer().isActive())
                               .arg(FakeVYR::isStreaming())
                               .arg(QFile::exists(settingsFilePath())));
}

class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher()
    {
        QDesktopServices::setUrlHandler("file", this, "open");
        QDesktopServices::setUrlHandler("https", this, "open");
    }

    ~UrlCatcher() override
    {
        QDesktopServices::unsetUrlHandler("file");
        QDesktopServices::unsetUrlHandler("https");
    }

    UrlCatcher(const UrlCatcher&) = delete;
    UrlCatcher& operator=(const UrlCatcher&) = delete;

    QList<QUrl> urls;

public slots:
    void open(const QUrl& url) { urls.append(url); }
};

class ApplicationWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        FakeVYR::reset();
        TestApps::reset();
        tidy();
        ASSERT_TRUE(here().mkdir("settings"));
        AppSettings::instance() = AppSettings();
    }

    void TearDown() override
    {
        TestApps::setProbe(TestApps::note); // others look at the window, which is about to go
        window.reset();
        tidy();
        qApp->setStyleSheet(QString());
        QApplication::setPalette(_palette);
        QApplication::setStyle(_style);
    }

    static QDir here() { return QDir(QCoreApplication::applicationDirPath()); }

    static void tidy()
    {
        QDir(here().filePath("settings")).removeRecursively();
        QDir(here().filePath("manual")).removeRecursively();
        for (const QString& name : here().entryList({"*App.so"}, QDir::Files))
            QFile::remove(here().filePath(name));
    }

    static void install(const QString& name) { TestApps::install(name, here(), name + "App.so"); }

    static void open(bool withCamera = true)
    {
        FakeVYR::setOpens(withCamera);
        window = std::make_unique<ApplicationWindow>();
    }

    static void openWithTwoApps(bool withCamera = true)
    {
        install("One");
        install("Two");
        open(withCamera);
    }

    static void save(const std::function<void(AppSettings&)>& change)
    {
        change(AppSettings::instance());
        saveSettings();
        AppSettings::instance() = AppSettings();
    }

    static QStringList menuTitles()
    {
        QStringList titles;
        for (const QAction* const action : window->menuBar()->actions())
            titles.append(action->text());
        return titles;
    }

    static QMenu* menu(const QString& title)
    {
        for (const QAction* const action : window->menuBar()->actions())
            if (action->text() == title)
                return action->menu();
        return nullptr;
    }

    static QStringList entries(const QString& title)
    {
        QStringList texts;
        for (const QAction* const action : menu(title)->actions()) {
            EXPECT_FALSE(action->isSeparator());
            EXPECT_TRUE(action->shortcut().isEmpty());
            texts.append(action->text());
        }
        return texts;
    }

    static void trigger(const QString& title, const QString& text)
    {
        for (QAction* const action : menu(title)->actions()) {
            if (action->text() == text) {
                action->trigger();
                return;
            }
        }
        FAIL() << "no entry " << qPrintable(text);
    }

    /// Does something in the settings dialog that is opened next, and closes it if it is still open then.
    static void inDialog(const std::function<void(SettingsDialog&)>& action)
    {
        QTimer::singleShot(0, window.get(), [action] {
            auto* const dialog = qobject_cast<SettingsDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            action(*dialog);
            dialog->reject();
        });
    }

    static QStringList tabTitles(const SettingsDialog& dialog)
    {
        QStringList titles;
        for (int i = 0; i < dialog.tabWidget()->count(); ++i)
            titles.append(dialog.tabWidget()->tabText(i));
        return titles;
    }

    /// Lets the event loop run as long as the frame timer takes for some ticks.
    static void runEventLoop() { QTest::qWait(50); }

    static bool isDocumented(QDockWidget* dock)
    {
        return dock->features() == QDockWidget::NoDockWidgetFeatures && dock->autoFillBackground()
            && dock->contentsMargins().isNull() && dock->titleBarWidget() != nullptr
            && dock->titleBarWidget()->metaObject() == &QWidget::staticMetaObject
            && dock->titleBarWidget()->children().isEmpty();
    }

private:
    QPalette _palette = QApplication::palette();
    QString _style = QApplication::style()->objectName();
};

// Start-up.

TEST_F(ApplicationWindowTest, SetsTheIdentityOfTheApplication)
{
    open();
    EXPECT_EQ(QCoreApplication::applicationName(), "VYR Dashboard");
    EXPECT_EQ(QCoreApplication::applicationVersion(), "1.0.35.226");
    EXPECT_EQ(QCoreApplication::organizationName(), "VYR Technologies");
    EXPECT_EQ(QCoreApplication::organizationDomain(), "vyrtech.com");
}

TEST_F(ApplicationWindowTest, AsksForOneRecordOfTheSavedModeBeforeItOpensTheCamera)
{
    save([](AppSettings& settings) {
        settings.width = 640;
        settings.height = 480;
        settings.binning = 0;
        settings.fps = 25.0F;
    });
    open();
    const auto calls = FakeVYR::calls();
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(calls[0], "Enumerate 1 640 480 0 25");
    EXPECT_EQ(calls[1], "OpenVYR");
    EXPECT_EQ(calls[2], "Enumerate 1 640 480 0 25");
    const VYRResolutionInfo resolution = window->currentResolution();
    EXPECT_EQ(resolution.width, 640);
    EXPECT_EQ(resolution.height, 480);
    EXPECT_EQ(resolution.binning, 0);
    EXPECT_EQ(resolution.fps, 25.0F);
    EXPECT_EQ(resolution.minFps, 0.5F);
    EXPECT_EQ(resolution.maxFps, 60.0F);
}

TEST_F(ApplicationWindowTest, AnUnknownSavedModeLeavesTheCurrentResolutionAsItWas)
{
    save([](AppSettings& settings) { settings.width = 999; });
    open();
    EXPECT_EQ(window->currentResolution().width, 0);
    EXPECT_EQ(window->currentResolution().fps, 0.0F);
    EXPECT_EQ(FakeVYR::calls().at(2), "Enumerate 1 0 0 0 0") << "the camera is made with that record";
    EXPECT_EQ(AppSettings::instance().width, 999);
}

TEST_F(ApplicationWindowTest, LoadsAppsThenInitializesThemThenStartsTheSavedOne)
{
    save([](AppSettings& settings) { settings.currentApp = "Two"; });
    openWithTwoApps();
    EXPECT_EQ(
        TestApps::log().filter(QRegularExpression("requiresCamera|initialize|start|stop")),
        QStringList({"One.requiresCamera", "Two.requiresCamera", "One.initialize", "Two.initialize", "Two.start"}));
}

TEST_F(ApplicationWindowTest, ASavedAppThatIsTheSecondStartsWithIndexOne)
{
    save([](AppSettings& settings) { settings.currentApp = "Two"; });
    openWithTwoApps();
    EXPECT_EQ(window->currentAppIndex(), 1);
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
}

TEST_F(ApplicationWindowTest, ASavedAppThatIsTheFirstStartsWithIndexZero)
{
    save([](AppSettings& settings) { settings.currentApp = "One"; });
    openWithTwoApps();
    EXPECT_EQ(window->currentAppIndex(), 0);
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - One");
}

TEST_F(ApplicationWindowTest, ASavedAppThatIsUnknownStartsWithIndexZeroAndIsForgotten)
{
    save([](AppSettings& settings) { settings.currentApp = "Gone"; });
    openWithTwoApps();
    EXPECT_EQ(window->currentAppIndex(), 0);
    EXPECT_EQ(AppSettings::instance().currentApp, "One");
    AppSettings::instance() = AppSettings();
    loadSettings();
    EXPECT_EQ(AppSettings::instance().currentApp, "One");
}

TEST_F(ApplicationWindowTest, TheDefaultFileNamesTheFirstAppAfterTheStart)
{
    openWithTwoApps();
    AppSettings::instance() = AppSettings();
    loadSettings();
    EXPECT_EQ(AppSettings::instance().currentApp, "One");
    EXPECT_EQ(AppSettings::instance().width, 320);
}

TEST_F(ApplicationWindowTest, WithoutAppsThereIsNoCurrentAppAndNobodyIsCalled)
{
    open();
    EXPECT_EQ(window->currentAppIndex(), -1);
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard");
    QTest::keyClick(window.get(), Qt::Key_A);
    window->frameUpdate();
    window->changeApp(0);
    window->close();
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard");
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(ApplicationWindowTest, TheFrameTimerPollsTheCurrentApp)
{
    openWithTwoApps();
    EXPECT_TRUE(frameTimer().isActive());
    EXPECT_EQ(frameTimer().interval(), 0);
    EXPECT_FALSE(frameTimer().isSingleShot());
    TestApps::set("pending", true);
    EXPECT_TRUE(QTest::qWaitFor([] { return TestApps::logged("update").size() == 1; }, limit));
    EXPECT_TRUE(QTest::qWaitFor([] { return TestApps::logged("updatePending").size() > 10; }, limit));
    EXPECT_EQ(TestApps::logged("update"), QStringList("One.update"));
}

TEST_F(ApplicationWindowTest, WithoutACameraTheStatusIsRedAndNoAppIsEverPolled)
{
    openWithTwoApps(false);
    window->show();
    EXPECT_EQ(field(0)->text(), redNoCamera);
    EXPECT_FALSE(frameTimer().isActive());
    runEventLoop();
    EXPECT_TRUE(TestApps::logged("updatePending").isEmpty());
    EXPECT_EQ(TestApps::logged("start"), QStringList("One.start"));
    EXPECT_EQ(field(0)->text(), redNoCamera);
}

TEST_F(ApplicationWindowTest, WithoutACameraItsStatusTextIsNotShown)
{
    open(false);
    emit window->cameraDevice()->InfoChanged("hello");
    runEventLoop();
    EXPECT_EQ(field(0)->text(), redNoCamera);
}

TEST_F(ApplicationWindowTest, WithoutACameraClosingStillWritesTheSettings)
{
    open(false);
    window->show();
    QFile::remove(settingsFilePath());
    window->close();
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
}

TEST_F(ApplicationWindowTest, AnAppThatRequiresACameraIsLeftOutWithoutOne)
{
    install("Camera");
    install("One");
    open(false);
    ASSERT_EQ(window->appInfos().size(), 1);
    EXPECT_EQ(window->appInfos().first().name, "One");
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - One");
}

TEST_F(ApplicationWindowTest, OfTwoHundredAppsEachIsInitializedAndListedAndTheFirstIsStarted)
{
    constexpr int count = 200;
    for (int i = 0; i < count; ++i)
        TestApps::install("One", here(), QString("%1App.so").arg(i, 3, 10, QChar('0')));
    open();
    window->show();
    EXPECT_EQ(TestApps::logged("initialize").size(), count);
    EXPECT_EQ(TestApps::logged("start").size(), 1);
    EXPECT_EQ(window->currentAppIndex(), 0);
    inDialog([&](SettingsDialog& dialog) { EXPECT_EQ(dialog.findChild<QListWidget*>()->count(), count); });
    trigger("&Settings", "Apps");
}

TEST_F(ApplicationWindowTest, TheSecondOfTwoAppsOfOneNameCanBeChosen)
{
    TestApps::install("One", here(), "aApp.so");
    TestApps::install("One", here(), "bApp.so");
    save([](AppSettings& settings) { settings.currentApp = "One"; });
    open();
    window->show();
    EXPECT_EQ(window->currentAppIndex(), 0);
    inDialog([&](SettingsDialog& dialog) {
        auto* const list = dialog.findChild<QListWidget*>();
        ASSERT_EQ(list->count(), 2);
        list->setCurrentRow(1);
        auto* const buttons = dialog.findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    trigger("&Settings", "Apps");
    EXPECT_EQ(window->currentAppIndex(), 1);
}

TEST_F(ApplicationWindowTest, ABrokenSettingsFileIsReplacedAndTheStartGoesOn)
{
    QFile file(settingsFilePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("AppConfig : { Application");
    file.close();
    open();
    EXPECT_EQ(window->currentResolution().width, 320);
    AppSettings::instance().width = 1;
    loadSettings();
    EXPECT_EQ(AppSettings::instance().width, 320);
}

// The window and its parts.

TEST_F(ApplicationWindowTest, IsCentredOnTheAvailableGeometry)
{
    open();
    EXPECT_EQ(window->size(), QSize(1200, 670));
    EXPECT_EQ(window->geometry(), QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(1200, 670),
                                                      QGuiApplication::primaryScreen()->availableGeometry()));
}

TEST_F(ApplicationWindowTest, DialogsHaveItsIcon)
{
    QApplication::setWindowIcon(QIcon());
    open();
    const QDialog dialog;
    EXPECT_EQ(dialog.windowIcon().availableSizes(), window->windowIcon().availableSizes());
}

TEST_F(ApplicationWindowTest, ItsIconHoldsEverySize)
{
    open();
    EXPECT_FALSE(window->windowIcon().isNull());
    const QIcon icon(":/default.ico");
    const QList<QSize> sizes = icon.availableSizes();
    for (const int edge : {16, 24, 32, 48, 64, 128, 256}) {
        EXPECT_TRUE(sizes.contains(QSize(edge, edge))) << edge;
        EXPECT_EQ(icon.pixmap(edge, edge).toImage().pixelColor(0, 0).alpha(), 0) << edge;
    }
    EXPECT_EQ(sizes.size(), 7);
}

TEST_F(ApplicationWindowTest, DocksAreNotAnimated)
{
    open();
    EXPECT_FALSE(window->isAnimated());
}

TEST_F(ApplicationWindowTest, TheCentralDockIsTheCentralWidget)
{
    open();
    EXPECT_EQ(window->centralWidget(), window->centralDock());
    EXPECT_TRUE(isDocumented(window->centralDock()));
    EXPECT_EQ(window->centralDock()->minimumSize(), QSize(400, 1));
}

TEST_F(ApplicationWindowTest, TheBottomDockStartsHiddenAtTheBottom)
{
    open();
    QDockWidget* const dock = window->bottomDock();
    EXPECT_TRUE(isDocumented(dock));
    EXPECT_EQ(dock->allowedAreas(), Qt::BottomDockWidgetArea);
    EXPECT_EQ(window->dockWidgetArea(dock), Qt::BottomDockWidgetArea);
    EXPECT_TRUE(dock->isHidden());
    window->show();
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(ApplicationWindowTest, TheSideDockStandsOnTheRight)
{
    open();
    QDockWidget* const dock = window->sideDock();
    EXPECT_TRUE(isDocumented(dock));
    EXPECT_EQ(dock->allowedAreas(), Qt::RightDockWidgetArea);
    EXPECT_EQ(window->dockWidgetArea(dock), Qt::RightDockWidgetArea);
    EXPECT_EQ(dock->minimumSize(), QSize(275, 1));
    EXPECT_EQ(dock->maximumWidth(), 400);
    window->show();
    EXPECT_TRUE(dock->isVisible());
}

TEST_F(ApplicationWindowTest, AfterASwitchTheBottomDockIsHiddenEvenIfThePreviousAppHadShownIt)
{
    TestApps::set("showsBottomDock", true);
    openWithTwoApps();
    EXPECT_FALSE(window->bottomDock()->isHidden());
    TestApps::set("showsBottomDock", false);
    window->changeApp(1);
    EXPECT_TRUE(window->bottomDock()->isHidden());
}

TEST_F(ApplicationWindowTest, StatusFieldsAreFoundByTheirIndex)
{
    open();
    EXPECT_NE(window->statusText(0), nullptr);
    EXPECT_NE(window->statusText(0), window->statusText(7));
    EXPECT_EQ(window->statusText(1), window->statusText(-1));
    EXPECT_EQ(window->statusText(1), window->statusText(7));
}

TEST_F(ApplicationWindowTest, StatusFieldsStandInTheStatusBar)
{
    open();
    window->show();
    EXPECT_EQ(field(0)->parent(), window->statusBar());
    EXPECT_EQ(field(1)->parent(), window->statusBar());
    EXPECT_EQ(field(0)->styleSheet(), "margin-left:4px;");
    EXPECT_EQ(field(1)->styleSheet(), "");
    EXPECT_TRUE(field(1)->alignment() & Qt::AlignRight);
    EXPECT_FALSE(field(0)->alignment() & Qt::AlignRight);
    EXPECT_LT(field(0)->x(), field(1)->x());
    EXPECT_GT(field(1)->width(), 5 * field(0)->width()) << "they share the room as 10 to 1";
}

TEST_F(ApplicationWindowTest, FieldOneIsClearedAfterASecondAndFieldZeroStays)
{
    if (QTime::currentTime() > QTime(23, 59, 50))
        GTEST_SKIP() << "midnight is near, and texts are cleared early";
    open();
    QElapsedTimer time;
    time.start();
    window->statusText(0)->setStatusText("stays");
    window->statusText(1)->setStatusText("goes");
    ASSERT_TRUE(QTest::qWaitFor([] { return field(1)->text().isEmpty(); }, limit));
    EXPECT_GE(time.elapsed(), 999);
    EXPECT_EQ(field(0)->text(), "stays");
}

TEST_F(ApplicationWindowTest, ASwitchClearsBothFields)
{
    openWithTwoApps();
    window->statusText(0)->setStatusText("zero");
    window->statusText(1)->setStatusText("one");
    window->changeApp(1);
    EXPECT_EQ(field(0)->text(), "");
    EXPECT_EQ(field(1)->text(), "");
}

TEST_F(ApplicationWindowTest, HidingAFieldHidesTheStatusBar)
{
    open();
    window->show();
    window->statusText(1)->setStatusVisible(false);
    EXPECT_FALSE(window->statusBar()->isVisible());
    window->statusText(0)->setStatusVisible(true);
    EXPECT_TRUE(window->statusBar()->isVisible());
}

TEST_F(ApplicationWindowTest, AnAppBuiltApartFindsTheHostBySlot)
{
    TestApps::install("BySlot", here(), "BySlotApp.so");
    open();
    const QVariantList answers = qApp->property("slots.host").toList();
    ASSERT_EQ(answers.size(), 8);
    EXPECT_EQ(answers[0].value<quintptr>(), reinterpret_cast<quintptr>(window->centralDock()));
    EXPECT_EQ(answers[1].value<quintptr>(), reinterpret_cast<quintptr>(window->sideDock()));
    EXPECT_EQ(answers[2].value<quintptr>(), reinterpret_cast<quintptr>(window->bottomDock()));
    EXPECT_EQ(answers[3].value<quintptr>(), reinterpret_cast<quintptr>(window->cameraDevice()));
    EXPECT_EQ(answers[4].toInt(), 320);
    EXPECT_EQ(answers[5].toInt(), 240);
    EXPECT_EQ(answers[6].toInt(), 5);
    EXPECT_EQ(answers[7].toFloat(), 30.0F);
    EXPECT_EQ(field(0)->text(), "zero");
    EXPECT_EQ(field(1)->text(), "<font color=#00ff00>one</font>");
    EXPECT_TRUE(window->statusBar()->isHidden());
}

// The camera's status text.

TEST_F(ApplicationWindowTest, TheCamerasStatusTextIsInFieldZeroWhenTheSignalReturns)
{
    open();
    window->cameraDevice()->StartProcessing();
    EXPECT_EQ(field(0)->text(), "Resolution: 320x240, Binning: 2x2, FPS:    0.000, Rate:    0.000 MB/s");
}

TEST_F(ApplicationWindowTest, ATextFromTheCamerasThreadReachesFieldZeroOnTheGuiThread)
{
    open();
    window->cameraDevice()->StartProcessing();
    const QString before = field(0)->text();
    std::thread([] {
        for (std::uint32_t timestamp = 0; timestamp <= 10000; timestamp += 2500)
            FakeVYR::emitFrame(timestamp);
    }).join();
    EXPECT_EQ(field(0)->text(), before) << "a label was touched outside of the GUI thread";
    EXPECT_TRUE(QTest::qWaitFor([] { return field(0)->text().contains("FPS:    4.000"); }, limit));
}

// Menus.

TEST_F(ApplicationWindowTest, MenusWithAppsAndCamera)
{
    openWithTwoApps();
    EXPECT_EQ(menuTitles(), QStringList({"&File", "&Settings", "&Help"}));
    EXPECT_EQ(entries("&File"), QStringList("Exit"));
    EXPECT_EQ(entries("&Settings"), QStringList({"Apps", "Camera", "Devices"}));
    EXPECT_EQ(entries("&Help"), QStringList({"About", "Documentation"}));
}

TEST_F(ApplicationWindowTest, MenusWithAnAppAndNoCamera)
{
    install("One");
    open(false);
    EXPECT_EQ(menuTitles(), QStringList({"&File", "&Settings", "&Help"}));
    EXPECT_EQ(entries("&File"), QStringList("Exit"));
    EXPECT_EQ(entries("&Settings"), QStringList("Apps"));
    EXPECT_EQ(entries("&Help"), QStringList({"About", "Documentation"}));
}

TEST_F(ApplicationWindowTest, MenusWithACameraAndNoApp)
{
    open();
    EXPECT_EQ(menuTitles(), QStringList({"&File", "&Settings", "&Help"}));
    EXPECT_EQ(entries("&Settings"), QStringList({"Camera", "Devices"}));
}

TEST_F(ApplicationWindowTest, MenusWithNeitherAppNorCamera)
{
    open(false);
    EXPECT_EQ(menuTitles(), QStringList({"&File", "&Help"}));
    EXPECT_EQ(entries("&File"), QStringList("Exit"));
    EXPECT_EQ(entries("&Help"), QStringList({"About", "Documentation"}));
}

TEST_F(ApplicationWindowTest, AnActionOfAnotherNumberDoesNothing)
{
    openWithTwoApps();
    window->show();
    TestApps::log().clear();
    for (const int action : {-1, 0, 7, 100})
        window->onMenuAction(action);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(ApplicationWindowTest, HasTwoSlotsAndNoSignals)
{
    const QMetaObject& meta = ApplicationWindow::staticMetaObject;
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
    EXPECT_EQ(meta.method(meta.methodOffset()).methodSignature(), "frameUpdate()");
    EXPECT_EQ(meta.method(meta.methodOffset() + 1).methodSignature(), "onMenuAction(int)");
    EXPECT_EQ(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
    EXPECT_EQ(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
}

TEST_F(ApplicationWindowTest, AboutSaysWhatTheProgramIs)
{
    const QString text = aboutText(false);
    EXPECT_TRUE(text.startsWith("<h1>VYR Dashboard</h1><h3>Version 1.0.35.226</h3>"
                                "<p>A modular system for building advanced vision systems.</p><small><p>"));
    EXPECT_TRUE(text.endsWith("</small>"));
    EXPECT_TRUE(text.contains(QString("<p>License: <a style=color:white href=\"%1\">").arg(Vendor::licenceTerms)));
    EXPECT_TRUE(text.contains(QString("<p>You can learn more about this application at: "
                                      "<a style=color:white href=\"%1\">")
                                  .arg(Vendor::webSite)));
    EXPECT_TRUE(text.contains(Vendor::organizationName));
    EXPECT_TRUE(text.contains("WITHOUT ANY WARRANTY; without even the implied warranty of MERCHANTABILITY or FITNESS "
                              "FOR A PARTICULAR PURPOSE."));
    EXPECT_EQ(text.count("style=color:white"), 2);
    EXPECT_EQ(text.count("<a "), 2);
    EXPECT_FALSE(text.contains('%'));
}

TEST_F(ApplicationWindowTest, AboutPutsItsWhiteLinksOnADarkGroundInTheLightLook)
{
    EXPECT_EQ(aboutText(true).count("<span style=background-color:#282828><a style=color:white "), 2);
    EXPECT_EQ(aboutText(false).count("<span"), 0);
}

TEST_F(ApplicationWindowTest, AboutOpensItsBox)
{
    open();
    window->show();
    QString title;
    QString text;
    QWidget* parent = nullptr;
    QTimer::singleShot(0, window.get(), [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        title = box->windowTitle();
        text = box->text();
        parent = box->parentWidget();
        box->accept();
    });
    trigger("&Help", "About");
    EXPECT_EQ(title, "About VYR Dashboard");
    EXPECT_EQ(text, aboutText(true));
    EXPECT_EQ(parent, window.get());
}

TEST_F(ApplicationWindowTest, DocumentationOpensTheManualBesideTheProgram)
{
    UrlCatcher catcher;
    open();
    ASSERT_TRUE(here().mkdir("manual"));
    QFile manual(here().filePath("manual/index.html"));
    ASSERT_TRUE(manual.open(QIODevice::WriteOnly));
    trigger("&Help", "Documentation");
    EXPECT_EQ(catcher.urls, QList<QUrl>({QUrl::fromLocalFile(manual.fileName())}));
}

TEST_F(ApplicationWindowTest, DocumentationOpensTheWebPageWhenThereIsNoManual)
{
    UrlCatcher catcher;
    open();
    trigger("&Help", "Documentation");
    EXPECT_EQ(catcher.urls, QList<QUrl>({QUrl("https://vyrtech.com/dashboard/docs")}));
}

// The settings dialog.

TEST_F(ApplicationWindowTest, WithAnAppAndNoCameraAppsOpensTheFirstTab)
{
    install("One");
    open(false);
    QStringList tabs;
    int current = -1;
    inDialog([&](SettingsDialog& dialog) {
        tabs = tabTitles(dialog);
        current = dialog.tabWidget()->currentIndex();
        EXPECT_EQ(dialog.windowTitle(), "Settings");
    });
    trigger("&Settings", "Apps");
    EXPECT_EQ(tabs, QStringList("Apps"));
    EXPECT_EQ(current, 0);
}

TEST_F(ApplicationWindowTest, WithNoAppAndACameraCameraOpensTheFirstTabAndDevicesTheSecond)
{
    open();
    QStringList tabs;
    QList<int> current;
    for (const char* const entry : {"Camera", "Devices"}) {
        inDialog([&](SettingsDialog& dialog) {
            tabs = tabTitles(dialog);
            current.append(dialog.tabWidget()->currentIndex());
        });
        trigger("&Settings", entry);
    }
    EXPECT_EQ(tabs, QStringList({"Camera", "Devices"}));
    EXPECT_EQ(current, QList<int>({0, 1}));
}

TEST_F(ApplicationWindowTest, WithAppsAndACameraEachEntryOpensItsTab)
{
    openWithTwoApps();
    QStringList opened;
    for (const char* const entry : {"Apps", "Camera", "Devices"}) {
        inDialog([&](SettingsDialog& dialog) {
            opened.append(dialog.tabWidget()->tabText(dialog.tabWidget()->currentIndex()));
        });
        trigger("&Settings", entry);
    }
    EXPECT_EQ(opened, QStringList({"Apps", "Camera", "Devices"}));
}

TEST_F(ApplicationWindowTest, EveryAppIsAskedForATabInAscendingIndexWithoutTheLock)
{
    openWithTwoApps();
    TestApps::setProbe(noteHost);
    TestApps::log().clear();
    inDialog([&](SettingsDialog& dialog) {
        EXPECT_EQ(tabTitles(dialog), QStringList({"Apps", "Camera", "Devices"})) << "null widgets make no tabs";
    });
    trigger("&Settings", "Apps");
    const QStringList asked = TestApps::log().filter("createSettingsWidget");
    ASSERT_EQ(asked.size(), 2);
    EXPECT_TRUE(asked[0].startsWith("One.createSettingsWidget free"));
    EXPECT_TRUE(asked[1].startsWith("Two.createSettingsWidget free"));
}

TEST_F(ApplicationWindowTest, TheTabsOfTheAppsComeLastUnderTheirNames)
{
    openWithTwoApps();
    TestApps::set("settingsWidget", true);
    inDialog([&](SettingsDialog& dialog) {
        EXPECT_EQ(tabTitles(dialog), QStringList({"Apps", "Camera", "Devices", "One", "Two"}));
        EXPECT_TRUE(dialog.tabWidget()->isAncestorOf(dialog.tabWidget()->widget(4)));
    });
    trigger("&Settings", "Apps");
    TestApps::log().clear();
    inDialog([](SettingsDialog&) {});
    trigger("&Settings", "Apps");
    EXPECT_EQ(TestApps::logged("createSettingsWidget").size(), 2) << "the dialog is built anew each time";
}

TEST_F(ApplicationWindowTest, AppTabsComeFirstWhereThereIsNoOther)
{
    install("One");
    open(false);
    TestApps::set("settingsWidget", true);
    inDialog([&](SettingsDialog& dialog) { EXPECT_EQ(tabTitles(dialog), QStringList({"Apps", "One"})); });
    trigger("&Settings", "Apps");
}

TEST_F(ApplicationWindowTest, ChoosingAnotherAppInTheDialogSwitchesToIt)
{
    openWithTwoApps();
    window->show();
    inDialog([&](SettingsDialog& dialog) {
        auto* const list = dialog.findChild<QListWidget*>();
        ASSERT_NE(list, nullptr);
        EXPECT_TRUE(list->item(0)->isSelected());
        list->setCurrentRow(1);
        auto* const buttons = dialog.findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    trigger("&Settings", "Apps");
    EXPECT_EQ(window->currentAppIndex(), 1);
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
}

TEST_F(ApplicationWindowTest, WhatTheDialogReportsIsInEffectWhenItsSignalReturns)
{
    openWithTwoApps();
    TestApps::log().clear();
    inDialog([&](SettingsDialog& dialog) {
        TestApps::setProbe(noteHost);
        emit dialog.ResolutionChanged({640, 480, 0, 20.0F, 0.5F, 60.0F});
        EXPECT_EQ(window->currentResolution().width, 640);
        emit dialog.AppChanged(1);
        EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
        TestApps::setProbe(nullptr);
    });
    trigger("&Settings", "Camera");
    EXPECT_EQ(TestApps::log().filter(QRegularExpression("start|stop")),
              QStringList({"One.stop locked width=320 timer=0 streaming=0 file=1",
                           "One.start locked width=640 timer=0 streaming=0 file=1",
                           "One.stop locked width=640 timer=1 streaming=0 file=1",
                           "Two.start locked width=640 timer=1 streaming=0 file=1"}));
}

TEST_F(ApplicationWindowTest, CancellingTheDialogChangesNothing)
{
    openWithTwoApps();
    QFile::remove(settingsFilePath());
    TestApps::log().clear();
    inDialog([](SettingsDialog& dialog) { dialog.reject(); });
    trigger("&Settings", "Camera");
    EXPECT_TRUE(TestApps::logged("stop").isEmpty());
    EXPECT_FALSE(QFile::exists(settingsFilePath()));
    EXPECT_EQ(window->findChildren<SettingsDialog*>().size(), 0);
}

/// Chooses the binning that stands first in the list of the dialog's Camera tab.
void chooseFirstBinning(const SettingsDialog& dialog)
{
    auto* const binnings = dialog.findChild<QComboBox*>();
    ASSERT_NE(binnings, nullptr);
    QTest::keyClick(binnings, Qt::Key_Home);
}

TEST_F(ApplicationWindowTest, ModeChangeWithThirtyOneFramesQueuedIsInForceWithTheNextStart)
{
    openWithTwoApps();
    VYRCameraDevice* const camera = window->cameraDevice();
    camera->StartProcessing();
    for (std::uint32_t timestamp = 0; timestamp < 40; ++timestamp)
        FakeVYR::emitFrame(timestamp);
    ASSERT_EQ(camera->Size(), 31);
    inDialog([&](SettingsDialog& dialog) {
        chooseFirstBinning(dialog);
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    trigger("&Settings", "Camera");
    EXPECT_EQ(window->currentResolution().width, 640);
    EXPECT_EQ(window->currentResolution().binning, 0);

    camera->OutputQueue().Clear();
    camera->StartProcessing();
    FakeVYR::emitFrame(100);
    EXPECT_EQ(camera->Size(), 1);
    EXPECT_EQ(camera->ResolutionKey(), "R640x480_B1x1");
    int free = 0;
    while (camera->FrameCache().Acquire() != nullptr)
        ++free;
    EXPECT_EQ(free, 31) << "all but the frame that is queued";
}

TEST_F(ApplicationWindowTest, DialogIsUsableWhileFramesArriveAtTwoHundredPerSecond)
{
    openWithTwoApps();
    VYRCameraDevice* const camera = window->cameraDevice();
    camera->StartProcessing();
    std::atomic<bool> stop{false};
    std::atomic<std::uint32_t> frames{0};
    std::thread library([&] {
        auto next = std::chrono::steady_clock::now();
        while (!stop) {
            FakeVYR::emitFrame(50 * frames++);
            next += std::chrono::milliseconds(5);
            std::this_thread::sleep_until(next);
        }
    });
    std::thread consumer([&] {
        while (!stop) {
            if (NodeData* const frame = camera->OutputQueue().Pop(5)) {
                frame->Release();
            }
        }
    });
    inDialog([&](SettingsDialog& dialog) {
        const std::uint32_t opened = frames;
        EXPECT_TRUE(QTest::qWaitFor([&] { return frames > opened + 100; }, 20'000));
        chooseFirstBinning(dialog);
        EXPECT_TRUE(QTest::qWaitFor([&] { return frames > opened + 200; }, 20'000));
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), "1x1");
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    trigger("&Settings", "Camera");
    stop = true;
    library.join();
    consumer.join();
    EXPECT_EQ(window->currentResolution().width, 640);
}

// The skin.

TEST_F(ApplicationWindowTest, WithoutTheDarkSkinThePlatformsLookIsKept)
{
    const QPalette palette = QApplication::palette();
    const QStyle* const style = QApplication::style();
    open();
    EXPECT_EQ(QApplication::palette(), palette);
    EXPECT_EQ(QApplication::style(), style);
    EXPECT_EQ(qApp->styleSheet(), QString());
}

TEST_F(ApplicationWindowTest, TheDarkSkinIsAppliedWhenChosen)
{
    save([](AppSettings& settings) { settings.useDarkSkin = true; });
    open();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(40, 40, 40));
    EXPECT_EQ(qApp->styleSheet(), darkSkinStyleSheet());
    qApp->setStyleSheet(QString()); // takes the style sheet's own style away from in front
    EXPECT_EQ(QApplication::style()->objectName(), "fusion");
}

TEST_F(ApplicationWindowTest, TheDarkSkinsColours)
{
    const QPalette palette = darkSkinPalette();
    const QColor grey(53, 53, 53);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        EXPECT_EQ(palette.color(group, QPalette::WindowText), QColor(Qt::white));
        EXPECT_EQ(palette.color(group, QPalette::Base), QColor(15, 15, 15));
        EXPECT_EQ(palette.color(group, QPalette::AlternateBase), grey);
        EXPECT_EQ(palette.color(group, QPalette::ToolTipBase), QColor(Qt::white));
        EXPECT_EQ(palette.color(group, QPalette::ToolTipText), QColor(Qt::white));
        EXPECT_EQ(palette.color(group, QPalette::Text), QColor(Qt::white));
        EXPECT_EQ(palette.color(group, QPalette::Button), grey);
        EXPECT_EQ(palette.color(group, QPalette::ButtonText), QColor(Qt::white));
        EXPECT_EQ(palette.color(group, QPalette::BrightText), QColor(Qt::red));
        EXPECT_EQ(palette.color(group, QPalette::Highlight), QColor(214, 214, 214));
        EXPECT_EQ(palette.color(group, QPalette::HighlightedText), QColor(Qt::black));
        EXPECT_EQ(palette.color(group, QPalette::Link), QColor(42, 130, 218));
        EXPECT_EQ(palette.brush(group, QPalette::Window).style(), Qt::SolidPattern);
    }
}

TEST_F(ApplicationWindowTest, TheDarkSkinSetsTheWindowRoleTwiceAndTheSecondIsInForce)
{
    EXPECT_EQ(darkSkinPalette().color(QPalette::Disabled, QPalette::Window), QColor(40, 40, 40));
    EXPECT_EQ(darkSkinPalette().color(QPalette::Active, QPalette::Window), QColor(40, 40, 40));
}

TEST_F(ApplicationWindowTest, TheDarkSkinsStyleSheetIsSevenRulesWithNothingBetweenThem)
{
    const QStringList rules = {
        "QTabWidget::pane{ border-top:1px solid #424242;background:#282828;}",
        ("QMenu{ color: white; selection-color: white; selection-background-color: #626262; background: #353535; "
         "border: 0px; }"),
        "QMenuBar::item{ color: white; spacing: -10px; padding: 2px 4px; background: transparent; }",
        "QMenuBar::item:selected{ color: white; background: #626262; }",
        "QPushButton:disabled{ color : rgb(15,15,15); }",
        "QPushButton:enabled{ color : white; }",
        "QToolTip{ color : white; background-color: #353535; border: 1px solid #626262; border-radius : 3px; }"};
    EXPECT_EQ(darkSkinStyleSheet(), rules.join(QString()));
}

// Driving the current app.

TEST_F(ApplicationWindowTest, ChangingTheAppSwitchesAndRetitles)
{
    openWithTwoApps();
    TestApps::log().clear();
    window->changeApp(1);
    EXPECT_EQ(TestApps::log(), QStringList({"One.stop", "Two.start", "Two.name", "Two.name"}));
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
    AppSettings::instance() = AppSettings();
    loadSettings();
    EXPECT_EQ(AppSettings::instance().currentApp, "Two");
}

TEST_F(ApplicationWindowTest, TheTitleIsAskedForWithoutTheLock)
{
    openWithTwoApps();
    TestApps::log().clear();
    TestApps::setProbe(noteHost);
    window->changeApp(1);
    const QStringList names = TestApps::log().filter("Two.name");
    ASSERT_EQ(names.size(), 2);
    EXPECT_TRUE(names[0].contains(" locked ")) << "for the settings file, within the switch";
    EXPECT_TRUE(names[1].contains(" free ")) << "for the title";
}

TEST_F(ApplicationWindowTest, KeyPressesGoToTheAppFirst)
{
    openWithTwoApps();
    TestApps::log().clear();
    TestApps::set("consumesKeys", true);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier);
    EXPECT_TRUE(QApplication::sendEvent(window.get(), &press));
    EXPECT_TRUE(press.isAccepted());
    EXPECT_EQ(TestApps::log(), QStringList("One.handleKeyEvent"));
}

TEST_F(ApplicationWindowTest, AKeyThatTheAppDoesNotUseIsHandledAsUsual)
{
    openWithTwoApps();
    TestApps::log().clear();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &press);
    EXPECT_FALSE(press.isAccepted());
    EXPECT_EQ(TestApps::log(), QStringList("One.handleKeyEvent"));
}

/// What ends the question that an app asks.
void (*answer)(QMessageBox& question) = nullptr;

/// An app that asks its user something before it answers to a key.
void askWhenAKeyIsPressed(const char* app, const char* operation)
{
    TestApps::note(app, operation);
    if (qstrcmp(operation, "handleKeyEvent") != 0)
        return;
    QMessageBox question(window.get());
    question.addButton(QMessageBox::Cancel);
    QTimer::singleShot(50, &question, [&question] { answer(question); });
    question.exec();
    TestApps::log().append("answered");
}

TEST_F(ApplicationWindowTest, AnAppMayShowAModalDialogInsideACall)
{
    openWithTwoApps();
    window->show();
    answer = [](QMessageBox& question) { QTest::keyClick(&question, Qt::Key_Escape); };
    TestApps::setProbe(askWhenAKeyIsPressed);
    TestApps::log().clear();
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_EQ(TestApps::log(), QStringList({"One.handleKeyEvent", "answered"})) << "it has been polled meanwhile";
    runEventLoop();
    EXPECT_EQ(TestApps::log().last(), "One.updatePending") << "it is not polled any more";
}

TEST_F(ApplicationWindowTest, TheSettingsStayClosedWhileTheAppIsInsideACall)
{
    openWithTwoApps();
    window->show();
    answer = [](QMessageBox& question) {
        QTimer::singleShot(0, window.get(), [] {
            if (auto* const dialog = qobject_cast<SettingsDialog*>(QApplication::activeModalWidget())) {
                ADD_FAILURE() << "the settings can be changed";
                dialog->reject();
            }
        });
        trigger("&Settings", "Apps");
        question.reject();
    };
    TestApps::setProbe(askWhenAKeyIsPressed);
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_EQ(TestApps::log().last(), "answered");
}

/// Whether the window is closed as well.
bool closesAfterChoosing = false;

/// An app that runs an event loop of its own the first time that it is polled while the settings are open, in which
/// another mode and another app are chosen.
void chooseInsideAPoll(const char* app, const char* operation)
{
    TestApps::note(app, operation);
    auto* const dialog = qobject_cast<SettingsDialog*>(QApplication::activeModalWidget());
    if (qstrcmp(operation, "updatePending") != 0 || dialog == nullptr)
        return;
    TestApps::log().clear();
    QTimer::singleShot(0, dialog, [dialog] {
        dialog->setCurrentTab(1);
        chooseFirstBinning(*dialog);
        dialog->findChild<QListWidget*>()->setCurrentRow(1);
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
        if (closesAfterChoosing)
            window->close();
    });
    QEventLoop loop;
    QTimer::singleShot(100, &loop, &QEventLoop::quit);
    loop.exec();
    TestApps::log().append("returned");
}

TEST_F(ApplicationWindowTest, WhatIsChosenWhileTheAppIsInsideACallIsDoneAfterItsReturn)
{
    openWithTwoApps();
    window->show();
    closesAfterChoosing = false;
    TestApps::setProbe(chooseInsideAPoll);
    trigger("&Settings", "Apps");
    EXPECT_EQ(TestApps::log().mid(0, 5), QStringList({"returned", "One.stop", "One.start", "One.stop", "Two.start"}));
    EXPECT_EQ(window->currentResolution().width, 640);
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
}

TEST_F(ApplicationWindowTest, WhatIsChosenWhileTheAppIsInsideACallIsNotDoneOnceTheWindowIsClosed)
{
    openWithTwoApps();
    window->show();
    closesAfterChoosing = true;
    TestApps::setProbe(chooseInsideAPoll);
    trigger("&Settings", "Apps");
    EXPECT_EQ(TestApps::log(), QStringList("returned"));
}

TEST_F(ApplicationWindowTest, AnAppThatIsInsideACallWhileAllWindowsAreClosedIsStoppedAfterItsReturn)
{
    openWithTwoApps();
    window->show();
    answer = [](QMessageBox&) { QApplication::closeAllWindows(); };
    TestApps::setProbe(askWhenAKeyIsPressed);
    ASSERT_TRUE(QFile::remove(settingsFilePath()));
    TestApps::log().clear();
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
    EXPECT_EQ(TestApps::log(), QStringList({"One.handleKeyEvent", "answered"}));
    window.reset();
    EXPECT_EQ(TestApps::log().filter("stop"), QStringList("One.stop"));
}

TEST_F(ApplicationWindowTest, AKeyThatIsTypedReachesTheAppOnceUnderTheLock)
{
    openWithTwoApps();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    TestApps::setProbe(noteHost);
    TestApps::log().clear();
    QTest::keyClick(window.get(), Qt::Key_Space);
    const QStringList keys = TestApps::log().filter("handleKeyEvent");
    ASSERT_EQ(keys.size(), 1) << "the press, and not the release";
    EXPECT_TRUE(keys.first().startsWith("One.handleKeyEvent locked"));
}

TEST_F(ApplicationWindowTest, AResolutionChangeStopsTheAppThenStoresTheModeThenStartsIt)
{
    openWithTwoApps();
    TestApps::setProbe(noteHost);
    TestApps::log().clear();
    window->changeResolution({640, 480, 0, 20.0F, 0.5F, 60.0F});
    EXPECT_EQ(TestApps::log(), QStringList({"One.stop locked width=320 timer=0 streaming=0 file=1",
                                            "One.start locked width=640 timer=0 streaming=0 file=1"}));
    EXPECT_TRUE(frameTimer().isActive());
    EXPECT_EQ(frameTimer().interval(), 0);
    EXPECT_EQ(window->currentResolution().maxFps, 60.0F);
    FakeVYR::clearCalls();
    window->cameraDevice()->StartProcessing();
    EXPECT_EQ(FakeVYR::calls().front(), "Enumerate 1 640 480 0 20") << "the camera has the new mode";
}

TEST_F(ApplicationWindowTest, AResolutionChangeWithoutAnAppRestartsTheTimer)
{
    open();
    window->changeResolution({640, 480, 0, 20.0F, 0.5F, 60.0F});
    EXPECT_TRUE(frameTimer().isActive());
    EXPECT_EQ(window->currentResolution().width, 640);
    EXPECT_EQ(window->currentResolution().fps, 20.0F);
}

TEST_F(ApplicationWindowTest, TheHostIsWholeWhenAppsAreInitialized)
{
    TestApps::set("looksAtHost", true);
    install("One");
    open();
    EXPECT_EQ(qApp->property("testApps.hostIsWhole"), QVariant(true));
}

TEST_F(ApplicationWindowTest, TheCameraKeepsItsModeUntilTheAppHasStopped)
{
    openWithTwoApps();
    static QString key;
    TestApps::setProbe([](const char*, const char* operation) {
        if (qstrcmp(operation, "stop") == 0)
            key = window->cameraDevice()->ResolutionKey();
    });
    window->changeResolution({640, 480, 0, 20.0F, 0.5F, 60.0F});
    EXPECT_EQ(key, "R320x240_B2x2");
}

TEST_F(ApplicationWindowTest, AnAppMayRunTheCameraThroughAResolutionChange)
{
    openWithTwoApps();
    window->cameraDevice()->StartProcessing();
    TestApps::setProbe([](const char*, const char* operation) {
        if (qstrcmp(operation, "stop") == 0)
            window->cameraDevice()->StopProcessing();
        else if (qstrcmp(operation, "start") == 0)
            window->cameraDevice()->StartProcessing();
    });
    window->changeResolution({640, 480, 0, 20.0F, 0.5F, 60.0F});
    EXPECT_TRUE(FakeVYR::isStreaming());
    EXPECT_TRUE(field(0)->text().startsWith("Resolution: 640x480, Binning: 1x1"));
}

// Apps that do not get on.

class ApplicationWindowAndHoldingAppTest : public ApplicationWindowTest
{
protected:
    void SetUp() override
    {
        ApplicationWindowTest::SetUp();
        qApp->setProperty("holdingApp.gate", QVariant::fromValue<quintptr>(reinterpret_cast<quintptr>(&gate)));
        install("Holding");
    }

    void TearDown() override
    {
        gate.open(); // whatever has failed
        ApplicationWindowTest::TearDown();
    }

    /// Emits as many frames as a camera does in `count` / 200 seconds.
    void emitFrames(int count)
    {
        for (int i = 0; i < count; ++i)
            FakeVYR::emitFrame(50 * ++_frames);
    }

    /// Opens the window with a worker that has come to stand still over its first frame.
    void openAndHoldAFrame()
    {
        gate.holdsFrames = true;
        install("Two");
        open();
        window->show();
        ASSERT_EQ(window->windowTitle(), "VYR Dashboard - Holding");
        emitFrames(1);
        ASSERT_TRUE(waitFor([this] { return gate.waiting == 1; }));
    }

    /// Does something that stops the app; what holds the worker goes away only when the app is already being stopped.
    /// True when the worker was waited for.
    bool waitsForTheWorker(const std::function<void()>& action)
    {
        std::atomic<bool> done{false};
        std::atomic<bool> doneTooEarly{false};
        std::thread elsewhere([&] {
            waitFor([this] { return gate.stopping.load(); });
            emitFrames(1000);
            doneTooEarly = done.load();
            gate.open();
        });
        action();
        done = true;
        elsewhere.join();
        return gate.stopping && !doneTooEarly;
    }

    bool isPolled()
    {
        const int before = gate.polls;
        return QTest::qWaitFor([&] { return gate.polls > before + 10; }, limit);
    }

    HoldingGate gate;

private:
    std::uint32_t _frames = 0;
};

TEST_F(ApplicationWindowAndHoldingAppTest, AnAppThatIsSlowToStartIsWaitedForWhileFramesAreDropped)
{
    gate.holdsStart = true;
    std::thread library([this] {
        waitFor([this] { return gate.waiting == 1; });
        emitFrames(1000);
        gate.open();
    });
    open();
    library.join();
    window->show();
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Holding");
    EXPECT_TRUE(isPolled());
    EXPECT_EQ(gate.queued, 31) << "the rest is gone";
    EXPECT_TRUE(waitFor([this] { return gate.frames == 31; }));
    emitFrames(1);
    EXPECT_TRUE(waitFor([this] { return gate.frames == 32; })) << "and new ones come";
    emitFrames(200);
    EXPECT_TRUE(field(0)->text().contains("FPS:  200.000")) << qPrintable(field(0)->text());
}

TEST_F(ApplicationWindowAndHoldingAppTest, AWorkerThatNeverFinishesAFrameLeavesTheWindowAndTheOtherWorkersAlive)
{
    openAndHoldAFrame();
    emitFrames(1000);
    EXPECT_TRUE(isPolled());
    const auto before = mallinfo2().uordblks;
    std::thread library([this] { emitFrames(10'000); });
    library.join();
    EXPECT_TRUE(isPolled());
    EXPECT_LT(mallinfo2().uordblks, before + 64 * 1024) << "six bytes a frame";
    EXPECT_EQ(window->cameraDevice()->Size(), 31);
    EXPECT_EQ(gate.frames, 0);
    const int steps = gate.steps;
    EXPECT_TRUE(waitFor([&] { return gate.steps > steps + 3; })) << "the other worker";
    EXPECT_TRUE(field(0)->text().contains("FPS:  200.000")) << "the camera is measured on";
    QTest::keyClick(window.get(), Qt::Key_A);
    inDialog([](SettingsDialog& dialog) { EXPECT_EQ(dialog.tabWidget()->count(), 3); });
    trigger("&Settings", "Apps");
}

TEST_F(ApplicationWindowAndHoldingAppTest, AnAppThatLetsGoOfItsFrameWhenItIsStoppedIsStoppedAtOnce)
{
    gate.opensAtStop = true;
    openAndHoldAFrame();
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(FakeVYR::isStreaming());
    EXPECT_EQ(gate.frames, 1);
}

TEST_F(ApplicationWindowAndHoldingAppTest, SwitchingTheAppWaitsForTheWorkerHoweverLongItTakes)
{
    openAndHoldAFrame();
    EXPECT_TRUE(waitsForTheWorker([] { window->changeApp(1); }));
    EXPECT_EQ(window->windowTitle(), "VYR Dashboard - Two");
    EXPECT_FALSE(FakeVYR::isStreaming());
}

TEST_F(ApplicationWindowAndHoldingAppTest, ChangingTheModeWaitsForTheWorkerHoweverLongItTakes)
{
    openAndHoldAFrame();
    EXPECT_TRUE(waitsForTheWorker([] { window->changeResolution({640, 480, 0, 20.0F, 0.5F, 60.0F}); }));
    EXPECT_EQ(window->currentResolution().width, 640);
    EXPECT_TRUE(isPolled());
    const int before = gate.frames;
    emitFrames(1);
    EXPECT_TRUE(waitFor([&] { return gate.frames > before; }));
    EXPECT_EQ(gate.frames, before + 1) << "it goes on with the frames that come now";
}

TEST_F(ApplicationWindowAndHoldingAppTest, ClosingWaitsForTheWorkerHoweverLongItTakesAndThenWritesTheSettings)
{
    openAndHoldAFrame();
    QFile::remove(settingsFilePath());
    EXPECT_TRUE(waitsForTheWorker([] { window->close(); }));
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
}

// Closing.

TEST_F(ApplicationWindowTest, ClosingStopsTimerAppAndCameraAndThenWritesTheSettings)
{
    openWithTwoApps();
    window->show();
    window->cameraDevice()->StartProcessing();
    QFile::remove(settingsFilePath());
    AppSettings::instance().height = 120;
    TestApps::setProbe(noteHost);
    TestApps::log().clear();
    FakeVYR::setDuringStop([] { noteHost("camera", "stop"); });
    EXPECT_TRUE(window->close());
    EXPECT_EQ(TestApps::log(), QStringList({"One.stop locked width=320 timer=0 streaming=1 file=0",
                                            "camera.stop free width=320 timer=0 streaming=1 file=0"}));
    EXPECT_FALSE(FakeVYR::isStreaming());
    AppSettings::instance() = AppSettings();
    loadSettings();
    EXPECT_EQ(AppSettings::instance().height, 120);
    runEventLoop();
    EXPECT_EQ(TestApps::log().size(), 2) << "an app is polled after it was stopped";
}

TEST_F(ApplicationWindowTest, ExitClosesTheWindowOnceAndWritesTheSettings)
{
    openWithTwoApps();
    window->show();
    TestApps::log().clear();
    QFile::remove(settingsFilePath());
    trigger("&File", "Exit");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(TestApps::log(), QStringList("One.stop"));
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
}

TEST_F(ApplicationWindowTest, TheCloseButtonClosesTheWindowOnceAndWritesTheSettings)
{
    openWithTwoApps();
    window->show();
    TestApps::log().clear();
    QFile::remove(settingsFilePath());
    QCloseEvent event;
    QApplication::sendEvent(window.get(), &event);
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(TestApps::log(), QStringList("One.stop"));
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
}

/// Runs the event loop until something ends it, and returns how it ended; 1 when nothing does.
int runUntilEnd()
{
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    watchdog.start(limit);
    return QApplication::exec();
}

TEST_F(ApplicationWindowTest, ClosingTheLastWindowEndsTheEventLoop)
{
    openWithTwoApps();
    window->show();
    QTimer::singleShot(0, window.get(), [] { trigger("&File", "Exit"); });
    EXPECT_EQ(runUntilEnd(), 0);
}

TEST_F(ApplicationWindowTest, ClosingTheMainWindowClosesTheAppsOwnOnesAndEndsTheEventLoop)
{
    openWithTwoApps();
    window->show();
    QWidget ofAnApp;
    ofAnApp.show();
    QTimer::singleShot(0, window.get(), [] { window->close(); });
    EXPECT_EQ(runUntilEnd(), 0);
    EXPECT_FALSE(ofAnApp.isVisible());
}

TEST_F(ApplicationWindowTest, ClosingTheMainWindowLeavesAQuestionToTheUser)
{
    openWithTwoApps();
    window->show();
    QMessageBox question(QMessageBox::Question, "Edges", "Save the edges?", QMessageBox::Save);
    question.setWindowModality(Qt::ApplicationModal);
    question.show();
    window->close();
    runEventLoop();
    EXPECT_TRUE(question.isVisible());
}

TEST_F(ApplicationWindowTest, DestructionWithoutClosingStopsTheAppWhileTheCameraIsThere)
{
    openWithTwoApps();
    window->cameraDevice()->StartProcessing();
    FakeVYR::clearCalls();
    TestApps::setProbe([](const char* app, const char* operation) {
        TestApps::log().append(QString("%1.%2 calls=%3").arg(app, operation).arg(FakeVYR::calls().size()));
    });
    TestApps::log().clear();
    window.reset();
    EXPECT_EQ(TestApps::log(), QStringList("One.stop calls=0"));
    ASSERT_FALSE(FakeVYR::calls().empty());
    EXPECT_EQ(FakeVYR::calls().back(), "CloseVYR");
}

TEST_F(ApplicationWindowTest, DestructionAfterClosingDoesNotStopTheAppAgain)
{
    openWithTwoApps();
    window->show();
    TestApps::log().clear();
    EXPECT_TRUE(window->close());
    window.reset();
    EXPECT_EQ(TestApps::log(), QStringList("One.stop"));
}

TEST_F(ApplicationWindowTest, ClosingTwiceStopsTheAppOnce)
{
    openWithTwoApps();
    window->show();
    TestApps::log().clear();
    EXPECT_TRUE(window->close());
    QFile::remove(settingsFilePath());
    EXPECT_TRUE(window->close());
    EXPECT_EQ(TestApps::log(), QStringList("One.stop"));
    EXPECT_TRUE(QFile::exists(settingsFilePath())) << "the rest is done as often as it is asked for";
    window.reset();
    EXPECT_EQ(TestApps::log(), QStringList("One.stop"));
}

TEST_F(ApplicationWindowTest, AnAppThatIsStartedAfterTheWindowWasClosedIsStoppedBeforeTheCameraGoes)
{
    openWithTwoApps();
    window->show();
    EXPECT_TRUE(window->close());
    TestApps::log().clear();
    window->changeApp(1); // as a settings dialog does that was still open
    EXPECT_EQ(TestApps::log().filter(QRegularExpression("start|stop")), QStringList("Two.start"));
    FakeVYR::clearCalls();
    TestApps::setProbe([](const char* app, const char* operation) {
        TestApps::log().append(QString("%1.%2 calls=%3").arg(app, operation).arg(FakeVYR::calls().size()));
    });
    TestApps::log().clear();
    window.reset();
    EXPECT_EQ(TestApps::log(), QStringList("Two.stop calls=0"));
}

TEST_F(ApplicationWindowTest, DestructionClosesTheCameraAndLeavesTheAppsLoaded)
{
    openWithTwoApps();
    AppInterface* const app = window->apps().value(1);
    FakeVYR::clearCalls();
    window.reset();
    EXPECT_EQ(FakeVYR::calls(), std::vector<std::string>({"CloseVYR"}));
    EXPECT_EQ(app->name(), "Two");
    EXPECT_TRUE(TestApps::logged("destroyed").isEmpty());
}

} // namespace

#include "ApplicationWindowTest.moc"
