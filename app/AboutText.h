// SPDX-License-Identifier: Apache-2.0
// What the About box says.

#pragma once

class QString;

/// The body of the About box, as rich text in the user's language. Its links are white; on a light ground, where nobody
/// could read them, they stand on the dark skin's ground.
QString aboutText(bool onLightGround);
