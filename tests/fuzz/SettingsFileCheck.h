// SPDX-License-Identifier: Apache-2.0
// What must hold for every text that anything may have put in place of the settings file.

#pragma once

#include <string>

class QByteArray;

/// Makes the folder of the settings file, beside the executable. Called once, with an application object.
void makeSettingsFolder();

/// Puts `text` in place of the settings file, reads it as a start of the program does, and a second time as the next
/// start would. Returns what was wrong about that, or nothing:
///
/// - Each field holds what the text says up to where reading has to stop, and its default beyond.
/// - The file is as it was when all of it could be read, and otherwise complete and new.
/// - The next start finds the same values, and leaves the file alone.
///
/// What the text says is looked up with the library that the program uses, but not with the program's code.
std::string checkSettingsFile(const QByteArray& text);
