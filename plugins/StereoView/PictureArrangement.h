// SPDX-License-Identifier: Apache-2.0
// How the two pictures are arranged for viewing.

#pragma once

#include <QMetaType>
#include <QString>

#include <array>
#include <vector>

/// What the view shows of a pair.
enum class PictureArrangement { SideBySide, OneAboveOther, LeftOnly, RightOnly, Anaglyph, Difference };
Q_DECLARE_METATYPE(PictureArrangement)

/// What one place of the view shows.
enum class CellContent { Left, Right, Anaglyph, Difference };

/// In the order in which people are offered them.
constexpr std::array<PictureArrangement, 6> allArrangements = {
    PictureArrangement::SideBySide, PictureArrangement::OneAboveOther, PictureArrangement::LeftOnly,
    PictureArrangement::RightOnly,  PictureArrangement::Anaglyph,      PictureArrangement::Difference};

/// For people, in their language.
QString arrangementTitle(PictureArrangement arrangement);

/// For settings; never changes.
QString arrangementKey(PictureArrangement arrangement);

/// The arrangement of that key; SideBySide for an unknown one.
PictureArrangement arrangementOfKey(const QString& key);

/// One or two contents, in reading order.
std::vector<CellContent> contentsOf(PictureArrangement arrangement);
