// SPDX-License-Identifier: Apache-2.0
// Stereo View for somebody who speaks German.

#include "StereoViewFixture.h"

#include <tests/support/DefaultLeakSuppressions.h>

#include <FakeVYR.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>

namespace {

class StereoViewGerman : public StereoViewFixture
{
protected:
    void SetUp() override
    {
        FakeVYR::reset();
        load({752, 480, 0, 30.0F, 0.5F, 60.0F});
        if (!QFile::exists(":/translations/StereoViewApp_de.qm"))
            GTEST_SKIP() << "built without Qt's Linguist tools (Debian: qttools5-dev)";
    }

    ~StereoViewGerman() override
    {
        host->stop();
        QApplication::setFont(QFont());
    }

    void startIn(int points)
    {
        QApplication::setFont(QFont("Open Sans", points));
        host->start();
    }
};

TEST_F(StereoViewGerman, ItsNameStaysAndItsDescriptionIsGerman)
{
    EXPECT_EQ(app->name(), "Stereo View") << "what the settings file knows it by";
    EXPECT_EQ(app->description().left(24).toStdString(), "Zeigt beide Bilder der K");
}

TEST_F(StereoViewGerman, ControlsAndMessagesAreGerman)
{
    host->start();
    EXPECT_EQ(control<QCheckBox>("undistort")->text(), "Ent&zerren");
    EXPECT_EQ(control<QComboBox>("arrangement")->itemText(1), "Übereinander");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !message().isEmpty(); }));
    EXPECT_EQ(message().left(38).toStdString(), "Die Bilder lassen sich nicht anzeigen:");
}

TEST_F(StereoViewGerman, NoLetterThatGoesWithAltIsTakenTwice)
{
    host->start();
    expectALetterOfItsOwnForEach({"&Datei", "&Einstellungen", "&Hilfe"});
}

TEST_F(StereoViewGerman, TextsFitIntoTheNarrowestSideDock)
{
    startIn(9);
    const auto* const panel = static_cast<const QScrollArea*>(host->sideDock()->widget());
    EXPECT_LE(panel->minimumWidth(), 275);
    EXPECT_LE(panel->widget()->minimumSizeHint().height(), 620) << "menu and status bar need the rest";
    QTest::qWait(0);
    for (const QWidget* const widget : panel->widget()->findChildren<QWidget*>()) {
        const bool hasText = qobject_cast<const QLabel*>(widget) != nullptr
                          || qobject_cast<const QAbstractButton*>(widget) != nullptr
                          || qobject_cast<const QGroupBox*>(widget) != nullptr;
        if (hasText && widget->isVisible()) {
            EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LANGUAGE", "de");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
