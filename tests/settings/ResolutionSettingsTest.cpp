// SPDX-License-Identifier: Apache-2.0
// The editor of the capture mode, driven with keys and mouse.

#include "TestModes.h"

#include <settings/ResolutionSettings.h>
#include <settings/ResolutionTable.h>
#include <settings/ResolutionVisualization.h>

#include <gtest/gtest.h>

#include <QtGroupBoxPropertyBrowser>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

class ResolutionSettingsTest : public testing::Test
{
protected:
    void show(const VYRResolutionInfo& mode)
    {
        editor = std::make_unique<ResolutionSettings>(mode, table);
        editor->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(editor.get()));
        box = editor->findChild<QGroupBox*>();
        ASSERT_NE(box, nullptr);
        const QList<QSpinBox*> sizes = box->findChildren<QSpinBox*>();
        ASSERT_EQ(sizes.size(), 2);
        width = sizes.at(0);
        height = sizes.at(1);
        for (QSpinBox* spinBox : editor->findChildren<QSpinBox*>())
            if (!box->isAncestorOf(spinBox))
                rate = spinBox;
        ASSERT_NE(rate, nullptr);
        slider = editor->findChild<QSlider*>();
        binning = editor->findChild<QComboBox*>();
        picture = editor->findChild<ResolutionVisualization*>();
        ASSERT_TRUE(slider && binning && picture);
    }

    void type(QSpinBox* spinBox, const QString& number)
    {
        spinBox->selectAll();
        QTest::keyClicks(spinBox, number);
        QTest::keyClick(spinBox, Qt::Key_Return);
    }

    ResolutionTable table{testModes()};
    std::unique_ptr<ResolutionSettings> editor;
    QGroupBox* box = nullptr;
    QSpinBox* width = nullptr;
    QSpinBox* height = nullptr;
    QSpinBox* rate = nullptr;
    QSlider* slider = nullptr;
    QComboBox* binning = nullptr;
    ResolutionVisualization* picture = nullptr;
};

// --- what it shows -----------------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, StartsUnmodifiedWithTheGivenMode)
{
    show(mode640x480());
    EXPECT_FALSE(editor->isModified());
    EXPECT_EQ(editor->resolution(), mode640x480());
    EXPECT_EQ(width->value(), 640);
    EXPECT_EQ(width->minimum(), 320);
    EXPECT_EQ(width->maximum(), 752);
    EXPECT_EQ(width->singleStep(), 4);
    EXPECT_EQ(height->value(), 480);
    EXPECT_EQ(height->minimum(), 240);
    EXPECT_EQ(height->maximum(), 480);
    EXPECT_EQ(height->singleStep(), 4);
    EXPECT_EQ(rate->value(), 30);
    EXPECT_EQ(slider->value(), 30);
    EXPECT_EQ(picture->cameraResolution(), mode640x480());
    EXPECT_EQ(picture->sensorBinning(), 0);
    EXPECT_TRUE(picture->sensorGrayscale());
    EXPECT_EQ(picture->sensorResolution(), QSize(752, 480));
    EXPECT_EQ(picture->minimumSize(), QSize(320, 240));
}

TEST_F(ResolutionSettingsTest, BinningsStandInTheOrderOfTheirNames)
{
    show(testModes().at(6));
    QStringList names;
    for (int i = 0; i < binning->count(); ++i)
        names << binning->itemText(i);
    EXPECT_EQ(names.join(' '), QStringLiteral("1x1 1x2 1x4 2x1 2x2 2x4 4x1 4x2 4x4"));
    EXPECT_EQ(binning->currentText(), QStringLiteral("2x2"));
    EXPECT_EQ(picture->sensorBinning(), 5);
}

TEST_F(ResolutionSettingsTest, AreasStandFromTopToBottom)
{
    show(mode640x480());
    const auto top = [this](const QWidget* widget) { return widget->mapTo(editor.get(), QPoint(0, 0)).y(); };
    EXPECT_EQ(box->title(), QStringLiteral("Resolution"));
    EXPECT_LT(top(box), top(picture));
    EXPECT_LT(top(binning), top(picture));
    EXPECT_LT(top(picture), top(rate));
    EXPECT_LT(top(picture), top(slider));
    QStringList texts;
    for (const QLabel* label : editor->findChildren<QLabel*>())
        if (label->isVisible())
            texts << label->text();
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts.join(' '), QStringLiteral("Binning Framerate Height Width"));
}

