// SPDX-License-Identifier: Apache-2.0
// The settings record, and the reading and writing of its file, in the folder of this test program.

#include <app/AppSettings.h>

#include <tests/support/BindingPermissions.h>

#include <gtest/gtest.h>
#include <libconfig.h++>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <clocale>
#include <csignal>
#include <cstring>
#include <limits>
#include <vector>

#include <grp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using libconfig::Setting;

QDir settingsFolder()
{
    return QDir(QCoreApplication::applicationDirPath() + "/settings");
}

void writeFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(text), text.size());
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void makeSocket(const QString& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    // The whole path need not fit into a socket's address.
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QFileInfo(path).path()));
    std::strcpy(address.sun_path, "DashboardSettings.cfg");
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(descriptor);
    QDir::setCurrent(here);
}

/// Lets no file grow past `bytes` while it lives: a disk that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        _handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &_before);
        const rlimit limit = {bytes, _before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &_before);
        std::signal(SIGXFSZ, _handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit _before = {};
    void (*_handler)(int) = nullptr;
};

/// The permissions that the process withholds from new files, until the end of the test.
class CreationMask
{
public:
    explicit CreationMask(mode_t mask)
        : _before(::umask(mask))
    {
    }
    ~CreationMask() { ::umask(_before); }

    CreationMask(const CreationMask&) = delete;
    CreationMask& operator=(const CreationMask&) = delete;

private:
    mode_t _before;
};

constexpr uid_t nobody = 65534;
constexpr gid_t users = 100;

/// Makes the process a member of the group users, besides its own, until the end of the test. For root only.
class GroupOfUsers
{
public:
    GroupOfUsers()
        : _before(static_cast<std::size_t>(::getgroups(0, nullptr)))
    {
        ::getgroups(static_cast<int>(_before.size()), _before.data());
        _joined = ::setgroups(1, &users) == 0;
    }
    ~GroupOfUsers() { ::setgroups(_before.size(), _before.data()); }

    GroupOfUsers(const GroupOfUsers&) = delete;
    GroupOfUsers& operator=(const GroupOfUsers&) = delete;

    /// False where even root may not, as in some containers.
    bool joined() const { return _joined; }

private:
    std::vector<gid_t> _before;
    bool _joined = false;
};

class AppSettingsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        removeFolder();
        ASSERT_TRUE(QDir().mkpath(settingsFolder().path()));
        settings() = AppSettings();
    }

    void TearDown() override { removeFolder(); }

    static void removeFolder()
    {
        ::chmod(settingsFolder().path().toUtf8(), 0755);
        QDir(settingsFolder()).removeRecursively();
    }

    static AppSettings& settings() { return AppSettings::instance(); }

    static void setAll()
    {
        settings().useDarkSkin = true;
        settings().currentApp = QString::fromUtf8("Tiefe \"3D\" µ");
        settings().width = 640;
        settings().height = 480;
        settings().binning = 10;
        settings().fps = 59.94F;
    }

    static void expectAll()
    {
        EXPECT_TRUE(settings().useDarkSkin);
        EXPECT_EQ(settings().currentApp, QString::fromUtf8("Tiefe \"3D\" µ"));
        EXPECT_EQ(settings().width, 640);
        EXPECT_EQ(settings().height, 480);
        EXPECT_EQ(settings().binning, 10);
        EXPECT_EQ(settings().fps, 59.94F);
    }

    static void expectDefaults()
    {
        EXPECT_FALSE(settings().useDarkSkin);
        EXPECT_EQ(settings().currentApp, QString());
        EXPECT_EQ(settings().width, 320);
        EXPECT_EQ(settings().height, 240);
        EXPECT_EQ(settings().binning, 5);
        EXPECT_EQ(settings().fps, 30.0F);
    }

    /// `text` is no settings file: nothing of it is taken over, and a complete file takes its place.
    static void expectReplacedByTheDefaults(const QByteArray& text)
    {
        writeFile(settingsFilePath(), text);
        loadSettings();
        expectDefaults();
        libconfig::Config config;
        ASSERT_NO_THROW(parse(config));
        EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Width")), 320);
        EXPECT_TRUE(config.exists("AppConfig.Application.CurrentApp"));
    }

    /// What lies in the folder: nothing but what a test expects may be left there.
    static QStringList entries()
    {
        return settingsFolder().entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    static struct stat statusOfTheFile()
    {
        struct stat status = {};
        EXPECT_EQ(::stat(settingsFilePath().toUtf8(), &status), 0);
        return status;
    }

    static mode_t permissionsOfTheFile() { return statusOfTheFile().st_mode & 0777; }

    static void parse(libconfig::Config& config) { config.readFile(settingsFilePath().toUtf8().constData()); }
};

