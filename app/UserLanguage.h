// SPDX-License-Identifier: Apache-2.0
// The language of the program's texts.

#pragma once

/// Shows texts in the user's language where there is a translation, those of Qt itself too if the system has them. For
/// everybody else nothing is loaded, and texts stay English.
///
/// Thread: GUI thread, after the application object and before the first window.
void useLanguageOfUser();
