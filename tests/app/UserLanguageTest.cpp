// SPDX-License-Identifier: Apache-2.0
// In which language the window speaks to whom.

#include <app/ApplicationWindow.h>
#include <app/UserLanguage.h>
#include <settings/SettingsDialog.h>
#include <tests/support/DefaultLeakSuppressions.h>

#include <FakeVYR.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLibraryInfo>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QStatusBar>
#include <QTabWidget>
#include <QTranslator>

#include <cstdio>
#include <cstring>

namespace {

constexpr char sayOption[] = "--say";
constexpr int limit = 30'000; // milliseconds for a start on a busy machine

/// What a process says that was started with sayOption: the title of a menu, and how many translations it has loaded.
int say(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    useLanguageOfUser();
    const QByteArray title = QCoreApplication::translate("ApplicationWindow", "&Settings").toUtf8();
    std::printf("%s, %d", title.constData(), static_cast<int>(application.findChildren<QTranslator*>().size()));
    return 0;
}

class UserLanguageTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!QFile::exists(":/translations/VYRDashboard_de.qm"))
            GTEST_SKIP() << "built without Qt's Linguist tools (Debian: qttools5-dev)";
    }

    /// As a process finds itself that has these variables.
    static std::string saidWith(const QString& lang, const QString& language)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"LC_ALL", "LC_MESSAGES"})
            environment.remove(variable);
        environment.insert("LANG", lang);
        environment.insert("LANGUAGE", language);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {sayOption});
        EXPECT_TRUE(process.waitForFinished(limit));
        return process.readAllStandardOutput().toStdString();
    }

    static bool qtHasGerman()
    {
        return QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm");
    }

    static std::string inGerman() { return qtHasGerman() ? "&Einstellungen, 2" : "&Einstellungen, 1"; }
};

const std::string inEnglish = "&Settings, 0"; // NOLINT(cert-err58-cpp)

TEST_F(UserLanguageTest, GermanIsTakenFromTheLocale)
{
    EXPECT_EQ(saidWith("de_DE.UTF-8", ""), inGerman());
    EXPECT_EQ(saidWith("de_AT.UTF-8", ""), inGerman());
    EXPECT_EQ(saidWith("de", ""), inGerman());
}

TEST_F(UserLanguageTest, ForEnglishNothingIsLoaded)
{
    EXPECT_EQ(saidWith("en_GB.UTF-8", ""), inEnglish);
    EXPECT_EQ(saidWith("C", ""), inEnglish);
    EXPECT_EQ(saidWith("C.UTF-8", ""), inEnglish);
    EXPECT_EQ(saidWith("", ""), inEnglish);
    EXPECT_EQ(saidWith("en_GB.UTF-8", "en_GB:de"), inEnglish) << "what comes behind English counts no more";
}

TEST_F(UserLanguageTest, ForALanguageWithoutATranslationNothingIsLoaded)
{
    EXPECT_EQ(saidWith("fr_FR.UTF-8", ""), inEnglish);
    EXPECT_EQ(saidWith("nonsense", "also:nonsense"), inEnglish);
}

TEST_F(UserLanguageTest, TheNextLanguageOfTheUserStandsInForOneWithoutATranslation)
{
    EXPECT_EQ(saidWith("fr_FR.UTF-8", "fr:de"), inGerman());
    EXPECT_EQ(saidWith("fr_FR.UTF-8", "fr:en:de"), inEnglish);
}

/// The window of this process, whose user speaks German.
class GermanWindowTest : public UserLanguageTest
{
protected:
    void SetUp() override
    {
        UserLanguageTest::SetUp();
        FakeVYR::reset();
    }

    static QStringList menuTitles(const ApplicationWindow& window)
    {
        QStringList titles;
        for (const QAction* const action : window.menuBar()->actions())
            titles << action->text();
        return titles;
    }
};

TEST_F(GermanWindowTest, MenusHaveGermanTitlesAndTheirEntriesStay)
{
    FakeVYR::setOpens(true);
    const ApplicationWindow window;
    EXPECT_EQ(menuTitles(window), QStringList({"&Datei", "&Einstellungen", "&Hilfe"}));
    QStringList entries;
    for (const QAction* const menu : window.menuBar()->actions())
        for (const QAction* const action : menu->menu()->actions())
            entries << action->text();
    EXPECT_EQ(entries, QStringList({"Exit", "Camera", "Devices", "About", "Documentation"}));
}

TEST_F(GermanWindowTest, NoCameraIsToldInGerman)
{
    FakeVYR::setOpens(false);
    const ApplicationWindow window;
    QStringList texts;
    for (const QLabel* const label : window.statusBar()->findChildren<QLabel*>())
        texts << label->text();
    EXPECT_TRUE(texts.contains("<font color=#ff0000>Keine VYR-Kamera gefunden</font>"))
        << texts.join('|').toStdString();
}

TEST_F(GermanWindowTest, TheDialogSpeaksGerman)
{
    FakeVYR::setOpens(true);
    ApplicationWindow window;
    SettingsDialog dialog(&window);
    dialog.build("Einstellungen", &window);
    EXPECT_EQ(dialog.tabWidget()->tabText(0), QString("Kamera"));
    EXPECT_EQ(dialog.tabWidget()->tabText(1), QString("Geräte"));
}

TEST_F(GermanWindowTest, ButtonsOfQtSpeakGermanToo)
{
    if (!qtHasGerman())
        GTEST_SKIP() << "Qt's translations are not installed (Debian: qttranslations5-l10n)";
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Abbrechen"));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], sayOption) == 0)
        return say(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LANGUAGE", "de");
    const QApplication application(argc, argv);
    useLanguageOfUser();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
