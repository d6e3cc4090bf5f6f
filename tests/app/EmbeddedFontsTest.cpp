// SPDX-License-Identifier: Apache-2.0
// The faces built into the program and the default font.

#include <app/EmbeddedFonts.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
#include <QResource>

#include <functional>

namespace {

const QStringList expectedPaths = {":/segoeui.ttf",   ":/segoeuib.ttf", ":/segoeuii.ttf",
                                   ":/segoeuisl.ttf", ":/segoeuiz.ttf", ":/seguili.ttf",
                                   ":/seguisb.ttf",   ":/seguisbi.ttf", ":/seguisli.ttf"};

/// Registers from a certain attempt on and notes the attempts.
struct Registrar
{
    int firstSuccess;
    QStringList attempts;

    int operator()(const QString& path)
    {
        attempts.append(path);
        return attempts.size() >= firstSuccess ? attempts.size() + 40 : -1;
    }
};

TEST(EmbeddedFonts, AreTriedInThisOrder)
{
    EXPECT_EQ(embeddedFontPaths(), expectedPaths);
}

TEST(EmbeddedFonts, IfTheFirstRegistersTheOthersAreNotTried)
{
    Registrar registrar{1, {}};
    EXPECT_EQ(registerFirstFont(embeddedFontPaths(), std::ref(registrar)), 41);
    EXPECT_EQ(registrar.attempts, QStringList(":/segoeui.ttf"));
}

TEST(EmbeddedFonts, IfTheFirstFailsAndTheSecondSucceedsExactlyTwoAreTried)
{
    Registrar registrar{2, {}};
    EXPECT_EQ(registerFirstFont(embeddedFontPaths(), std::ref(registrar)), 42);
    EXPECT_EQ(registrar.attempts, QStringList({":/segoeui.ttf", ":/segoeuib.ttf"}));
}

TEST(EmbeddedFonts, IfAllFailAllAreTriedOnce)
{
    Registrar registrar{100, {}};
    EXPECT_EQ(registerFirstFont(embeddedFontPaths(), std::ref(registrar)), -1);
    EXPECT_EQ(registrar.attempts, expectedPaths);
}

TEST(EmbeddedFonts, AreAllBuiltInUncompressedAndCanBeRead)
{
    useEmbeddedFonts();
    for (const QString& path : expectedPaths) {
        const QResource resource(path);
        ASSERT_TRUE(resource.isValid()) << qPrintable(path);
        EXPECT_EQ(resource.compressionAlgorithm(), QResource::NoCompression) << qPrintable(path);
        EXPECT_TRUE(QRawFont(path, 12).isValid()) << qPrintable(path);
    }
}

TEST(EmbeddedFonts, MakeSegoeUIOfNinePointsTheDefaultFont)
{
    useEmbeddedFonts();
    const QFont font = QApplication::font();
    EXPECT_EQ(font.family(), "Segoe UI");
    EXPECT_EQ(font.pointSize(), 9);
    EXPECT_EQ(font.weight(), QFont::Normal);
    EXPECT_FALSE(font.italic());
}

TEST(EmbeddedFonts, TextIsDrawnInTheFirstFace)
{
    useEmbeddedFonts();
    const QRawFont embedded(QStringLiteral(":/segoeui.ttf"), 12);
    const QRawFont drawn = QRawFont::fromFont(QApplication::font());
    EXPECT_EQ(QFontInfo(QApplication::font()).family(), embedded.familyName());
    EXPECT_EQ(drawn.styleName(), embedded.styleName());
    for (const char* table : {"head", "name", "hmtx"})
        EXPECT_EQ(drawn.fontTable(table), embedded.fontTable(table)) << table;
}

} // namespace