const char completeFile[] = "AppConfig : {\n"
                            "  Application : { UseDarkSkin = true; CurrentApp = \"Depth\"; };\n"
                            "  Vyr : { Width = 640; Height = 480; Binning = 10; Fps = 15.5; };\n"
                            "};\n";

TEST_F(AppSettingsTest, TheRecordStartsWithTheDefaults)
{
    settings() = AppSettings();
    expectDefaults();
}

TEST_F(AppSettingsTest, EveryUserGetsTheSameRecord)
{
    EXPECT_EQ(&AppSettings::instance(), &AppSettings::instance());
}

TEST_F(AppSettingsTest, TheFileLiesInTheSettingsFolderBesideTheExecutable)
{
    EXPECT_EQ(settingsFilePath(), QCoreApplication::applicationDirPath() + "/settings/DashboardSettings.cfg");
}

TEST_F(AppSettingsTest, ReadsEveryFieldOfACompleteFileAndLeavesTheFileAlone)
{
    writeFile(settingsFilePath(), completeFile);
    loadSettings();
    EXPECT_TRUE(settings().useDarkSkin);
    EXPECT_EQ(settings().currentApp, "Depth");
    EXPECT_EQ(settings().width, 640);
    EXPECT_EQ(settings().height, 480);
    EXPECT_EQ(settings().binning, 10);
    EXPECT_EQ(settings().fps, 15.5F);
    EXPECT_EQ(readFile(settingsFilePath()), completeFile);
}

TEST_F(AppSettingsTest, WhatIsSavedIsReadBack)
{
    setAll();
    saveSettings();
    settings() = AppSettings();
    loadSettings();
    expectAll();
}

TEST_F(AppSettingsTest, NumbersKeepTheirPointInLanguagesThatWriteAComma)
{
    const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
    qputenv("LOCPATH", LOCALES);
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "no German locale on this machine";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    setAll();
    saveSettings();
    settings() = AppSettings();
    loadSettings();
    std::setlocale(LC_NUMERIC, before);
    expectAll();
}

TEST_F(AppSettingsTest, NoFileAndNoFolderKeepsTheDefaultsAndCreatesNothing)
{
    removeFolder();
    loadSettings();
    expectDefaults();
    EXPECT_FALSE(QFileInfo::exists(settingsFolder().path()));
}

