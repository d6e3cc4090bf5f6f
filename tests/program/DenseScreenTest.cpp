// SPDX-License-Identifier: Apache-2.0
// The program on a screen of the usual density and on one of twice that, as a virtual X server has them.

#include <tests/support/ProgramCopy.h>

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

constexpr int limit = 140'000; // milliseconds for a run on a busy machine

/// Takes a picture of the window with live frames on it.
class DenseScreenTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable("xvfb-run").isEmpty())
            GTEST_SKIP() << "xvfb-run is not installed (Debian: xvfb, xauth)";
        ASSERT_TRUE(copyProgram(PROGRAM, folder()));
    }

    QDir folder() const { return QDir(_folder.path()); }

    /// On a server of that density or, as desktops do it, with one that is configured on top of that.
    QImage windowAt(int dotsPerInch, const QString& configured = QString())
    {
        const QString picture = folder().filePath("window.png");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", _folder.path());
        environment.insert("XDG_CONFIG_HOME", _folder.path());
        environment.insert("TMPDIR", _folder.path());
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("QT_PLUGIN_PATH", SCREENSHOT_PLUGINS);
        environment.insert("QT_QPA_GENERIC_PLUGINS", "vyrscreenshot:" + picture);
        // What the X side of Qt leaves behind lies in modules that are gone by then, and cannot be overlooked by name.
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        for (const char* wish : {"VYR_SOURCE", "QT_SCALE_FACTOR", "QT_ENABLE_HIGHDPI_SCALING", "QT_FONT_DPI"})
            environment.remove(wish);
        if (!configured.isEmpty())
            environment.insert("QT_FONT_DPI", configured);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        const QString server = QString("-screen 0 2560x1600x24 -dpi %1 -nolisten tcp").arg(dotsPerInch);
        program.start("xvfb-run", {"-a", "-s", server, folder().filePath(QFileInfo(PROGRAM).fileName())});
        EXPECT_TRUE(program.waitForFinished(limit)) << "the program runs on";
        EXPECT_EQ(program.exitCode(), 0);
        program.kill();
        program.waitForFinished();
        return QImage(picture).convertToFormat(QImage::Format_RGB32);
    }

private:
    QTemporaryDir _folder{"/tmp/program-XXXXXX"};
};

/// How many of the squares of two by two pixels in an area are not of one colour.
int finerThanSquares(const QImage& picture, const QRect& area)
{
    int count = 0;
    for (int y = area.top() / 2 * 2; y < area.bottom(); y += 2) {
        for (int x = area.left() / 2 * 2; x < area.right(); x += 2) {
            const QRgb colour = picture.pixel(x, y);
            if (picture.pixel(x + 1, y) != colour || picture.pixel(x, y + 1) != colour
                || picture.pixel(x + 1, y + 1) != colour)
                ++count;
        }
    }
    return count;
}

TEST_F(DenseScreenTest, TheWindowHas1200By670PixelsOnAUsualScreen)
{
    EXPECT_EQ(windowAt(96).size(), QSize(1200, 670));
}

TEST_F(DenseScreenTest, TheWindowHasTwiceThePixelsOnAScreenTwiceAsDense)
{
    EXPECT_EQ(windowAt(192).size(), QSize(2400, 1340));
}

TEST_F(DenseScreenTest, TheWindowHasAsManyPixelsAsUsualOnAScreenHalfAsDenseAgain)
{
    EXPECT_EQ(windowAt(96, "144").size(), QSize(1200, 670));
}

TEST_F(DenseScreenTest, PicturesUseEveryPixelOfTheScreen)
{
    const QImage window = windowAt(192);
    ASSERT_FALSE(window.isNull());
    const QRect insideTheLeftPicture(200, 500, 500, 300);
    EXPECT_GT(finerThanSquares(window, insideTheLeftPicture), 500 * 300 / 4 / 2);
}

} // namespace
