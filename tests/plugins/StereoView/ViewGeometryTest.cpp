// SPDX-License-Identifier: Apache-2.0
// Placing, zooming and moving pictures.

#include <ViewGeometry.h>

#include <gtest/gtest.h>

namespace {

constexpr double tiny = 1e-9;

const QSize picture(752, 480);

ViewScene sceneOf(PictureArrangement arrangement, QSize view, QSize size = picture)
{
    return {arrangement, size, view};
}

/// The picture pixel that the view shows at `place`, in cell `index`.
QPointF pictureAt(const ViewScene& scene, const ViewPoint& point, std::size_t index, QPointF place)
{
    const PictureCell cell = cellsOf(scene, point).at(index);
    return cell.source.center() + (place - QRectF(cell.target).center()) / scaleOf(scene, point);
}

TEST(ViewGeometry, SideBySideFillsTheWidthWithTwoPicturesOfTheSameShape)
{
    const ViewScene scene = sceneOf(PictureArrangement::SideBySide, {902, 600});
    const std::vector<PictureCell> cells = cellsOf(scene, ViewPoint());
    ASSERT_EQ(cells.size(), 2U);
    EXPECT_EQ(cells[0].content, CellContent::Left);
    EXPECT_EQ(cells[1].content, CellContent::Right);
    EXPECT_EQ(cells[0].target, QRect(0, 156, 450, 287));
    EXPECT_EQ(cells[1].target, QRect(452, 156, 450, 287));
    EXPECT_EQ(cells[0].source, QRectF(0, 0, 752, 480));
    EXPECT_EQ(cells[1].source, QRectF(0, 0, 752, 480));
}

TEST(ViewGeometry, SideBySideInALowViewStaysTogetherInTheMiddle)
{
    const std::vector<PictureCell> cells = cellsOf(sceneOf(PictureArrangement::SideBySide, {1000, 240}), ViewPoint());
    ASSERT_EQ(cells.size(), 2U);
    EXPECT_EQ(cells[0].target, QRect(123, 0, 376, 240));
    EXPECT_EQ(cells[1].target, QRect(501, 0, 376, 240));
}

TEST(ViewGeometry, OneAboveOtherSharesTheHeight)
{
    const std::vector<PictureCell> cells = cellsOf(sceneOf(PictureArrangement::OneAboveOther, {900, 482}), ViewPoint());
    ASSERT_EQ(cells.size(), 2U);
    EXPECT_EQ(cells[0].content, CellContent::Left);
    EXPECT_EQ(cells[0].target, QRect(262, 0, 376, 240));
    EXPECT_EQ(cells[1].content, CellContent::Right);
    EXPECT_EQ(cells[1].target, QRect(262, 242, 376, 240));
}

TEST(ViewGeometry, ArrangementsOfOnePictureHaveTheWholeView)
{
    const std::vector<std::pair<PictureArrangement, CellContent>> expected = {
        {PictureArrangement::LeftOnly, CellContent::Left},
        {PictureArrangement::RightOnly, CellContent::Right},
        {PictureArrangement::Anaglyph, CellContent::Anaglyph},
        {PictureArrangement::Difference, CellContent::Difference},
    };
    for (const auto& [arrangement, content] : expected) {
        const std::vector<PictureCell> cells = cellsOf(sceneOf(arrangement, {376, 600}), ViewPoint());
        ASSERT_EQ(cells.size(), 1U);
        EXPECT_EQ(cells[0].content, content);
        EXPECT_EQ(cells[0].target, QRect(0, 180, 376, 240));
    }
}

TEST(ViewGeometry, SmallPicturesAreEnlargedToTheView)
{
    const std::vector<PictureCell> cells =
        cellsOf(sceneOf(PictureArrangement::LeftOnly, {800, 600}, {80, 60}), ViewPoint());
    ASSERT_EQ(cells.size(), 1U);
    EXPECT_EQ(cells[0].target, QRect(0, 0, 800, 600));
    EXPECT_EQ(cells[0].source, QRectF(0, 0, 80, 60));
}

TEST(ViewGeometry, NothingToShowOrNoRoomGivesNoCells)
{
    EXPECT_TRUE(cellsOf(sceneOf(PictureArrangement::SideBySide, {800, 600}, QSize()), ViewPoint()).empty());
    EXPECT_TRUE(cellsOf(sceneOf(PictureArrangement::SideBySide, {2, 600}), ViewPoint()).empty());
    EXPECT_TRUE(cellsOf(sceneOf(PictureArrangement::LeftOnly, {0, 0}), ViewPoint()).empty());
    EXPECT_EQ(scaleOf(sceneOf(PictureArrangement::LeftOnly, {0, 0}), ViewPoint()), 0.0);
}

TEST(ViewGeometry, EveryArrangementStaysInsideEveryView)
{
    for (const PictureArrangement arrangement : allArrangements) {
        for (const QSize size : {QSize(752, 480), QSize(188, 120), QSize(80, 60), QSize(752, 60), QSize(1, 1)}) {
            for (const QSize view : {QSize(400, 1), QSize(400, 300), QSize(925, 626), QSize(3840, 2160), QSize(5, 5)}) {
                for (const double zoom : {1.0, 2.5, 1000.0}) {
                    const ViewScene scene = sceneOf(arrangement, view, size);
                    for (const PictureCell& cell : cellsOf(scene, {zoom, {0.9, 0.1}})) {
                        EXPECT_TRUE(QRect(QPoint(0, 0), view).contains(cell.target));
                        const QRectF whole = QRectF(QPointF(0, 0), size).adjusted(-tiny, -tiny, tiny, tiny);
                        EXPECT_TRUE(whole.contains(cell.source)) << cell.source.left() << " " << cell.source.right();
                    }
                }
            }
        }
    }
}

TEST(ViewGeometry, ZoomKeepsWhatIsUnderTheCursor)
{
    const ViewScene scene = sceneOf(PictureArrangement::LeftOnly, {752, 480});
    const QPointF cursor(200.0, 300.0);
    ViewPoint point;
    const QPointF before = pictureAt(scene, point, 0, cursor);
    for (int notch = 0; notch < 8; ++notch) {
        point = zoomedAbout(scene, point, cursor, 1.25);
        const QPointF after = pictureAt(scene, point, 0, cursor);
        EXPECT_NEAR(after.x(), before.x(), 1e-6);
        EXPECT_NEAR(after.y(), before.y(), 1e-6);
    }
}

TEST(ViewGeometry, ZoomKeepsWhatIsUnderTheCursorInTheRightPicture)
{
    const ViewScene scene = sceneOf(PictureArrangement::SideBySide, {1506, 480});
    const QPointF cursor(1000.0, 200.0);
    const QPointF before = pictureAt(scene, ViewPoint(), 1, cursor);
    const ViewPoint point = zoomedAbout(scene, ViewPoint(), cursor, 3.0);
    const QPointF after = pictureAt(scene, point, 1, cursor);
    EXPECT_NEAR(after.x(), before.x(), 1e-6);
    EXPECT_NEAR(after.y(), before.y(), 1e-6);
}

TEST(ViewGeometry, ZoomedCellsGrowIntoTheRoomBesideThem)
{
    const ViewScene scene = sceneOf(PictureArrangement::SideBySide, {902, 600});
    const std::vector<PictureCell> cells = cellsOf(scene, {2.0, {0.5, 0.5}});
    EXPECT_EQ(cells[0].target, QRect(0, 13, 450, 574));
    EXPECT_EQ(cells[1].target, QRect(452, 13, 450, 574));
    EXPECT_NEAR(cells[0].source.width(), 376.0, tiny);
}

TEST(ViewGeometry, BothPicturesShowTheSamePart)
{
    const ViewScene scene = sceneOf(PictureArrangement::SideBySide, {902, 600});
    const std::vector<PictureCell> cells = cellsOf(scene, {4.0, {0.3, 0.7}});
    EXPECT_EQ(cells[0].source, cells[1].source);
}

TEST(ViewGeometry, ZoomEndsAtTheWholePictureAndAtThirtyTwoToOne)
{
    const ViewScene scene = sceneOf(PictureArrangement::LeftOnly, {752, 480});
    EXPECT_EQ(zoomedAbout(scene, ViewPoint(), {10.0, 10.0}, 0.1).zoom, 1.0);
    EXPECT_EQ(zoomedAbout(scene, ViewPoint(), {10.0, 10.0}, 1e9).zoom, 32.0);
    // A picture that fills the view at more than that can still be seen whole.
    EXPECT_EQ(bounded(sceneOf(PictureArrangement::LeftOnly, {800, 800}, {2, 2}), {5.0, {0.5, 0.5}}).zoom, 1.0);
}

TEST(ViewGeometry, DraggingMovesThePictureWithTheCursor)
{
    const ViewScene scene = sceneOf(PictureArrangement::LeftOnly, {752, 480});
    const ViewPoint point{4.0, {0.5, 0.5}};
    const ViewPoint moved = movedBy(scene, point, {40.0, -20.0});
    const QPointF before = pictureAt(scene, point, 0, {100.0, 100.0});
    const QPointF after = pictureAt(scene, moved, 0, {140.0, 80.0});
    EXPECT_NEAR(after.x(), before.x(), 1e-6);
    EXPECT_NEAR(after.y(), before.y(), 1e-6);
}

TEST(ViewGeometry, DraggingEndsAtThePicturesEdge)
{
    const ViewScene scene = sceneOf(PictureArrangement::LeftOnly, {752, 480});
    const ViewPoint moved = movedBy(scene, {2.0, {0.5, 0.5}}, {1e6, 1e6});
    EXPECT_NEAR(cellsOf(scene, moved)[0].source.left(), 0.0, tiny);
    EXPECT_NEAR(cellsOf(scene, moved)[0].source.top(), 0.0, tiny);
    // And the way back begins at once.
    EXPECT_NEAR(cellsOf(scene, movedBy(scene, moved, {-20.0, 0.0}))[0].source.left(), 10.0, 1e-6);
}

TEST(ViewGeometry, DraggingTheWholePictureDoesNothing)
{
    const ViewScene scene = sceneOf(PictureArrangement::SideBySide, {902, 600});
    const ViewPoint moved = movedBy(scene, ViewPoint(), {30.0, 30.0});
    EXPECT_EQ(moved.centre, QPointF(0.5, 0.5));
}

TEST(PictureArrangement, KeysNameArrangementsForGood)
{
    const std::vector<QString> keys = {"sideBySide", "oneAboveOther", "leftOnly",
                                       "rightOnly",  "anaglyph",      "difference"};
    for (std::size_t i = 0; i < allArrangements.size(); ++i) {
        EXPECT_EQ(arrangementKey(allArrangements[i]), keys[i]);
        EXPECT_EQ(arrangementOfKey(keys[i]), allArrangements[i]);
    }
    EXPECT_EQ(arrangementOfKey("no such thing"), PictureArrangement::SideBySide);
}

} // namespace
