// SPDX-License-Identifier: Apache-2.0
// Tests of the playback of recordings, through libVYR.so.

#include "Receiver.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <stdlib.h>

using test::meanDifference;
using test::meanOf;
using test::OpenedCamera;
using test::pixelsOf;
using test::Receiver;

namespace fs = std::filesystem;

namespace {

/// Receives one frame and what is in it.
struct Seen
{
    std::vector<std::uint8_t> left;
    std::vector<std::uint8_t> right;
};

class Playback : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "playbackXXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        _folder = name;
    }

    void TearDown() override { fs::remove_all(_folder); }

    fs::path folder() const { return _folder; }

    std::string source() const { return "playback:" + _folder.string(); }

    void makeFolders() const
    {
        fs::create_directory(_folder / "left");
        fs::create_directory(_folder / "right");
    }

    /// Writes a pair of one name, each picture with a grey value of its own.
    void writePair(const std::string& name, int left, int right, cv::Size size = {752, 480}) const
    {
        makeFolders();
        ASSERT_TRUE(cv::imwrite((_folder / "left" / name).string(), cv::Mat(size, CV_8UC1, cv::Scalar(left))));
        ASSERT_TRUE(cv::imwrite((_folder / "right" / name).string(), cv::Mat(size, CV_8UC1, cv::Scalar(right))));
    }

    void writePair(const std::string& name, const cv::Mat& left, const cv::Mat& right) const
    {
        makeFolders();
        ASSERT_TRUE(cv::imwrite((_folder / "left" / name).string(), left));
        ASSERT_TRUE(cv::imwrite((_folder / "right" / name).string(), right));
    }

    static void writeText(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }

    /// Opens a source that cannot be read, and returns what was told about it.
    static std::string refusal(const std::string& source)
    {
        testing::internal::CaptureStderr();
        const OpenedCamera camera(source.c_str());
        EXPECT_FALSE(camera.isOpen());
        EXPECT_EQ(camera.handle, nullptr);
        return testing::internal::GetCapturedStderr();
    }

    static std::string told(const std::string& source, const std::string& reason)
    {
        return "libVYR: VYR_SOURCE=" + source + ": " + reason + "\n";
    }

    /// The first frames of a source in the mode of the whole sensor.
    static std::vector<Seen> see(OpenedCamera& camera, std::size_t count)
    {
        std::vector<Seen> seen;
        Receiver receiver([&](const VYRFrame1& frame) {
            seen.push_back({pixelsOf(frame, frame.left), pixelsOf(frame, frame.right)});
        });
        EXPECT_TRUE(camera.start(receiver));
        EXPECT_TRUE(receiver.waitFor(count));
        StopVYR(camera.handle);
        return seen;
    }

private:
    fs::path _folder;
};

/// A picture without symmetry.
cv::Mat testPicture(int phase, cv::Size size = {752, 480})
{
    cv::Mat picture(size, CV_8UC1);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            picture.at<std::uint8_t>(y, x) =
                static_cast<std::uint8_t>((x / 3 + y / 5 + x * y / 997 + phase) % 140 + 40);
        }
    }
    return picture;
}

std::vector<std::uint8_t> pixels(const cv::Mat& picture)
{
    return {picture.datastart, picture.dataend};
}

fs::path walk()
{
    return fs::path(PROJECT_FOLDER) / ".." / "shared" / "data" / "walk";
}

} // namespace

TEST_F(Playback, AMissingFolderIsNamed)
{
    const std::string missing = source() + "/nowhere";
    EXPECT_EQ(refusal(missing), told(missing, folder().string() + "/nowhere: no such file or folder"));
    EXPECT_EQ(refusal("playback:"), told("playback:", "name a folder or a video file after playback:"));
}

TEST_F(Playback, LeftWithoutRightIsNamed)
{
    EXPECT_EQ(refusal(source()), told(source(), folder().string() + "/left: no such folder"));
    fs::create_directory(folder() / "left");
    EXPECT_EQ(refusal(source()), told(source(), folder().string() + "/right: no such folder"));
}

TEST_F(Playback, NoEquallyNamedPicturesIsNamed)
{
    const std::string reason = folder().string() + ": left and right hold no equally named pictures (PNG, JPEG or PGM)";
    makeFolders();
    EXPECT_EQ(refusal(source()), told(source(), reason));
    writeText(folder() / "left" / "1.png", "");
    writeText(folder() / "right" / "2.png", "");
    writeText(folder() / "left" / "notes.txt", "");
    writeText(folder() / "right" / "notes.txt", "");
    EXPECT_EQ(refusal(source()), told(source(), reason));
}