TEST_F(ResolutionSettingsTest, EveryPropertyHasABrowserOfItsOwnAndOneIsPadded)
{
    show(mode640x480());
    const auto browsers = editor->findChildren<QtGroupBoxPropertyBrowser*>();
    EXPECT_EQ(browsers.size(), 4);
    EXPECT_EQ(std::count_if(browsers.begin(), browsers.end(),
                            [](const QWidget* browser) { return browser->styleSheet() == "padding-top:10px;"; }),
              1);
    const QLayout* row = rate->parentWidget()->parentWidget()->layout();
    EXPECT_EQ(row->contentsMargins(), QMargins(0, 0, 0, 0));
    EXPECT_EQ(row->spacing(), 0);
}

TEST_F(ResolutionSettingsTest, FrameRatesAreShownTruncated)
{
    table = ResolutionTable({{640, 480, 0, 29.9F, 0.5F, 60.7F}});
    show({640, 480, 0, 29.9F, 0.5F, 60.7F});
    EXPECT_EQ(rate->value(), 29);
    EXPECT_EQ(rate->minimum(), 0);
    EXPECT_EQ(rate->maximum(), 60);
    EXPECT_EQ(slider->value(), 29);
    EXPECT_EQ(slider->minimum(), 0);
    EXPECT_EQ(slider->maximum(), 60);
    EXPECT_FLOAT_EQ(editor->resolution().fps, 29.9F);
    EXPECT_FALSE(editor->isModified());
}

// --- width and height --------------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, StepLandsOnTheNextSupportedWidth)
{
    show(mode640x480());
    QTest::keyClick(width, Qt::Key_Up);
    EXPECT_EQ(width->value(), 752);
    EXPECT_EQ(editor->resolution(), mode752x480());
    EXPECT_EQ(picture->cameraResolution(), mode752x480());
    EXPECT_TRUE(editor->isModified());
    QTest::keyClick(width, Qt::Key_Down);
    EXPECT_EQ(width->value(), 640);
    QTest::keyClick(width, Qt::Key_Down);
    EXPECT_EQ(width->value(), 320);
    EXPECT_EQ(height->value(), 480);
}

TEST_F(ResolutionSettingsTest, StepLandsOnTheNextSupportedHeight)
{
    show(mode640x480());
    QTest::keyClick(height, Qt::Key_Down);
    EXPECT_EQ(height->value(), 360);
    EXPECT_EQ(width->value(), 640);
    EXPECT_EQ(editor->resolution().height, 360);
    QTest::keyClick(height, Qt::Key_Up);
    EXPECT_EQ(height->value(), 480);
    EXPECT_EQ(editor->resolution(), mode640x480());
}

TEST_F(ResolutionSettingsTest, TypedWidthLandsOnTheNextSupportedOne)
{
    show(mode640x480());
    type(width, QStringLiteral("700"));
    EXPECT_EQ(width->value(), 752);
    type(width, QStringLiteral("641"));
    EXPECT_EQ(width->value(), 640);
    type(width, QStringLiteral("640"));
    EXPECT_EQ(editor->resolution(), mode640x480());
}

TEST_F(ResolutionSettingsTest, StepPastTheWidestOfTheHeightRestoresItAndStillModifies)
{
    show(testModes().at(2)); // 640 x 360, where other heights reach 752
    QTest::keyClick(width, Qt::Key_Up);
    EXPECT_EQ(width->value(), 640);
    EXPECT_EQ(width->text(), QStringLiteral("640"));
    EXPECT_EQ(editor->resolution(), testModes().at(2));
    EXPECT_TRUE(editor->isModified());
}

TEST_F(ResolutionSettingsTest, SizeEditKeepsTheFrameRateOfTheUser)
{
    show(mode640x480());
    type(rate, QStringLiteral("55"));
    QTest::keyClick(width, Qt::Key_Up);
    EXPECT_EQ(editor->resolution().width, 752);
    EXPECT_FLOAT_EQ(editor->resolution().fps, 55.0F);
    EXPECT_EQ(rate->value(), 55);
}

// The camera would not start at a rate that the mode does not have.
TEST_F(ResolutionSettingsTest, SizeEditBringsTheFrameRateIntoTheLimitsOfTheNewMode)
{
    show(testModes().at(4)); // 320 x 240 at up to 100
    type(rate, QStringLiteral("90"));
    QTest::keyClick(height, Qt::Key_Up);
    EXPECT_EQ(editor->resolution().height, 480);
    EXPECT_FLOAT_EQ(editor->resolution().fps, 60.0F);
    EXPECT_EQ(rate->value(), 60);
    EXPECT_EQ(slider->maximum(), 60);
}

