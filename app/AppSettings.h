// SPDX-License-Identifier: Apache-2.0
// The choices of the user that live from one run to the next, and the file that keeps them.

#pragma once

#include <QString>

#include <cstdint>

/// The process-wide settings record.
///
/// Start-up fills it from the settings file (`loadSettings`); afterwards whoever changes a choice of the user
/// writes the field and calls `saveSettings`.
///
/// Thread: GUI thread. The record has no lock of its own.
class AppSettings
{
public:
    /// The one record of the process, made with the defaults below at the first call.
    ///
    /// It is never freed, so that it may still be used while the last objects of the process are destroyed.
    static AppSettings& instance();

    /// Whether start-up applies the dark skin.
    bool useDarkSkin = false;

    /// Width of the camera's picture, in pixels.
    std::int32_t width = 320;

    /// Height of the camera's picture, in pixels.
    std::int32_t height = 240;

    /// Binning code of the camera library; 5 is the code that is shown as "2x2".
    std::int32_t binning = 5;

    /// Frames per second.
    float fps = 30.0F;

    /// Name of the app that was current when the settings were last saved; empty before the first app.
    QString currentApp;
};

/// The settings file: "settings/DashboardSettings.cfg" in the folder of the running executable.
///
/// Thread: GUI thread, while an application object exists.
QString settingsFilePath();

/// Fills the record from the settings file.
///
/// Called once, at start-up. Nothing is reported: a file that is missing, that cannot be parsed, or that lacks a
/// key or holds one of another type ends the reading there, leaves the fields that were read before as the file
/// has them and the others as they were, and is written anew with `saveSettings`. A missing group is no failure;
/// its fields keep their values. Anything but a regular file, or a link to one, counts as missing.
///
/// The file is read as one text: one that has an `@include` line, a byte of 0 or more than 64 KiB counts as one
/// that cannot be parsed, and a frame rate that is beyond a float as one of another type. Whatever the file holds,
/// reading it ends soon, and ends nothing else.
///
/// Thread: GUI thread.
void loadSettings();

/// Writes the whole settings file anew from the record.
///
/// The file is replaced in one step: whoever reads it, also after a power cut, finds either the old one or the new
/// one, complete. A settings file that is a link to a regular file stays a link, and the file behind it is
/// replaced; a link that leads nowhere is replaced itself. A folder, socket or device in its place is left alone,
/// and so is a file that the user may not write.
///
/// The file keeps its permissions, its group, and its owner if whoever saves may give files away, as root may. A new
/// one has those that the user's mask leaves, and in a setgid folder that its group may write, which several users
/// share, it is readable and writable for that group whatever the mask.
///
/// Of several programs that save at the same moment, each waits until no other does, for a second at most.
///
/// Nothing is reported when it cannot be written, be it because the folder is missing (it is never created), is not
/// writable, is full or is kept busy by others: the old file and the record stay as they are, and no other file is left
/// behind. So they do when the file could not be read back: with a frame rate that is not finite, or with an app's name
/// that makes it longer than 64 KiB.
///
/// Thread: GUI thread.
void saveSettings();
