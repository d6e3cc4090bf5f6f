// SPDX-License-Identifier: Apache-2.0
// Finding, accepting, switching and driving apps, with real shared libraries.

#include "TestAppsFolder.h"

#include <app/AppSettings.h>
#include <apps/AppInterface.h>
#include <apps/AppManager.h>
#include <apps/HostEnvironmentInterface.h>
#include <apps/StatusBarText.h>
#include <camera/VYRCameraDevice.h>

#include <tests/support/BindingPermissions.h>

#include <FakeVYR.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <memory>
#include <stdexcept>
#include <type_traits>

#include <dlfcn.h>
#include <elf.h>
#include <sys/stat.h>

// Apps are called by slot: a destructor among them would move every one of the slots.
static_assert(std::is_polymorphic_v<AppInterface> && !std::has_virtual_destructor_v<AppInterface>);
static_assert(
    std::is_polymorphic_v<HostEnvironmentInterface> && !std::has_virtual_destructor_v<HostEnvironmentInterface>);
static_assert(std::is_polymorphic_v<StatusBarText> && !std::has_virtual_destructor_v<StatusBarText>);

namespace {

class Field final : public StatusBarText
{
public:
    explicit Field(const char* name)
        : _name(name)
    {
    }

    void setStatusText(QString text) override { TestApps::log().append(QString("%1=%2").arg(_name, text)); }