// --- frame rate --------------------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, FrameRateAloneModifiesWithoutTouchingThePicture)
{
    show(mode640x480());
    QSignalSpy spy(picture, &ResolutionVisualization::CameraResolutionChanged);
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_TRUE(editor->isModified());
    EXPECT_FLOAT_EQ(editor->resolution().fps, 31.0F);
    EXPECT_EQ(rate->value(), 31);
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(picture->cameraResolution(), mode640x480());
}

TEST_F(ResolutionSettingsTest, FrameRateSpinBoxMovesTheSlider)
{
    show(mode640x480());
    QTest::keyClick(rate, Qt::Key_Down);
    EXPECT_EQ(slider->value(), 29);
    EXPECT_FLOAT_EQ(editor->resolution().fps, 29.0F);
}

TEST_F(ResolutionSettingsTest, FrameRateBelowTheLeastOfTheModeIsItsLeast)
{
    show(mode640x480());
    type(rate, QStringLiteral("0"));
    EXPECT_EQ(rate->value(), 0);
    EXPECT_FLOAT_EQ(editor->resolution().fps, 0.5F);
}

// --- binning -----------------------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, ChosenBinningTakesTheNearestModeOfIt)
{
    show(mode752x480());
    QTest::keyClicks(binning, QStringLiteral("2x2"));
    EXPECT_EQ(binning->currentText(), QStringLiteral("2x2"));
    EXPECT_EQ(editor->resolution(), testModes().at(5));
    EXPECT_EQ(width->value(), 376);
    EXPECT_EQ(width->minimum(), 320);
    EXPECT_EQ(width->maximum(), 376);
    EXPECT_EQ(height->value(), 240);
    EXPECT_EQ(rate->maximum(), 120);
    EXPECT_EQ(picture->sensorBinning(), 5);
    EXPECT_TRUE(editor->isModified());
    QTest::keyClick(binning, Qt::Key_Home);
    EXPECT_EQ(editor->resolution(), mode752x480());
}

TEST_F(ResolutionSettingsTest, BinningWithoutModesRestoresTheOneBefore)
{
    show(mode752x480());
    QTest::keyClick(binning, Qt::Key_Down); // 1x2, of which there is no mode
    EXPECT_EQ(binning->currentText(), QStringLiteral("1x1"));
    EXPECT_EQ(editor->resolution(), mode752x480());
    EXPECT_EQ(picture->sensorBinning(), 0);
    EXPECT_EQ(width->maximum(), 752);
    EXPECT_TRUE(editor->isModified());
}

TEST_F(ResolutionSettingsTest, BinningWithoutModesKeepsAModeThatIsNotInTheTable)
{
    const VYRResolutionInfo odd{700, 400, 0, 25.0F, 0.5F, 60.0F};
    show(odd);
    QTest::keyClick(binning, Qt::Key_Down); // 1x2, of which there is no mode
    EXPECT_EQ(binning->currentText(), QStringLiteral("1x1"));
    EXPECT_EQ(editor->resolution(), odd);
    EXPECT_EQ(picture->cameraResolution(), odd);
    EXPECT_EQ(picture->sensorBinning(), 0);
    EXPECT_TRUE(editor->isModified());
}

TEST_F(ResolutionSettingsTest, BinningWithoutModesRestoresWhatWasShownForAnUnknownOne)
{
    const VYRResolutionInfo odd{300, 200, 3, 25.0F, 1.0F, 60.0F};
    show(odd);
    const QString shown = binning->currentText();
    QTest::keyClicks(binning, QStringLiteral("4x1"));
    EXPECT_EQ(binning->currentText(), shown);
    EXPECT_EQ(editor->resolution(), odd);
    EXPECT_EQ(picture->sensorBinning(), 3);

    QTest::keyClick(binning, Qt::Key_End); // 4x4
    QTest::keyClick(binning, Qt::Key_Up);  // 4x2, of which there is no mode
    EXPECT_EQ(binning->currentText(), QStringLiteral("4x4"));
    EXPECT_EQ(editor->resolution(), testModes().at(7));
}

TEST_F(ResolutionSettingsTest, UnknownBinningLeavesThePropertiesUntouchedAndSizeEditsDoNothing)
{
    const VYRResolutionInfo odd{300, 200, 3, 25.0F, 1.0F, 60.0F};
    show(odd);
    EXPECT_EQ(width->minimum(), 0);
    EXPECT_EQ(width->maximum(), 752);
    EXPECT_EQ(height->maximum(), 480);
    EXPECT_EQ(width->value(), 0);
    EXPECT_FALSE(editor->isModified());

    QTest::keyClick(width, Qt::Key_Up);
    QTest::keyClick(height, Qt::Key_Up);
    EXPECT_EQ(editor->resolution(), odd);
    EXPECT_EQ(width->value(), 4);
    EXPECT_EQ(height->value(), 4);
    EXPECT_TRUE(editor->isModified());

    QTest::keyClicks(binning, QStringLiteral("2x2"));
    EXPECT_EQ(editor->resolution().binning, 5);
}