TEST_F(AppSettingsTest, NoFileButAFolderWritesExactlyTheSchemaWithTheDefaults)
{
    loadSettings();
    expectDefaults();
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));

    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    const Setting& root = config.getRoot();
    ASSERT_EQ(root.getLength(), 1);
    const Setting& top = root[0];
    EXPECT_STREQ(top.getName(), "AppConfig");
    ASSERT_TRUE(top.isGroup());
    ASSERT_EQ(top.getLength(), 2);

    const Setting& application = top[0];
    EXPECT_STREQ(application.getName(), "Application");
    ASSERT_EQ(application.getLength(), 2);
    EXPECT_STREQ(application[0].getName(), "UseDarkSkin");
    ASSERT_EQ(application[0].getType(), Setting::TypeBoolean);
    EXPECT_FALSE(static_cast<bool>(application[0]));
    EXPECT_STREQ(application[1].getName(), "CurrentApp");
    ASSERT_EQ(application[1].getType(), Setting::TypeString);
    EXPECT_STREQ(application[1].c_str(), "");

    const Setting& camera = top[1];
    EXPECT_STREQ(camera.getName(), "Vyr");
    ASSERT_EQ(camera.getLength(), 4);
    const char* const names[] = {"Width", "Height", "Binning"};
    const int values[] = {320, 240, 5};
    for (int i = 0; i < 3; ++i) {
        EXPECT_STREQ(camera[i].getName(), names[i]);
        ASSERT_EQ(camera[i].getType(), Setting::TypeInt);
        EXPECT_EQ(static_cast<int>(camera[i]), values[i]);
    }
    EXPECT_STREQ(camera[3].getName(), "Fps");
    ASSERT_EQ(camera[3].getType(), Setting::TypeFloat);
    EXPECT_EQ(static_cast<double>(camera[3]), 30.0);
}

TEST_F(AppSettingsTest, AFloatForTheHeightStopsThereAndRewritesTheFile)
{
    writeFile(settingsFilePath(), "AppConfig : {\n"
                                  "  Application : { UseDarkSkin = true; CurrentApp = \"Depth\"; };\n"
                                  "  Vyr : { Width = 640; Height = 240.0; Binning = 10; Fps = 15.5; };\n"
                                  "};\n");
    loadSettings();
    EXPECT_TRUE(settings().useDarkSkin);
    EXPECT_EQ(settings().currentApp, "Depth");
    EXPECT_EQ(settings().width, 640);
    EXPECT_EQ(settings().height, 240);
    EXPECT_EQ(settings().binning, 5);
    EXPECT_EQ(settings().fps, 30.0F);

    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    const Setting& camera = config.lookup("AppConfig.Vyr");
    EXPECT_EQ(static_cast<int>(camera["Width"]), 640);
    ASSERT_EQ(camera["Height"].getType(), Setting::TypeInt);
    EXPECT_EQ(static_cast<int>(camera["Height"]), 240);
    EXPECT_EQ(static_cast<int>(camera["Binning"]), 5);
    EXPECT_EQ(static_cast<double>(camera["Fps"]), 30.0);
    EXPECT_TRUE(static_cast<bool>(config.lookup("AppConfig.Application.UseDarkSkin")));
    EXPECT_STREQ(config.lookup("AppConfig.Application.CurrentApp").c_str(), "Depth");
}

TEST_F(AppSettingsTest, AnIntegerForTheSkinKeepsEverythingAtTheDefaults)
{
    writeFile(settingsFilePath(), "AppConfig : {\n"
                                  "  Application : { UseDarkSkin = 1; CurrentApp = \"Depth\"; };\n"
                                  "  Vyr : { Width = 640; Height = 480; Binning = 10; Fps = 15.5; };\n"
                                  "};\n");
    loadSettings();
    expectDefaults();
}

TEST_F(AppSettingsTest, AnIntegerForTheFrameRateKeepsThreeCameraFields)
{
    writeFile(settingsFilePath(), "AppConfig : { Vyr : { Width = 1; Height = 2; Binning = 4; Fps = 60; }; };");
    loadSettings();
    EXPECT_EQ(settings().width, 1);
    EXPECT_EQ(settings().height, 2);
    EXPECT_EQ(settings().binning, 4);
    EXPECT_EQ(settings().fps, 30.0F);
}

TEST_F(AppSettingsTest, AMissingKeyStopsThereAndRewritesTheFile)
{
    writeFile(settingsFilePath(), "AppConfig : {\n"
                                  "  Application : { UseDarkSkin = true; };\n"
                                  "  Vyr : { Width = 640; Height = 480; Binning = 10; Fps = 15.5; };\n"
                                  "};\n");
    loadSettings();
    EXPECT_TRUE(settings().useDarkSkin);
    EXPECT_EQ(settings().width, 320);
    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    EXPECT_STREQ(config.lookup("AppConfig.Application.CurrentApp").c_str(), "");
    EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Width")), 320);
}