    void setStatusTextColored(QString, QColor) override {}
    void setStatusVisible(bool) override {}

private:
    const char* _name;
};

/// Notes when it is hidden, as the window's bottom dock.
class Dock : public QDockWidget
{
public:
    void setVisible(bool visible) override
    {
        QDockWidget::setVisible(visible);
        TestApps::log().append(visible ? "dock shown" : "dock hidden");
    }
};

class Host final : public HostEnvironmentInterface
{
public:
    QDockWidget* centralDock() override { return nullptr; }
    QDockWidget* sideDock() override { return nullptr; }
    QDockWidget* bottomDock() override { return &_dock; }
    StatusBarText* statusText(int index) override { return index == 0 ? &_field0 : &_field1; }
    VYRCameraDevice* cameraDevice() override { return &_camera; }
    VYRResolutionInfo currentResolution() override { return {}; }

private:
    Dock _dock;
    Field _field0{"field 0"};
    Field _field1{"field 1"};
    VYRCameraDevice _camera{5, 320, 240, 30.0F};
};

class Manager : public AppManager
{
};

Manager* probedManager = nullptr;

/// Notes with each operation whether the app lock is held around it.
void noteWithLock(const char* app, const char* operation)
{
    const bool free = probedManager->appLock().tryLock();
    if (free)
        probedManager->appLock().unlock();
    TestApps::log().append(QString("%1.%2 %3").arg(app, operation, free ? "free" : "locked"));
}

QKeyEvent keyPress()
{
    return QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
}

class AppManagerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        FakeVYR::reset();
        TestApps::reset();
        probedManager = &manager;
        AppSettings::instance() = AppSettings();
        QDir(QCoreApplication::applicationDirPath()).mkdir("settings");
        QFile::remove(settingsFilePath());
    }

    void TearDown() override { QDir(QCoreApplication::applicationDirPath() + "/settings").removeRecursively(); }

    void install(const QString& name, const QString& fileName) const { TestApps::install(name, folder(), fileName); }

    void write(const QString& fileName, const QByteArray& bytes) const
    {
        QFile file(folder().filePath(fileName));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// The bytes of a library of the fixtures folder.
    QByteArray library(const QString& name) const
    {
        install(name, "library");
        QFile file(folder().filePath("library"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QDir folder() const { return QDir(_folder.path()); }

    bool load(bool withCamera = true)
    {
        FakeVYR::setOpens(withCamera);
        host = std::make_unique<Host>();
        manager.setHost(host.get());
        return manager.loadAppsFrom(folder());
    }

    void loadTwo()
    {
        install("One", "OneApp.so");
        install("Two", "TwoApp.so");
        ASSERT_TRUE(load());
        manager.initializeApps();
        TestApps::log().clear();
    }

    QStringList names() const
    {
        QStringList result;
        for (const AppInfo& info : manager.appInfos())
            result.append(info.name);
        return result;
    }

    Manager manager;
    std::unique_ptr<Host> host;

private:
    QTemporaryDir _folder; // of its own for each test: a loader remembers libraries by their paths
};

TEST_F(AppManagerTest, AnEmptyFolderHoldsNoApps)
{
    EXPECT_FALSE(load());
    EXPECT_TRUE(manager.apps().isEmpty());
    EXPECT_TRUE(manager.appInfos().isEmpty());
    EXPECT_EQ(manager.currentAppIndex(), -1);
    EXPECT_EQ(manager.currentApp(), nullptr);
}

TEST_F(AppManagerTest, LoadsAppsFromTheFolderOfTheExecutable)
{
    const QDir here(QCoreApplication::applicationDirPath());
    QFile::remove(here.filePath("HereApp.so"));
    TestApps::install("One", here, "HereApp.so");
    host = std::make_unique<Host>();
    manager.setHost(host.get());
    EXPECT_TRUE(manager.loadApps());
    EXPECT_EQ(names(), QStringList("One"));
    QFile::remove(here.filePath("HereApp.so"));
}

TEST_F(AppManagerTest, AsksAnAppInOrderWhileLoading)
{
    install("One", "OneApp.so");
    ASSERT_TRUE(load());
    EXPECT_EQ(TestApps::log(), QStringList({"One.constructed", "One.requiresCamera", "One.name", "One.version",
                                            "One.description", "One.icon"}));
}

TEST_F(AppManagerTest, KeepsWhatIsShownOfAnApp)
{
    install("One", "OneApp.so");
    ASSERT_TRUE(load());
    ASSERT_EQ(manager.appInfos().size(), 1);
    const AppInfo& info = manager.appInfos().first();
    EXPECT_EQ(info.name, "One");
    EXPECT_EQ(info.version, "1.2.3");
    EXPECT_EQ(info.description, "App One");
    EXPECT_EQ(info.icon.pixmap(8, 8).toImage().pixelColor(4, 4), QColor(Qt::green));
}

TEST_F(AppManagerTest, VisitsFilesByNameWithoutRegardToCase)
{
    install("Two", "BApp.so");
    install("One", "aApp.so");
    install("Three", "cApp.so");
    ASSERT_TRUE(load());
    EXPECT_EQ(names(), QStringList({"One", "Two", "Three"}));
    EXPECT_EQ(manager.apps().keys(), QList<int>({0, 1, 2}));
    EXPECT_EQ(manager.apps().value(1)->name(), "Two");
}

TEST_F(AppManagerTest, VisitsNeitherOtherNamesNorFolders)
{
    install("One", "App.so.1");
    install("One", "OneApp.so.bak");
    install("One", "libOne.so");
    ASSERT_TRUE(folder().mkdir("xApp.so"));
    EXPECT_FALSE(load());
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(AppManagerTest, VisitsNoNamesOfAnotherCase)
{
    install("One", "oneapp.so");
    install("Two", "TwoApp.SO");
    EXPECT_FALSE(load());
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(AppManagerTest, SkipsWhatIsNoPlugIn)
{
    install("NoPlugin", "aApp.so");
    QFile text(folder().filePath("cApp.so"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("not a library");
    text.close();
    QFile empty(folder().filePath("dApp.so"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    install("One", "zApp.so");
    EXPECT_TRUE(load());
    EXPECT_EQ(names(), QStringList("One"));
    EXPECT_EQ(manager.apps().firstKey(), 0);
}

TEST_F(AppManagerTest, SkipsAnAppThatLacksASymbol)
{
    install("MissingSymbol", "aApp.so");
    install("One", "bApp.so");
    EXPECT_TRUE(load());
    EXPECT_EQ(names(), QStringList("One"));
    EXPECT_TRUE(TestApps::log().filter("MissingSymbol").isEmpty());
}

TEST_F(AppManagerTest, SkipsALibraryThatWasCutShort)
{
    const QByteArray whole = library("One");
    for (int part = 0; part < 32; ++part)
        write(QString("%1App.so").arg(part), whole.left(whole.size() * part / 32));
    write("LastByteApp.so", whole.chopped(1));
    EXPECT_FALSE(load());
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(AppManagerTest, SkipsALibraryOfAnotherKindOfMachine)
{
    const QByteArray own = library("One");
    ASSERT_TRUE(own.startsWith("\177ELF"));
    QByteArray otherMachine = own;
    otherMachine[18] = static_cast<char>(~own[18]); // the low byte of the machine's number
    write("aApp.so", otherMachine);
    QByteArray otherWidth = own;
    otherWidth[4] = own[4] == ELFCLASS64 ? ELFCLASS32 : ELFCLASS64;
    write("bApp.so", otherWidth);
    QByteArray otherByteOrder = own;
    otherByteOrder[5] = own[5] == ELFDATA2LSB ? ELFDATA2MSB : ELFDATA2LSB;
    write("cApp.so", otherByteOrder);
    EXPECT_FALSE(load());
    EXPECT_TRUE(TestApps::log().isEmpty());
}

class AppManagerThrowTest : public AppManagerTest, public testing::WithParamInterface<const char*>
{
};

const char* throwingOperation = nullptr;

/// Throws in one operation of the app One.
void throwInOne(const char* app, const char* operation)
{
    TestApps::note(app, operation);
    if (qstrcmp(app, "One") == 0 && qstrcmp(operation, throwingOperation) == 0)
        throw std::runtime_error("no app today");
}

TEST_P(AppManagerThrowTest, SkipsAnAppThatThrowsBeforeItIsAccepted)
{
    throwingOperation = GetParam();
    install("One", "aApp.so");
    install("Two", "bApp.so");
    TestApps::setProbe(throwInOne);
    EXPECT_TRUE(load());
    EXPECT_EQ(names(), QStringList("Two"));
    EXPECT_EQ(manager.apps().keys(), QList<int>({0}));
    EXPECT_EQ(TestApps::log().filter("One.").last(), QString("One.%1").arg(GetParam()));
    manager.initializeApps();
    EXPECT_EQ(TestApps::logged("initialize"), QStringList("Two.initialize"));
}

INSTANTIATE_TEST_SUITE_P(While, AppManagerThrowTest,
                         testing::Values("constructed", "requiresCamera", "name", "version", "description", "icon"),
                         [](const auto& operation) { return std::string(operation.param); });

TEST_F(AppManagerTest, SkipsAnAppThatThrowsAnythingElse)
{
    install("One", "aApp.so");
    TestApps::setProbe([](const char*, const char*) { throw 1; });
    EXPECT_FALSE(load());
}

TEST_F(AppManagerTest, WhatAnAcceptedAppThrowsIsNotCaught)
{
    install("One", "aApp.so");
    ASSERT_TRUE(load());
    throwingOperation = "initialize";
    TestApps::setProbe(throwInOne);
    EXPECT_THROW(manager.initializeApps(), std::runtime_error);
    throwingOperation = "start";
    EXPECT_THROW(manager.setCurrentApp(0), std::runtime_error);
    EXPECT_TRUE(manager.appLock().tryLock()) << "the lock has been left behind";
    manager.appLock().unlock();
}

TEST_F(AppManagerTest, ALibraryWhoseStaticInitializerThrowsEndsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    install("ThrowingInitializer", "aApp.so");
    // The process that ends leaves its own folder: inside of this one's, which is removed.
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder().path().toUtf8());
    EXPECT_DEATH(load(), "this library has no place here");
    temporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporary);
}

QStringList messages;

void keepMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    messages.append(text);
}

void expectMessage(int index, const char* beginning, const char* file)
{
    const QString& message = messages[index];
    EXPECT_TRUE(message.startsWith(beginning) && message.contains(file)) << qPrintable(message);
}

TEST_F(AppManagerTest, TellsOfSkippedFilesOnlyWhereItIsAskedTo)
{
    throwingOperation = "icon";
    TestApps::setProbe(throwInOne);
    install("One", "aApp.so");
    install("NoPlugin", "bApp.so");
    install("Camera", "cApp.so");
    messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(keepMessage);
    load(false);
    EXPECT_TRUE(messages.isEmpty());
    QLoggingCategory::setFilterRules("vyr.apps=true");
    load(false);
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(before);
    ASSERT_EQ(messages.size(), 6);
    expectMessage(0, "Loading:", "aApp.so");
    expectMessage(1, "Failed while loading:", "aApp.so");
    EXPECT_TRUE(messages[1].endsWith("no app today")) << qPrintable(messages[1]);
    expectMessage(2, "Loading:", "bApp.so");
    expectMessage(3, "Not an app:", "bApp.so");
    expectMessage(4, "Loading:", "cApp.so");
    expectMessage(5, "Requires a camera:", "cApp.so");
}

TEST_F(AppManagerTest, SkipsAnUnreadableFile)
{
    install("One", "aApp.so");
    ASSERT_EQ(::chmod(folder().filePath("aApp.so").toUtf8(), 0), 0);
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root reads everything";
    EXPECT_FALSE(load());
}

TEST_F(AppManagerTest, SkipsAnotherInterfaceAndLeavesItLoaded)
{
    qApp->setProperty("otherPlugins", 0);
    install("OtherInterface", "aApp.so");
    install("One", "bApp.so");
    EXPECT_TRUE(load());
    EXPECT_EQ(names(), QStringList("One"));
    EXPECT_EQ(qApp->property("otherPlugins"), 1) << "it was unloaded";
}

TEST_F(AppManagerTest, WithoutACameraAnAppThatRequiresOneIsUnloadedAndTheNextGetsIndexZero)
{
    install("Camera", "aApp.so");
    install("Two", "bApp.so");
    EXPECT_TRUE(load(false));
    EXPECT_EQ(names(), QStringList("Two"));
    EXPECT_EQ(manager.apps().keys(), QList<int>({0}));
    EXPECT_EQ(TestApps::log().filter("Camera."),
              QStringList({"Camera.constructed", "Camera.requiresCamera", "Camera.destroyed"}));
}

TEST_F(AppManagerTest, WithACameraAnAppThatRequiresOneIsAccepted)
{
    install("Camera", "aApp.so");
    EXPECT_TRUE(load(true));
    EXPECT_EQ(names(), QStringList("Camera"));
}

TEST_F(AppManagerTest, InitializesEveryAppInAscendingIndexWithoutTheLock)
{
    install("Two", "aApp.so");
    install("One", "bApp.so");
    ASSERT_TRUE(load());
    TestApps::log().clear();
    TestApps::setProbe(noteWithLock);
    manager.initializeApps();
    EXPECT_EQ(TestApps::log(), QStringList({"Two.initialize free", "One.initialize free"}));
}

TEST_F(AppManagerTest, TheFirstSwitchStopsNobodyAndSavesTheName)
{
    loadTwo();
    manager.setCurrentApp(1);
    EXPECT_EQ(TestApps::log(), QStringList({"field 0=", "field 1=", "dock hidden", "Two.start", "Two.name"}));
    EXPECT_EQ(manager.currentAppIndex(), 1);
    EXPECT_EQ(manager.currentApp()->name(), "Two");
    EXPECT_EQ(AppSettings::instance().currentApp, "Two");
    AppSettings::instance() = AppSettings();
    loadSettings();
    EXPECT_EQ(AppSettings::instance().currentApp, "Two");
}

TEST_F(AppManagerTest, ASwitchStopsTheOldAppClearsTheHostAndStartsTheNewOneInThisOrder)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::log().clear();
    manager.setCurrentApp(1);
    EXPECT_EQ(TestApps::log(),
              QStringList({"One.stop", "field 0=", "field 1=", "dock hidden", "Two.start", "Two.name"}));
}

TEST_F(AppManagerTest, SwitchingToTheCurrentAppStopsAndStartsItAndWritesTheFile)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::log().clear();
    ASSERT_TRUE(QFile::remove(settingsFilePath()));
    manager.setCurrentApp(0);
    EXPECT_EQ(TestApps::log(),
              QStringList({"One.stop", "field 0=", "field 1=", "dock hidden", "One.start", "One.name"}));
    EXPECT_TRUE(QFile::exists(settingsFilePath()));
}

TEST_F(AppManagerTest, TheNewAppIsCurrentWhenItIsStarted)
{
    loadTwo();
    static int seen = -2;
    TestApps::setProbe([](const char*, const char* operation) {
        if (qstrcmp(operation, "start") == 0)
            seen = probedManager->currentAppIndex();
    });
    manager.setCurrentApp(1);
    EXPECT_EQ(seen, 1);
}

TEST_F(AppManagerTest, AnIndexWithoutAnAppChangesNothing)
{
    loadTwo();
    manager.setCurrentApp(1);
    TestApps::log().clear();
    ASSERT_TRUE(QFile::remove(settingsFilePath()));
    for (const int index : {-1, 2, 1000})
        manager.setCurrentApp(index);
    EXPECT_TRUE(TestApps::log().isEmpty());
    EXPECT_EQ(manager.currentAppIndex(), 1);
    EXPECT_FALSE(QFile::exists(settingsFilePath()));
}

TEST_F(AppManagerTest, TheBottomDockIsHiddenAfterASwitchEvenIfThePreviousAppHadShownIt)
{
    loadTwo();
    TestApps::set("showsBottomDock", true);
    manager.setCurrentApp(0);
    EXPECT_FALSE(host->bottomDock()->isHidden());
    TestApps::set("showsBottomDock", false);
    manager.setCurrentApp(1);
    EXPECT_TRUE(host->bottomDock()->isHidden());
}

TEST_F(AppManagerTest, TheLockIsHeldAroundEveryCallIntoTheCurrentAppAndForTheWholeSwitch)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::setProbe(noteWithLock);
    TestApps::log().clear();
    TestApps::set("pending", true);
    QKeyEvent key = keyPress();
    manager.setCurrentApp(1);
    manager.pollCurrentApp();
    manager.offerEvent(&key);
    manager.stopCurrentApp();
    manager.startCurrentApp();
    const QStringList calls = TestApps::log().filter(".");
    EXPECT_EQ(calls,
              QStringList({"One.stop locked", "Two.start locked", "Two.name locked", "Two.updatePending locked",
                           "Two.update locked", "Two.handleKeyEvent locked", "Two.stop locked", "Two.start locked"}));
    EXPECT_TRUE(manager.appLock().tryLock()) << "a call has left the lock behind";
    manager.appLock().unlock();
}

TEST_F(AppManagerTest, TheLockIsFreeWhileNamesAreAskedFor)
{
    loadTwo();
    TestApps::setProbe(noteWithLock);
    manager.startAppIndex("Two");
    EXPECT_EQ(TestApps::log(), QStringList({"One.name free", "Two.name free"}));
}

TEST_F(AppManagerTest, TheStartAppIsTheFirstWithTheSavedName)
{
    loadTwo();
    EXPECT_EQ(manager.startAppIndex("Two"), 1);
    EXPECT_EQ(manager.startAppIndex("One"), 0);
}

TEST_F(AppManagerTest, TheSearchForTheStartAppEndsAtTheFirstMatch)
{
    loadTwo();
    manager.startAppIndex("One");
    EXPECT_EQ(TestApps::log(), QStringList("One.name"));
}

TEST_F(AppManagerTest, AnUnknownSavedNameFallsBackToTheFirstApp)
{
    loadTwo();
    EXPECT_EQ(manager.startAppIndex("Gone"), 0);
    EXPECT_EQ(manager.startAppIndex(""), 0);
    EXPECT_EQ(manager.startAppIndex("two"), 0) << "names are compared exactly";
}

TEST_F(AppManagerTest, PollingUpdatesOnlyWhenSomethingIsPending)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::log().clear();
    manager.pollCurrentApp();
    EXPECT_EQ(TestApps::log(), QStringList({"One.updatePending"}));
    TestApps::set("pending", true);
    TestApps::log().clear();
    manager.pollCurrentApp();
    EXPECT_EQ(TestApps::log(), QStringList({"One.updatePending", "One.update"}));
}

TEST_F(AppManagerTest, OnlyKeyPressesAreOffered)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::log().clear();
    TestApps::set("consumesKeys", true);
    QKeyEvent press = keyPress();
    EXPECT_TRUE(manager.offerEvent(&press));
    EXPECT_EQ(TestApps::log(), QStringList("One.handleKeyEvent"));
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::ShortcutOverride}) {
        QKeyEvent other(type, Qt::Key_A, Qt::NoModifier);
        EXPECT_FALSE(manager.offerEvent(&other));
    }
    QEvent close(QEvent::Close);
    EXPECT_FALSE(manager.offerEvent(&close));
    EXPECT_EQ(TestApps::log().size(), 1);
}

