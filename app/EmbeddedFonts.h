// SPDX-License-Identifier: Apache-2.0
// The font faces built into the program, and the program's default font.

#pragma once

#include <QStringList>

#include <functional>

/// The resource paths of the nine faces, in the order in which they are tried.
const QStringList& embeddedFontPaths();

/// Registers the first of `paths` that can be registered, with an operation that answers an identifier or -1.
/// Returns that identifier, or -1 when there is none; the paths behind the first success are not tried.
int registerFirstFont(const QStringList& paths, const std::function<int(const QString&)>& registerFont);

/// Registers the first embedded face that can be registered and makes Segoe UI, 9 points, the application's default
/// font. When the registered face belongs to another family, that family stands in for Segoe UI from here on.
/// With no face at all the toolkit's default font stays.
///
/// Thread: GUI thread, after the application object and before the first window.
void useEmbeddedFonts();