TEST_F(AppSettingsTest, AFileWithoutTheCameraGroupIsNoFailureAndTheNextSaveAddsIt)
{
    const QByteArray text = "AppConfig : { Application : { UseDarkSkin = true; CurrentApp = \"Depth\"; }; };\n";
    writeFile(settingsFilePath(), text);
    loadSettings();
    EXPECT_TRUE(settings().useDarkSkin);
    EXPECT_EQ(settings().currentApp, "Depth");
    EXPECT_EQ(settings().width, 320);
    EXPECT_EQ(readFile(settingsFilePath()), text);

    saveSettings();
    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Width")), 320);
    EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Height")), 240);
    EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Binning")), 5);
    EXPECT_EQ(static_cast<double>(config.lookup("AppConfig.Vyr.Fps")), 30.0);
}

TEST_F(AppSettingsTest, AFileWithoutTheApplicationGroupIsNoFailure)
{
    const QByteArray text = "AppConfig : { Vyr : { Width = 640; Height = 480; Binning = 10; Fps = 15.5; }; };\n";
    writeFile(settingsFilePath(), text);
    loadSettings();
    EXPECT_FALSE(settings().useDarkSkin);
    EXPECT_EQ(settings().width, 640);
    EXPECT_EQ(settings().fps, 15.5F);
    EXPECT_EQ(readFile(settingsFilePath()), text);
}

TEST_F(AppSettingsTest, AFileWithoutTheTopGroupIsRewritten)
{
    writeFile(settingsFilePath(), "Something = 1;\n");
    loadSettings();
    expectDefaults();
    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    EXPECT_TRUE(config.exists("AppConfig.Vyr.Fps"));
    EXPECT_FALSE(config.exists("Something"));
}

TEST_F(AppSettingsTest, ASyntaxErrorIsReplacedByTheDefaults)
{
    writeFile(settingsFilePath(), "AppConfig : { Application : { UseDarkSkin = true; CurrentApp = ");
    loadSettings();
    expectDefaults();
    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    EXPECT_FALSE(static_cast<bool>(config.lookup("AppConfig.Application.UseDarkSkin")));
}

TEST_F(AppSettingsTest, BinaryJunkIsReplacedByTheDefaults)
{
    QByteArray junk(1 << 20, '\0');
    for (int i = 0; i < junk.size(); ++i)
        junk[i] = static_cast<char>(static_cast<unsigned>(i) * 7919U >> 3);
    writeFile(settingsFilePath(), junk);
    loadSettings();
    expectDefaults();
    libconfig::Config config;
    EXPECT_NO_THROW(parse(config));
}

TEST_F(AppSettingsTest, AnEmptyFileIsReplacedByTheDefaults)
{
    writeFile(settingsFilePath(), QByteArray());
    loadSettings();
    expectDefaults();
    EXPECT_GT(QFileInfo(settingsFilePath()).size(), 0);
}

TEST_F(AppSettingsTest, ALineThatIncludesAFolderIsASyntaxError)
{
    expectReplacedByTheDefaults(QByteArray(completeFile) + "@include \"/\"\n");
}

TEST_F(AppSettingsTest, ALineThatIncludesAPipeIsASyntaxError)
{
    const QString pipe = settingsFolder().filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toUtf8(), 0600), 0);
    expectReplacedByTheDefaults(" \t@include \"" + pipe.toUtf8() + "\"\n");
}

TEST_F(AppSettingsTest, ALineThatIncludesTheFileItselfIsASyntaxError)
{
    expectReplacedByTheDefaults(QByteArray(completeFile) + "@include \"" + settingsFilePath().toUtf8() + "\"\n");
}

TEST_F(AppSettingsTest, ALineThatIncludesAnotherFileIsASyntaxError)
{
    const QString other = settingsFolder().filePath("other.cfg");
    writeFile(other, completeFile);
    expectReplacedByTheDefaults("@include \"" + other.toUtf8() + "\"\n");
    EXPECT_EQ(readFile(other), completeFile);
}