TEST_F(AppManagerTest, AKeyThatTheAppDoesNotUseIsNotConsumed)
{
    loadTwo();
    manager.setCurrentApp(0);
    QKeyEvent press = keyPress();
    EXPECT_FALSE(manager.offerEvent(&press));
}

/// Does what an event loop would do that the app runs inside a call.
void pollAndPressAKey(const char* app, const char* operation)
{
    TestApps::note(app, operation);
    QKeyEvent press = keyPress();
    probedManager->pollCurrentApp();
    EXPECT_FALSE(probedManager->offerEvent(&press));
}

TEST_F(AppManagerTest, AnAppWithAnEventLoopOfItsOwnIsLeftAloneUntilItReturns)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::set("consumesKeys", true);
    TestApps::setProbe(pollAndPressAKey);
    QKeyEvent press = keyPress();
    for (const QString& operation : QStringList{"stop", "start", "update", "handleKeyEvent"}) {
        TestApps::set("pending", true);
        TestApps::log().clear();
        if (operation == "stop")
            manager.stopCurrentApp();
        else if (operation == "start")
            manager.startCurrentApp();
        else if (operation == "update")
            manager.pollCurrentApp();
        else
            EXPECT_TRUE(manager.offerEvent(&press));
        const QStringList polled = {"One.updatePending", "One.update"};
        EXPECT_EQ(TestApps::log(), operation == "update" ? polled : QStringList("One." + operation));
    }
}

