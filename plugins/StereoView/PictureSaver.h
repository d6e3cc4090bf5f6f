// SPDX-License-Identifier: Apache-2.0
// Saves pictures as files.

#pragma once

#include <QImage>
#include <QString>

class QDateTime;

/// How saving went.
struct SaveOutcome
{
    bool saved = false;
    QString fileBase; ///< what both file names begin with; empty unless saved
    QString folder;   ///< where the files are, or should have been
    QString problem;  ///< why not, for people; empty when saved
};

/// Saves a pair as two PNG files, named after `when` and ending in "_left.png" and "_right.png". Makes the folder when
/// it is missing. Never writes over a file: a name in use gets a number. Leaves nothing behind when it fails.
/// Thread: any thread; takes some ten milliseconds.
SaveOutcome savePicturePair(const QString& folder, const QDateTime& when, const QImage& left, const QImage& right);