TEST_F(AppSettingsTest, AnAppMayBeNamedLikeAnInclude)
{
    settings().currentApp = "\n@include \"/\"\n";
    saveSettings();
    settings() = AppSettings();
    loadSettings();
    EXPECT_EQ(settings().currentApp, "\n@include \"/\"\n");
}

TEST_F(AppSettingsTest, AZeroByteIsASyntaxError)
{
    expectReplacedByTheDefaults(QByteArray(completeFile) + '\0');
}

TEST_F(AppSettingsTest, SixtyFourKibibytesAreRead)
{
    writeFile(settingsFilePath(), QByteArray(completeFile).leftJustified(64 * 1024, ' '));
    loadSettings();
    EXPECT_EQ(settings().width, 640);
}

TEST_F(AppSettingsTest, AByteMoreIsASyntaxError)
{
    expectReplacedByTheDefaults(QByteArray(completeFile).leftJustified(64 * 1024 + 1, ' '));
}

TEST_F(AppSettingsTest, AFrameRateBeyondAFloatStopsThereAndRewritesTheFile)
{
    for (const char* const fps : {"1e39", "-1e39", "1e999"}) {
        settings() = AppSettings();
        writeFile(settingsFilePath(), QByteArray(completeFile).replace("15.5", fps));
        loadSettings();
        EXPECT_EQ(settings().binning, 10);
        EXPECT_EQ(settings().fps, 30.0F);
        libconfig::Config config;
        ASSERT_NO_THROW(parse(config)) << fps;
        EXPECT_EQ(static_cast<double>(config.lookup("AppConfig.Vyr.Fps")), 30.0);
    }
}

TEST_F(AppSettingsTest, AFrameRateThatIsNotFiniteIsNotWritten)
{
    writeFile(settingsFilePath(), completeFile);
    using Limits = std::numeric_limits<float>;
    for (const float fps : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        settings().fps = fps;
        saveSettings();
        EXPECT_EQ(readFile(settingsFilePath()), completeFile);
    }
}

TEST_F(AppSettingsTest, EveryFiniteFrameRateIsReadBack)
{
    using Limits = std::numeric_limits<float>;
    for (const float fps : {0.0F, -0.0F, 0.1F, 1.0F / 3, 1e20F, Limits::max(), Limits::lowest(), Limits::min(),
                            Limits::denorm_min(), Limits::epsilon()}) {
        settings().fps = fps;
        saveSettings();
        settings() = AppSettings();
        loadSettings();
        EXPECT_EQ(settings().fps, fps);
    }
}

