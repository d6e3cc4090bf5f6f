// SPDX-License-Identifier: Apache-2.0
// How the two pictures are arranged for viewing.

#include "PictureArrangement.h"

#include <QCoreApplication>

QString arrangementTitle(PictureArrangement arrangement)
{
    switch (arrangement) {
    case PictureArrangement::SideBySide:
        return QCoreApplication::translate("PictureArrangement", "Side by side");
    case PictureArrangement::OneAboveOther:
        return QCoreApplication::translate("PictureArrangement", "One above the other");
    case PictureArrangement::LeftOnly:
        return QCoreApplication::translate("PictureArrangement", "Left only");
    case PictureArrangement::RightOnly:
        return QCoreApplication::translate("PictureArrangement", "Right only");
    case PictureArrangement::Anaglyph:
        return QCoreApplication::translate("PictureArrangement", "Red-cyan anaglyph");
    case PictureArrangement::Difference:
        return QCoreApplication::translate("PictureArrangement", "Difference");
    }
    return QString();
}

QString arrangementKey(PictureArrangement arrangement)
{
    switch (arrangement) {
    case PictureArrangement::SideBySide:
        return QStringLiteral("sideBySide");
    case PictureArrangement::OneAboveOther:
        return QStringLiteral("oneAboveOther");
    case PictureArrangement::LeftOnly:
        return QStringLiteral("leftOnly");
    case PictureArrangement::RightOnly:
        return QStringLiteral("rightOnly");
    case PictureArrangement::Anaglyph:
        return QStringLiteral("anaglyph");
    case PictureArrangement::Difference:
        return QStringLiteral("difference");
    }
    return QString();
}

PictureArrangement arrangementOfKey(const QString& key)
{
    for (const PictureArrangement arrangement : allArrangements)
        if (arrangementKey(arrangement) == key)
            return arrangement;
    return PictureArrangement::SideBySide;
}

std::vector<CellContent> contentsOf(PictureArrangement arrangement)
{
    switch (arrangement) {
    case PictureArrangement::SideBySide:
    case PictureArrangement::OneAboveOther:
        return {CellContent::Left, CellContent::Right};
    case PictureArrangement::LeftOnly:
        return {CellContent::Left};
    case PictureArrangement::RightOnly:
        return {CellContent::Right};
    case PictureArrangement::Anaglyph:
        return {CellContent::Anaglyph};
    case PictureArrangement::Difference:
        return {CellContent::Difference};
    }
    return {};
}