TEST_F(AppManagerTest, WithoutACurrentAppNobodyIsCalled)
{
    loadTwo();
    TestApps::set("consumesKeys", true);
    TestApps::set("pending", true);
    QKeyEvent press = keyPress();
    EXPECT_FALSE(manager.offerEvent(&press));
    manager.pollCurrentApp();
    manager.startCurrentApp();
    manager.stopCurrentApp();
    EXPECT_TRUE(TestApps::log().isEmpty());
}

TEST_F(AppManagerTest, AnAppThatWasStoppedIsNotStoppedAgainUntilItIsStarted)
{
    loadTwo();
    manager.setCurrentApp(0);
    TestApps::log().clear();
    manager.stopCurrentApp();
    manager.stopCurrentApp();
    manager.startCurrentApp();
    manager.stopCurrentApp();
    manager.setCurrentApp(1);
    EXPECT_EQ(TestApps::log().filter(QRegularExpression("start|stop")),
              QStringList({"One.stop", "One.start", "One.stop", "Two.start"}));
}

TEST_F(AppManagerTest, OfTwoAppsOfOneNameBothAreListedAndTheFirstIsFoundByIt)
{
    install("Two", "aApp.so");
    install("One", "bApp.so");
    install("One", "cApp.so");
    ASSERT_TRUE(load());
    EXPECT_EQ(names(), QStringList({"Two", "One", "One"}));
    EXPECT_NE(manager.apps().value(1), manager.apps().value(2));
    manager.initializeApps();
    manager.setCurrentApp(2);
    EXPECT_EQ(manager.currentApp(), manager.apps().value(2)) << "by its index the second can be had";
    EXPECT_EQ(AppSettings::instance().currentApp, "One");
    EXPECT_EQ(manager.startAppIndex(AppSettings::instance().currentApp), 1) << "and the next run starts the first";
}

