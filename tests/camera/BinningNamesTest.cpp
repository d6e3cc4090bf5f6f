// SPDX-License-Identifier: Apache-2.0
// The table of binning codes and names.

#include <camera/BinningNames.h>

#include <gtest/gtest.h>

#include <QStringList>

namespace {

TEST(BinningNames, NameIsHorizontalTimesVertical)
{
    EXPECT_EQ(binningNameByCode(), (QMap<int, QString>{{0, "1x1"},
                                                       {4, "1x2"},
                                                       {8, "1x4"},
                                                       {1, "2x1"},
                                                       {5, "2x2"},
                                                       {9, "2x4"},
                                                       {2, "4x1"},
                                                       {6, "4x2"},
                                                       {10, "4x4"}}));
}

TEST(BinningNames, NamesComeInStringOrder)
{
    const QStringList expected{"1x1", "1x2", "1x4", "2x1", "2x2", "2x4", "4x1", "4x2", "4x4"};
    EXPECT_EQ(QStringList(binningCodeByName().keys()), expected);
}

TEST(BinningNames, CodesAndNamesAreEachOthersInverse)
{
    for (const int code : binningNameByCode().keys())
        EXPECT_EQ(binningCodeByName().value(binningName(code), -1), code);
}

TEST(BinningNames, UnknownCodeHasAnEmptyName)
{
    EXPECT_EQ(binningName(3), QString());
    EXPECT_EQ(binningName(-1), QString());
    EXPECT_EQ(binningName(11), QString());
    EXPECT_EQ(binningNameByCode().size(), 9) << "asking adds nothing to the table";
}

} // namespace