TEST_F(Playback, AnUndecodablePictureIsNamed)
{
    writePair("1.png", 10, 20);
    writeText(folder() / "right" / "1.png", "no picture");
    EXPECT_EQ(refusal(source()), told(source(), folder().string() + "/right/1.png: cannot be decoded as a picture"));
    writeText(folder() / "right" / "1.png", "");
    EXPECT_EQ(refusal(source()), told(source(), folder().string() + "/right/1.png: cannot be decoded as a picture"));
    writeText(folder() / "right" / "1.png", "\x89PNG and then nothing of the kind");
    EXPECT_EQ(refusal(source()), told(source(), folder().string() + "/right/1.png: cannot be decoded as a picture"));
}

TEST_F(Playback, AnUndecodableVideoIsNamed)
{
    writeText(folder() / "film.avi", "no video");
    const std::string film = source() + "/film.avi";
    EXPECT_EQ(refusal(film), told(film, folder().string() + "/film.avi: cannot be decoded as a video"));
}

TEST_F(Playback, ABrokenCalibrationIsNamed)
{
    writePair("1.png", 10, 20);
    const std::string calibration = folder().string() + "/stereo.yml";
    writeText(calibration, "%YAML:1.0\n---\nM1: 5\n");
    EXPECT_EQ(refusal(source()), told(source(), calibration + ": has no matrix M1 of the right shape"));
    writeText(calibration, "nonsense");
    EXPECT_EQ(refusal(source()), told(source(), calibration + ": cannot be read as a calibration"));
}

TEST_F(Playback, PicturesComeUnchangedInTheOrderOfTheirNamesAndAgain)
{
    writePair("b.png", 30, 130);
    writePair("a.pgm", 20, 120);
    writePair("c.png", 40, 140);
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    ASSERT_TRUE(camera.setMode(752, 480, 0, 60.0F));
    const std::vector<Seen> seen = see(camera, 7);
    for (std::size_t i = 0; i < 7; ++i) {
        const int step = 10 * static_cast<int>(i % 3);
        EXPECT_EQ(seen[i].left, std::vector<std::uint8_t>(752 * 480, static_cast<std::uint8_t>(20 + step))) << i;
        EXPECT_EQ(seen[i].right, std::vector<std::uint8_t>(752 * 480, static_cast<std::uint8_t>(120 + step))) << i;
    }
}

TEST_F(Playback, JpegAndColourPicturesAreReadAsGrey)
{
    const cv::Mat colour(480, 752, CV_8UC3, cv::Scalar(200, 200, 200));
    writePair("1.JPG", colour, colour);
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    EXPECT_NEAR(meanOf(see(camera, 1)[0].left), 200.0, 2.0);
}

TEST_F(Playback, AVideoIsCutIntoLeftAndRightHalf)
{
    const std::string film = (folder() / "film.avi").string();
    cv::VideoWriter writer(film, cv::CAP_OPENCV_MJPEG, cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 20.0, {1504, 480});
    ASSERT_TRUE(writer.isOpened());
    for (int i = 0; i < 3; ++i) {
        cv::Mat both(480, 1504, CV_8UC3, cv::Scalar::all(40 + 40 * i));
        both.colRange(752, 1504).setTo(cv::Scalar::all(60 + 40 * i));
        writer.write(both);
    }
    writer.release();
    OpenedCamera camera(("playback:" + film).c_str());
    ASSERT_TRUE(camera.isOpen());
    const std::vector<Seen> seen = see(camera, 5);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(meanOf(seen[i].left), 40.0 + 40.0 * static_cast<double>(i % 3), 4.0) << i;
        EXPECT_NEAR(meanOf(seen[i].right), 60.0 + 40.0 * static_cast<double>(i % 3), 4.0) << i;
    }
}

TEST_F(Playback, OtherSizesAreScaledWholeWithBlackAround)
{
    writePair("1.png", 100, 100, {640, 480});  // narrower: black at the sides
    writePair("2.png", 100, 100, {1504, 480}); // flatter: halved, black above and below
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    const std::vector<Seen> seen = see(camera, 2);
    const auto at = [](const Seen& frame, int x, int y) { return frame.left[static_cast<std::size_t>(y * 752 + x)]; };
    EXPECT_EQ(at(seen[0], 55, 240), 0);
    EXPECT_EQ(at(seen[0], 56, 240), 100);
    EXPECT_EQ(at(seen[0], 695, 0), 100);
    EXPECT_EQ(at(seen[0], 696, 479), 0);
    EXPECT_EQ(at(seen[1], 0, 119), 0);
    EXPECT_EQ(at(seen[1], 0, 120), 100);
    EXPECT_EQ(at(seen[1], 751, 359), 100);
    EXPECT_EQ(at(seen[1], 751, 360), 0);
}

