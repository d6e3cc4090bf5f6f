// SPDX-License-Identifier: Apache-2.0
// Saving pictures.

#include <PictureSaver.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class PictureSaver : public testing::Test
{
protected:
    PictureSaver()
        : left(40, 30, QImage::Format_Grayscale8)
        , right(40, 30, QImage::Format_Grayscale8)
        , folder(directory.filePath("a/b"))
    {
        left.fill(10);
        right.fill(20);
    }

    SaveOutcome save() const { return savePicturePair(folder, when, left, right); }

    QStringList files() const { return QDir(folder).entryList(QDir::Files, QDir::Name); }

    static void writeFile(const QString& path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
    }

    QTemporaryDir directory;
    QImage left;
    QImage right;
    QString folder;
    QDateTime when{QDate(2031, 2, 3), QTime(4, 5, 6, 78)};
};

TEST_F(PictureSaver, WritesBothPicturesAndMakesTheFolder)
{
    const SaveOutcome outcome = save();
    EXPECT_TRUE(outcome.saved);
    EXPECT_EQ(outcome.fileBase, "stereo_20310203_040506_078");
    EXPECT_EQ(outcome.folder, folder);
    EXPECT_EQ(files(), QStringList({"stereo_20310203_040506_078_left.png", "stereo_20310203_040506_078_right.png"}));
    const QImage loaded(folder + "/stereo_20310203_040506_078_left.png");
    EXPECT_EQ(loaded.format(), QImage::Format_Grayscale8);
    EXPECT_EQ(loaded, left);
    EXPECT_EQ(QImage(folder + "/stereo_20310203_040506_078_right.png"), right);
}

TEST_F(PictureSaver, NeverWritesOverAFile)
{
    save();
    left.fill(99);
    const SaveOutcome second = save();
    EXPECT_EQ(second.fileBase, "stereo_20310203_040506_078_2");
    EXPECT_EQ(files().size(), 4);
    EXPECT_EQ(QImage(folder + "/stereo_20310203_040506_078_left.png").pixelColor(0, 0).red(), 10);
    EXPECT_EQ(QImage(folder + "/stereo_20310203_040506_078_2_left.png").pixelColor(0, 0).red(), 99);
}

TEST_F(PictureSaver, AnExistingRightPictureAloneAlsoMovesBothOn)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    writeFile(folder + "/stereo_20310203_040506_078_right.png");
    EXPECT_EQ(save().fileBase, "stereo_20310203_040506_078_2");
    EXPECT_EQ(files(), QStringList({"stereo_20310203_040506_078_2_left.png", "stereo_20310203_040506_078_2_right.png",
                                    "stereo_20310203_040506_078_right.png"}));
}

TEST_F(PictureSaver, AFolderThatCannotBeMadeIsTold)
{
    writeFile(directory.filePath("a"));
    const SaveOutcome outcome = save();
    EXPECT_FALSE(outcome.saved);
    EXPECT_FALSE(outcome.problem.isEmpty());
    EXPECT_TRUE(outcome.fileBase.isEmpty());
}

TEST_F(PictureSaver, APictureThatCannotBeWrittenLeavesNothingBehind)
{
    right = QImage();
    const SaveOutcome outcome = save();
    EXPECT_FALSE(outcome.saved);
    EXPECT_FALSE(outcome.problem.isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

} // namespace