// --- the picture -------------------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, DragInThePictureMovesTheSpinBoxes)
{
    show(mode640x480());
    const int edge = picture->width() * (752 + 640) / (2 * 752) - 1;
    const int middle = picture->height() / 2;
    QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, {edge, middle});
    moveMouse(picture, {edge - picture->width() / 4, middle});
    QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, {edge - picture->width() / 4, middle});

    EXPECT_EQ(editor->resolution(), testModes().at(3)); // 320 x 480
    EXPECT_EQ(width->value(), 320);
    EXPECT_EQ(height->value(), 480);
    EXPECT_TRUE(editor->isModified());
}

// The editor shows whole frames per second; showing them must not be taken for an edit.
TEST_F(ResolutionSettingsTest, CommittedModeKeepsItsFractionOfAFrame)
{
    const VYRResolutionInfo broken{320, 240, 5, 29.9F, 0.5F, 60.7F};
    table = ResolutionTable({mode752x480(), broken});
    show(mode752x480());
    QTest::keyClicks(binning, QStringLiteral("2x2"));
    EXPECT_EQ(rate->value(), 29);
    EXPECT_EQ(editor->resolution(), broken);
}

TEST_F(ResolutionSettingsTest, SameModeTwiceIsHarmless)
{
    show(mode640x480());
    editor->setResolutionFromGui(mode752x480());
    editor->setResolutionFromGui(mode752x480());
    EXPECT_EQ(editor->resolution(), mode752x480());
    EXPECT_EQ(width->value(), 752);
}

// --- odd tables and modes ----------------------------------------------------------------------------------

TEST_F(ResolutionSettingsTest, EmptyTableKeepsTheMode)
{
    table = ResolutionTable({});
    show(mode640x480());
    EXPECT_EQ(width->value(), 640);
    QTest::keyClick(width, Qt::Key_Up);
    QTest::keyClick(height, Qt::Key_Down);
    EXPECT_EQ(width->value(), 640);
    EXPECT_EQ(height->value(), 480);
    QTest::keyClicks(binning, QStringLiteral("4x4"));
    EXPECT_EQ(binning->currentText(), QStringLiteral("1x1"));
    EXPECT_EQ(editor->resolution(), mode640x480());
}

TEST_F(ResolutionSettingsTest, TableOf32768ModesIsStepped)
{
    std::vector<VYRResolutionInfo> modes(32767, {4, 240, 0, 30.0F, 1.0F, 60.0F});
    modes.push_back({752, 240, 0, 30.0F, 1.0F, 60.0F});
    table = ResolutionTable(modes);
    show(modes.front());
    QTest::keyClick(width, Qt::Key_Up);
    EXPECT_EQ(width->value(), 752);
    QTest::keyClick(width, Qt::Key_Down);
    EXPECT_EQ(width->value(), 4);
}

TEST_F(ResolutionSettingsTest, ModeOutsideItsOwnLimitsIsShownWithinAndKept)
{
    const VYRResolutionInfo odd{1000, 100, 0, 500.0F, 60.0F, 1.0F};
    show(odd);
    EXPECT_EQ(width->value(), 752);
    EXPECT_EQ(height->value(), 240);
    EXPECT_EQ(rate->minimum(), 1);
    EXPECT_EQ(rate->maximum(), 60);
    EXPECT_EQ(rate->value(), 60);
    EXPECT_EQ(editor->resolution(), odd);
    EXPECT_FALSE(editor->isModified());
    QTest::keyClick(width, Qt::Key_Down); // there is no mode of its height
    EXPECT_EQ(editor->resolution(), odd);
}

TEST_F(ResolutionSettingsTest, FrameRatesThatAreNoNumbersAreHarmless)
{
    show({640, 480, 0, NAN, -INFINITY, INFINITY});
    EXPECT_EQ(rate->value(), 0);
    QTest::keyClick(slider, Qt::Key_Right);
    QTest::keyClick(width, Qt::Key_Up);
    EXPECT_EQ(editor->resolution().width, 752);
}

TEST_F(ResolutionSettingsTest, LargerCameraHasALargerPicture)
{
    table = ResolutionTable({{1280, 960, 0, 30.0F, 1.0F, 60.0F}});
    show({1280, 960, 0, 30.0F, 1.0F, 60.0F});
    EXPECT_EQ(picture->sensorResolution(), QSize(1280, 960));
}

} // namespace
