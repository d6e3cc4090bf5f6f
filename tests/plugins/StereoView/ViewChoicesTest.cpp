// SPDX-License-Identifier: Apache-2.0
// Remembering choices.

#include <ViewChoices.h>

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ViewChoicesStore : public testing::Test
{
protected:
    ViewChoicesStore() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path()); }

    void write(const QString& key, const QVariant& value)
    {
        QSettings(QSettings::IniFormat, QSettings::UserScope, "VYRDashboard", "Apps")
            .setValue("StereoView/" + key, value);
    }

    QTemporaryDir directory;
};

TEST_F(ViewChoicesStore, NothingStoredIsTheDefaults)
{
    EXPECT_TRUE(loadViewChoices() == ViewChoices());
}

TEST_F(ViewChoicesStore, EveryChoiceComesBack)
{
    ViewChoices choices;
    choices.exposure = 11;
    choices.gain = 22;
    choices.led = 33;
    choices.horizontalFlip = true;
    choices.verticalFlip = true;
    choices.swapCameras = true;
    choices.undistort = true;
    choices.arrangement = PictureArrangement::Difference;
    storeViewChoices(choices);
    EXPECT_TRUE(loadViewChoices() == choices);
}

TEST_F(ViewChoicesStore, NonsenseIsBroughtIntoRange)
{
    write("exposure", 5000);
    write("gain", -3);
    write("led", "bright");
    write("arrangement", "upsideDown");
    const ViewChoices choices = loadViewChoices();
    EXPECT_EQ(choices.exposure, 100);
    EXPECT_EQ(choices.gain, 0);
    EXPECT_EQ(choices.led, 0);
    EXPECT_EQ(choices.arrangement, PictureArrangement::SideBySide);
}

TEST_F(ViewChoicesStore, NonsenseTurnsNoFlagOn)
{
    for (const char* const text : {"bright", "no", "off", "-", "2", ""}) {
        for (const char* const flag : {"horizontalFlip", "verticalFlip", "swapCameras", "undistort"})
            write(flag, text);
        EXPECT_TRUE(loadViewChoices() == ViewChoices()) << text;
    }
}

TEST_F(ViewChoicesStore, AFlagIsOnForTrueAndForOne)
{
    for (const char* const text : {"true", "1"}) {
        for (const char* const flag : {"horizontalFlip", "verticalFlip", "swapCameras", "undistort"})
            write(flag, text);
        const ViewChoices choices = loadViewChoices();
        EXPECT_TRUE(choices.horizontalFlip && choices.verticalFlip && choices.swapCameras && choices.undistort) << text;
    }
}

} // namespace
