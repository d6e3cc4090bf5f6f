// SPDX-License-Identifier: Apache-2.0
// The dark look of the program.

#pragma once

class QPalette;
class QString;

/// The colours of the dark skin.
QPalette darkSkinPalette();

/// The style sheet of the dark skin.
QString darkSkinStyleSheet();

/// Gives the whole application the dark skin: the Fusion style, the palette and the style sheet.
///
/// Thread: GUI thread, before the first window is built.
void applyDarkSkin();