TEST_F(AppSettingsTest, AnAppNameThatMakesTheFileTooLongToBeReadIsNotWritten)
{
    settings().currentApp = QString(60 * 1024, 'x');
    saveSettings();
    const QByteArray text = readFile(settingsFilePath());
    EXPECT_GT(text.size(), 60 * 1024);
    settings().currentApp = QString(64 * 1024, 'y');
    saveSettings();
    EXPECT_EQ(readFile(settingsFilePath()), text);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

TEST_F(AppSettingsTest, ExtraKeysAreIgnoredAndGoneAfterTheNextSave)
{
    writeFile(settingsFilePath(), QByteArray(completeFile).replace("Width", "Depth = 3; Width") + "More = [1, 2];\n");
    loadSettings();
    EXPECT_EQ(settings().width, 640);
    EXPECT_EQ(settings().fps, 15.5F);
    saveSettings();
    libconfig::Config config;
    ASSERT_NO_THROW(parse(config));
    EXPECT_FALSE(config.exists("More"));
    EXPECT_FALSE(config.exists("AppConfig.Vyr.Depth"));
    EXPECT_EQ(static_cast<int>(config.lookup("AppConfig.Vyr.Width")), 640);
}

TEST_F(AppSettingsTest, AFolderInPlaceOfTheFileIsLeftAlone)
{
    ASSERT_TRUE(QDir().mkpath(settingsFilePath()));
    loadSettings();
    expectDefaults();
    EXPECT_TRUE(QFileInfo(settingsFilePath()).isDir());
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

TEST_F(AppSettingsTest, ASocketInPlaceOfTheFileIsLeftAlone)
{
    makeSocket(settingsFilePath());
    loadSettings();
    expectDefaults();
    struct stat status = {};
    ASSERT_EQ(::lstat(settingsFilePath().toUtf8(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

TEST_F(AppSettingsTest, APipeWithoutAWriterDoesNotHoldUpTheStart)
{
    ASSERT_EQ(::mkfifo(settingsFilePath().toUtf8(), 0600), 0);
    loadSettings();
    expectDefaults();
    struct stat status = {};
    ASSERT_EQ(::lstat(settingsFilePath().toUtf8(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(AppSettingsTest, ALinkToSomethingElseThanAFileIsLeftAlone)
{
    const QString pipe = settingsFolder().filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toUtf8(), 0600), 0);
    ASSERT_TRUE(QFile::link("pipe", settingsFilePath()));
    setAll();
    loadSettings();
    expectAll();
    EXPECT_EQ(QFileInfo(settingsFilePath()).symLinkTarget(), pipe);
    struct stat status = {};
    ASSERT_EQ(::lstat(pipe.toUtf8(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(AppSettingsTest, ALinkToAFileStaysALinkAndTheFileBehindItIsReplaced)
{
    const QString behind = settingsFolder().filePath("behind.cfg");
    writeFile(behind, completeFile);
    ASSERT_TRUE(QFile::link("behind.cfg", settingsFilePath()));
    loadSettings();
    EXPECT_EQ(settings().width, 640);
    setAll();
    saveSettings();
    EXPECT_TRUE(QFileInfo(settingsFilePath()).isSymLink());
    EXPECT_FALSE(QFileInfo(behind).isSymLink());
    settings() = AppSettings();
    loadSettings();
    expectAll();
    EXPECT_EQ(entries(), QStringList({"behind.cfg", "DashboardSettings.cfg"}));
}

TEST_F(AppSettingsTest, ALinkThatLeadsNowhereIsReplacedByTheFile)
{
    ASSERT_TRUE(QFile::link("nowhere.cfg", settingsFilePath()));
    loadSettings();
    expectDefaults();
    EXPECT_FALSE(QFileInfo(settingsFilePath()).isSymLink());
    EXPECT_TRUE(QFileInfo(settingsFilePath()).isFile());
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
}

TEST_F(AppSettingsTest, ALinkToItselfDoesNotHoldUpTheStart)
{
    ASSERT_TRUE(QFile::link("DashboardSettings.cfg", settingsFilePath()));
    loadSettings();
    expectDefaults();
}

TEST_F(AppSettingsTest, AFullDiskKeepsTheOldFileAndLeavesNothingBehind)
{
    writeFile(settingsFilePath(), completeFile);
    setAll();
    {
        const FileSizeLimit full(10);
        saveSettings();
    }
    EXPECT_EQ(readFile(settingsFilePath()), completeFile);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    expectAll();
}

TEST_F(AppSettingsTest, AnUnwritableFolderIsSilentAndKeepsTheOldFile)
{
    writeFile(settingsFilePath(), completeFile);
    setAll();
    ASSERT_EQ(::chmod(settingsFolder().path().toUtf8(), 0555), 0);
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root may write everywhere";
    saveSettings();
    EXPECT_EQ(readFile(settingsFilePath()), completeFile);
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    expectAll();
}

TEST_F(AppSettingsTest, AFileThatTheUserMayNotWriteIsLeftAlone)
{
    writeFile(settingsFilePath(), completeFile);
    ASSERT_EQ(::chmod(settingsFilePath().toUtf8(), 0444), 0);
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root may write everything";
    setAll();
    saveSettings();
    EXPECT_EQ(readFile(settingsFilePath()), completeFile);
}

TEST_F(AppSettingsTest, AnUnreadableFileKeepsTheDefaults)
{
    writeFile(settingsFilePath(), completeFile);
    ASSERT_EQ(::chmod(settingsFilePath().toUtf8(), 0000), 0);
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root may read everything";
    loadSettings();
    expectDefaults();
}

TEST_F(AppSettingsTest, TheFileKeepsItsPermissions)
{
    writeFile(settingsFilePath(), completeFile);
    ASSERT_EQ(::chmod(settingsFilePath().toUtf8(), 0600), 0);
    saveSettings();
    EXPECT_EQ(permissionsOfTheFile(), 0600U);
}

TEST_F(AppSettingsTest, AFileThatRootSavesStaysItsOwners)
{
    writeFile(settingsFilePath(), completeFile);
    if (::chown(settingsFilePath().toUtf8(), nobody, users) != 0)
        GTEST_SKIP() << "only root may give files away";
    saveSettings();
    EXPECT_EQ(statusOfTheFile().st_uid, nobody);
    EXPECT_EQ(statusOfTheFile().st_gid, users);
}

TEST_F(AppSettingsTest, AFileThatCannotBeGivenBackToItsOwnerStaysItsGroups)
{
    writeFile(settingsFilePath(), completeFile);
    ASSERT_EQ(::chmod(settingsFilePath().toUtf8(), 0664), 0);
    if (::chown(settingsFilePath().toUtf8(), nobody, users) != 0)
        GTEST_SKIP() << "only root may give files away";
    const GroupOfUsers group;
    if (!group.joined())
        GTEST_SKIP() << "groups cannot be changed";
    const BindingPermissions permissions;
    if (!permissions.inForce())
        GTEST_SKIP() << "root may write everything";
    setAll();
    saveSettings();
    settings() = AppSettings();
    loadSettings();
    expectAll();
    EXPECT_EQ(statusOfTheFile().st_uid, ::geteuid());
    EXPECT_EQ(statusOfTheFile().st_gid, users);
    EXPECT_EQ(permissionsOfTheFile(), 0664U);
}

TEST_F(AppSettingsTest, AFileThatOthersMayWriteStaysSoWhateverTheMaskOfWhoSaves)
{
    writeFile(settingsFilePath(), completeFile);
    ASSERT_EQ(::chmod(settingsFilePath().toUtf8(), 0664), 0);
    const CreationMask mask(0077);
    saveSettings();
    EXPECT_EQ(permissionsOfTheFile(), 0664U);
}

TEST_F(AppSettingsTest, ANewFileInAFolderSharedByAGroupMayBeWrittenByTheGroup)
{
    ASSERT_EQ(::chmod(settingsFolder().path().toUtf8(), 02775), 0);
    const CreationMask mask(0022);
    saveSettings();
    EXPECT_EQ(permissionsOfTheFile(), 0664U);
}

TEST_F(AppSettingsTest, ANewFileInAFolderThatIsNotSharedFollowsTheMask)
{
    ASSERT_EQ(::chmod(settingsFolder().path().toUtf8(), 0775), 0);
    const CreationMask mask(0027);
    saveSettings();
    EXPECT_EQ(permissionsOfTheFile(), 0640U);
}

TEST_F(AppSettingsTest, ASaveCutShortByAPowerCutIsTakenUpByTheNext)
{
    writeFile(settingsFilePath() + ".new", "AppConfig : {");
    setAll();
    saveSettings();
    EXPECT_EQ(entries(), QStringList("DashboardSettings.cfg"));
    settings() = AppSettings();
    loadSettings();
    expectAll();
}

TEST_F(AppSettingsTest, AReaderNeverSeesAnUnfinishedFile)
{
    saveSettings();
    QFile reader(settingsFilePath());
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    setAll();
    saveSettings();
    EXPECT_FALSE(reader.readAll().contains("640"));
    EXPECT_TRUE(readFile(settingsFilePath()).contains("640"));
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