TEST_F(Playback, ALaterUndecodablePictureIsToldOnceAndLeftOut)
{
    writePair("1.png", 10, 10);
    writePair("2.png", 20, 20);
    writePair("3.png", 30, 30);
    writeText(folder() / "left" / "2.png", "no picture");
    testing::internal::CaptureStderr();
    std::vector<Seen> seen;
    {
        OpenedCamera camera(source().c_str());
        ASSERT_TRUE(camera.isOpen());
        seen = see(camera, 5);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libVYR: " + folder().string()
                  + "/left/2.png: cannot be decoded as a picture; the recording goes on without it\n");
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(seen[i].left[0], i % 2 == 0 ? 10 : 30);
}

TEST_F(Playback, TheDeviceIsNamedAfterTheRecording)
{
    writePair("1.png", 10, 20);
    for (const char* const ending : {"", "/"}) {
        const OpenedCamera camera((source() + ending).c_str());
        char name[256] = "";
        EXPECT_EQ(__VYRParamGet__(camera.handle, VYRDeviceName, name), VYRSuccess);
        EXPECT_EQ(name, "VYR Simulator playing " + folder().filename().string());
    }
}

TEST_F(Playback, ChangesTakeEffectWithTheNextFrame)
{
    const cv::Mat left = testPicture(0);
    const cv::Mat right = testPicture(70);
    writePair("1.png", left, right);
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    ASSERT_TRUE(camera.setMode(752, 480, 0, 60.0F));
    std::vector<Seen> seen;
    Receiver receiver([&](const VYRFrame1& frame) {
        seen.push_back({pixelsOf(frame, frame.left), pixelsOf(frame, frame.right)});
        const auto flag = [&](int id, int value) { EXPECT_EQ(__VYRParamSet__(camera.handle, id, value), VYRSuccess); };
        switch (seen.size()) {
        case 1:
            flag(VYRHorizontalFlip, 1);
            break;
        case 2:
            flag(VYRHorizontalFlip, 0);
            flag(VYRVerticalFlip, 1);
            break;
        case 3:
            flag(VYRVerticalFlip, 0);
            flag(VYRSwapCameras, 1);
            break;
        case 4:
            flag(VYRSwapCameras, 0);
            EXPECT_EQ(__VYRParamSet__(camera.handle, VYRExposure, 25.0, 0), VYRSuccess);
            break;
        case 5:
            EXPECT_EQ(__VYRParamSet__(camera.handle, VYRExposure, 0.0, 0), VYRSuccess);
            EXPECT_EQ(__VYRParamSet__(camera.handle, VYRLed, 100.0), VYRSuccess);
            break;
        case 6:
            EXPECT_EQ(__VYRParamSet__(camera.handle, VYRLed, 0.0), VYRSuccess);
            flag(VYRUndistort, 1);
            break;
        default:
            break;
        }
    });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(7));
    StopVYR(camera.handle);

    cv::Mat mirrored;
    cv::Mat upsideDown;
    cv::flip(left, mirrored, 1);
    cv::flip(left, upsideDown, 0);
    EXPECT_EQ(seen[0].left, pixels(left)) << "automatic exposure leaves a recording as it is";
    EXPECT_EQ(seen[0].right, pixels(right));
    EXPECT_EQ(seen[1].left, pixels(mirrored));
    EXPECT_EQ(seen[2].left, pixels(upsideDown));
    EXPECT_EQ(seen[3].left, pixels(right));
    EXPECT_EQ(seen[3].right, pixels(left));
    EXPECT_NEAR(meanOf(seen[4].left), meanOf(pixels(left)) / 2.0, 1.0);
    EXPECT_GT(meanOf(seen[5].left), meanOf(pixels(left)) * 1.1);
    EXPECT_GT(meanDifference(seen[6].left, pixels(left)), 1.0) << "the nominal lens, without a calibration";
    EXPECT_EQ(seen[6].left[240 * 752 + 376], pixels(left)[240 * 752 + 376]) << "which leaves the middle alone";
}