/// The file that an app's code is in.
QString fileOf(const AppInterface* app)
{
    Dl_info info{};
    dladdr(*reinterpret_cast<const void* const*>(app), &info);
    return QFileInfo(QString::fromUtf8(info.dli_fname)).fileName();
}

int openDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::System | QDir::NoDotAndDotDot).size();
}

TEST_F(AppManagerTest, AcceptsTwoHundredAppsInOrderAndKeepsNoFileOpen)
{
    constexpr int count = 200;
    QStringList files;
    for (int i = 0; i < count; ++i) {
        files.append(QString("%1App.so").arg(i, 3, 10, QChar('0')));
        install("One", files.last());
    }
    const int descriptors = openDescriptors();
    ASSERT_TRUE(load());
    EXPECT_EQ(openDescriptors(), descriptors);
    ASSERT_EQ(manager.apps().size(), count);
    EXPECT_EQ(manager.appInfos().size(), count);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(fileOf(manager.apps().value(i)), files.at(i));
    manager.initializeApps();
    EXPECT_EQ(TestApps::logged("initialize").size(), count);
    manager.setCurrentApp(count - 1);
    EXPECT_EQ(manager.currentApp(), manager.apps().last());
}

TEST_F(AppManagerTest, AppsStayLoadedAfterTheRegistryIsGone)
{
    install("One", "OneApp.so");
    AppInterface* app = nullptr;
    {
        Manager shortLived;
        host = std::make_unique<Host>();
        shortLived.setHost(host.get());
        ASSERT_TRUE(shortLived.loadAppsFrom(folder()));
        app = shortLived.apps().value(0);
    }
    EXPECT_EQ(app->name(), "One");
    EXPECT_TRUE(TestApps::logged("destroyed").isEmpty());
}

TEST_F(AppManagerTest, AnAppBuiltApartIsCalledBySlot)
{
    qApp->setProperty("slots", QStringList());
    install("BySlot", "BySlotApp.so");
    ASSERT_TRUE(load());
    EXPECT_EQ(qApp->property("slots").toStringList(), QStringList({"1", "2", "3", "4", "5"}));
    const AppInfo& info = manager.appInfos().first();
    EXPECT_EQ(info.name, "BySlot");
    EXPECT_EQ(info.version, "slot 3");
    EXPECT_EQ(info.description, "slot 4");

    qApp->setProperty("slots", QStringList());
    AppInterface* const app = manager.apps().first();
    QKeyEvent press = keyPress();
    app->reserved();
    app->start();
    app->stop();
    EXPECT_TRUE(app->updatePending());
    app->update();
    EXPECT_TRUE(app->handleKeyEvent(&press));
    EXPECT_EQ(app->createSettingsWidget(nullptr), nullptr);
    app->initialize(nullptr);
    EXPECT_EQ(qApp->property("slots").toStringList(), QStringList({"6", "7", "8", "9", "10", "11", "12", "0"}));
}

} // namespace