TEST_F(Playback, FootageSlowToDecodeMissesFramesAndLosesNone)
{
    for (int i = 0; i < 12; ++i) {
        cv::Mat picture = testPicture(i, {3008, 1920}); // sixteen times as much to decode
        picture.setTo(cv::Scalar(20 * i + 5), picture > 100);
        writePair((i < 10 ? "0" : "") + std::to_string(i) + ".png", picture, picture);
    }
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    ASSERT_TRUE(camera.setMode(192, 120, 0, 240.0F));
    std::vector<int> order;
    Receiver receiver([&](const VYRFrame1& frame) {
        const std::vector<std::uint8_t> all = pixelsOf(frame, frame.left);
        order.push_back((*std::max_element(all.begin(), all.end()) - 5) / 20);
    });
    ASSERT_TRUE(camera.start(receiver));
    ASSERT_TRUE(receiver.waitFor(20));
    StopVYR(camera.handle);
    EXPECT_GT(receiver.frames()[19].frameCounter, 19U);
    for (std::size_t i = 6; i < 12; ++i) // brighter than what the pictures have in common
        EXPECT_EQ(order[i], static_cast<int>(i));
}

TEST_F(Playback, FootageStreamsInEveryBinning)
{
    writePair("1.png", testPicture(3), testPicture(9));
    OpenedCamera camera(source().c_str());
    ASSERT_TRUE(camera.isOpen());
    for (const int code : {0, 1, 2, 4, 5, 6, 8, 9, 10}) {
        VYRResolutionInfo mode = {};
        ASSERT_EQ(EnumerateResolutions(&mode, 1, -1, -1, code, 60.0F), 1);
        ASSERT_EQ(__VYRParamSet__(camera.handle, VYRResolution, mode), VYRSuccess);
        const Seen seen = see(camera, 1)[0];
        cv::Mat binned;
        cv::resize(testPicture(3), binned, {mode.width, mode.height}, 0.0, 0.0, cv::INTER_AREA);
        EXPECT_LT(meanDifference(seen.left, pixels(binned)), 1.0) << code;
    }
}

TEST_F(Playback, RealFootagePlaysAndIsRectifiedByItsCalibration)
{
    if (!fs::exists(walk()))
        GTEST_SKIP() << "no footage at " << walk();
    OpenedCamera camera(("playback:" + walk().string()).c_str());
    ASSERT_TRUE(camera.isOpen());
    ASSERT_TRUE(camera.setMode(752, 480, 0, 30.0F));
    const Seen raw = see(camera, 1)[0];
    EXPECT_EQ(raw.left, pixels(cv::imread((walk() / "left" / "000.png").string(), cv::IMREAD_GRAYSCALE)));
    EXPECT_EQ(raw.right, pixels(cv::imread((walk() / "right" / "000.png").string(), cv::IMREAD_GRAYSCALE)));

    ASSERT_EQ(__VYRParamSet__(camera.handle, VYRUndistort, 1), VYRSuccess);
    const Seen rectified = see(camera, 1)[0];
    EXPECT_GT(meanDifference(rectified.left, raw.left), 3.0);

    // Distinct points of the left picture are found in the right one with the best match on the same row.
    const cv::Mat left(480, 752, CV_8UC1, const_cast<std::uint8_t*>(rectified.left.data()));
    const cv::Mat right(480, 752, CV_8UC1, const_cast<std::uint8_t*>(rectified.right.data()));
    std::vector<cv::Point2f> corners;
    cv::goodFeaturesToTrack(left, corners, 200, 0.02, 12.0);
    int found = 0;
    int onRow = 0;
    for (const cv::Point2f& corner : corners) {
        const cv::Rect patch(static_cast<int>(corner.x) - 9, static_cast<int>(corner.y) - 9, 19, 19);
        const cv::Rect strip(patch.x - 80, patch.y - 6, patch.width + 84, patch.height + 12);
        if ((strip & cv::Rect(0, 0, 752, 480)) != strip)
            continue;
        cv::Mat scores;
        cv::matchTemplate(right(strip), left(patch), scores, cv::TM_CCOEFF_NORMED);
        double best = 0.0;
        cv::Point place;
        cv::minMaxLoc(scores, nullptr, &best, nullptr, &place);
        if (best > 0.95) {
            ++found;
            onRow += std::abs(place.y - 6) <= 1 ? 1 : 0;
        }
    }
    EXPECT_GT(found, 30);
    EXPECT_GT(onRow, found * 9 / 10) << "of " << found;
}

TEST_F(Playback, RealFootageStartsAgainAfterItsLastPair)
{
    if (!fs::exists(walk()))
        GTEST_SKIP() << "no footage at " << walk();
    OpenedCamera camera(("playback:" + walk().string()).c_str());
    ASSERT_TRUE(camera.isOpen());
    ASSERT_TRUE(camera.setMode(376, 240, 5, 60.0F));
    const std::vector<Seen> seen = see(camera, 50);
    EXPECT_EQ(seen[48].left, seen[0].left) << "48 pairs";
    EXPECT_EQ(seen[49].right, seen[1].right);
    EXPECT_NE(seen[47].left, seen[0].left);
}
